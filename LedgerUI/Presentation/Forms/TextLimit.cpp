#include "LedgerUI/Presentation/Forms/TextLimit.h"

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

std::size_t lengthOf(const QString& text)
{
    const auto utf8 = text.toStdString();
    return TextFold::length(TextFold::trimmed(utf8));
}

}

std::size_t TextLimit::over(const QString& text, std::size_t limit)
{
    const auto length = lengthOf(text);
    return length > limit ? length - limit : 0;
}

QString TextLimit::message(const QString& text, std::size_t limit, std::string_view locale)
{
    const auto length = lengthOf(text);
    const auto number = [&](std::size_t count) { return groupedNumber(count, locale); };
    if (length > limit)
        return wordIn(locale, commandWords(), "tooLong", {number(limit), number(length - limit)});
    // The last tenth is near the end.
    return length > limit - limit / 10 ? wordIn(locale, commandWords(), "counter", {number(length), number(limit)})
                                       : QString{};
}
