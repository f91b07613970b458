#include "LedgerUI/Presentation/Entry/EntryAmountText.h"

#include <algorithm>
#include <string>

#include <QStringList>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

struct Marks {
    QChar decimal;
    QChar grouping;
};

Marks marksOf(std::string_view locale)
{
    const auto separators = Money::separators(locale);
    return {QLatin1Char{separators.decimal}, QLatin1Char{separators.grouping}};
}

bool isDigit(QChar each)
{
    return each >= QLatin1Char{'0'} && each <= QLatin1Char{'9'};
}

bool isDigits(QStringView text)
{
    return std::ranges::all_of(text, isDigit);
}

QString grouped(QStringView digits, QChar grouping)
{
    QString text;
    for (qsizetype at = 0; at < digits.size(); ++at) {
        if (at > 0 && (digits.size() - at) % 3 == 0)
            text += grouping;
        text += digits[at];
    }
    return text;
}

/// The text with its integer part regrouped, or nothing when it holds more than digits and separators in their places.
std::optional<QString> regrouped(const QString& text, Marks marks)
{
    const auto point = text.indexOf(marks.decimal);
    auto integer = text.left(point);
    const auto fraction = point < 0 ? QString{} : text.mid(point);
    integer.remove(marks.grouping);
    if (!isDigits(integer) || !isDigits(QStringView{fraction}.mid(fraction.isEmpty() ? 0 : 1)))
        return std::nullopt;
    return grouped(integer, marks.grouping) + fraction;
}

/// Where the caret stands in `text` so that `count` characters other than separators are before it.
int caretAfter(const QString& text, qsizetype count, QChar grouping)
{
    qsizetype at = 0;
    while (at < text.size() && count > 0) {
        if (text[at] != grouping)
            --count;
        ++at;
    }
    return static_cast<int>(at);
}

/// Digits joined over `grouping`, or nothing when the groups are uneven.
std::optional<QString> joined(const QString& integer, QChar grouping)
{
    const auto groups = integer.split(grouping);
    for (qsizetype at = 0; at < groups.size(); ++at) {
        const auto length = groups[at].size();
        const bool even = groups.size() == 1 || (at == 0 ? length >= 1 && length <= 3 : length == 3);
        if (!even || groups[at].isEmpty() || !isDigits(groups[at]))
            return std::nullopt;
    }
    return groups.join(QString{});
}

QString withoutCode(const QString& clipboard, std::string_view currency)
{
    QString text;
    for (const auto each : clipboard) {
        if (!each.isSpace())
            text += each;
    }
    const auto code = qString(currency);
    if (text.startsWith(code))
        text.remove(0, code.size());
    else if (text.endsWith(code))
        text.chop(code.size());
    return text;
}

/// Which separator of a foreign text can only be the decimal one; a null character when none is, nothing when unclear.
std::optional<QChar> foreignDecimal(const QString& text, Marks own, qsizetype scale)
{
    const auto points = text.count(own.decimal);
    const auto groups = text.count(own.grouping);
    if (points > 1)
        return groups > 1 ? std::nullopt : std::optional{groups == 1 ? own.grouping : QChar{}};
    if (groups != 1)
        return std::nullopt;
    const auto at = text.indexOf(own.grouping);
    const auto digits = text.size() - at - 1;
    if (points == 1)
        return text.indexOf(own.decimal) < at ? std::optional{own.grouping} : std::nullopt;
    return digits > 0 && digits <= scale && digits != 3 ? std::optional{own.grouping} : std::nullopt;
}

}

AmountText EntryAmountText::typed(const AmountText& before, const QString& after, int caret, std::string_view locale)
{
    const auto marks = marksOf(locale);
    if (after.isEmpty())
        return {};
    const bool byHand = before.separatorsTyped || after.count(marks.grouping) > before.text.count(marks.grouping);
    const auto text = byHand ? std::nullopt : regrouped(after, marks);
    if (!text)
        return {after, caret, byHand};
    const auto kept = caret - QStringView{after}.left(caret).count(marks.grouping);
    auto place = caretAfter(*text, kept, marks.grouping);
    // Deleting a separator forwards leaves the digits as they are: step over it, or the key would do nothing.
    if (*text == before.text && caret == before.caret && place < text->size() && (*text)[place] == marks.grouping)
        ++place;
    return {*text, place, false};
}

QString EntryAmountText::settled(const QString& text, std::string_view currency, std::string_view locale)
{
    const auto minor = Money::parse(text.toStdString(), currency, locale);
    if (!minor || *minor < 0)
        return text;
    return qString(Money::formatDigits(*minor, currency, locale));
}

std::optional<QString> EntryAmountText::pasted(const QString& clipboard, std::string_view currency,
                                               std::string_view locale)
{
    const auto marks = marksOf(locale);
    auto text = withoutCode(clipboard, currency);
    const auto isPart = [&](QChar each) { return isDigit(each) || each == marks.decimal || each == marks.grouping; };
    if (text.isEmpty() || !isDigit(text.front()) || !std::ranges::all_of(text, isPart))
        return std::nullopt;
    const auto decimal = foreignDecimal(text, marks, CurrencyInfo::scaleOf(currency));
    if (!decimal)
        return text;
    const auto at = decimal->isNull() ? qsizetype{-1} : text.indexOf(*decimal);
    const auto integer = joined(text.left(at), marks.decimal);
    if (!integer)
        return text;
    const auto fraction = at < 0 ? QString{} : QString{marks.decimal} + text.mid(at + 1);
    return grouped(*integer, marks.grouping) + fraction;
}
