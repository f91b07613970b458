#include "LedgerUI/Presentation/Text/Words.h"

#include <cstdint>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

QString wordIn(std::string_view locale, const WordTable& table, std::string_view key)
{
    return qString(table.text(key, locale));
}

QString wordIn(std::string_view locale, const WordTable& table, std::string_view key,
               std::initializer_list<std::string_view> arguments)
{
    return qString(table.filled(key, locale, arguments));
}

std::string groupedNumber(std::size_t count, std::string_view locale)
{
    // A currency without decimals groups its digits as a count does.
    return Money::formatDigits(static_cast<std::int64_t>(count), "JPY", locale);
}

QString countedIn(std::string_view locale, const WordTable& table, std::string_view key, std::size_t count)
{
    const std::string stem{key};
    return count == 1 ? wordIn(locale, table, stem + ".one")
                      : wordIn(locale, table, stem + ".many", {groupedNumber(count, locale)});
}

QString listed(QStringList parts, std::string_view locale)
{
    parts.removeAll(QString{});
    return parts.join(qString(dialogWords().text("listSeparator", locale)));
}
