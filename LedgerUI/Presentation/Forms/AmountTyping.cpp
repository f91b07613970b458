#include "LedgerUI/Presentation/Forms/AmountTyping.h"

#include <algorithm>
#include <map>
#include <string>

#include <QRegularExpression>
#include <QStringList>

#include "LedgerCore/Domain/Money/AmountExpression.h"
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

/// What stands beside an amount in this currency: code, symbol and usual spellings.
QStringList marksOfCurrency(std::string_view currency)
{
    static const std::map<std::string_view, QStringList> spellings{
        {"IDR", {QStringLiteral("Rp.")}},
        {"VND", {QStringLiteral("VNĐ"), QStringLiteral("đồng"), QStringLiteral("đ")}},
        {"CNY", {QStringLiteral("RMB"), QStringLiteral("￥"), QStringLiteral("元")}},
        {"JPY", {QStringLiteral("￥"), QStringLiteral("円")}},
        {"USD", {QStringLiteral("US$")}},
        {"SGD", {QStringLiteral("SG$")}},
    };
    const auto info = CurrencyInfo::forCode(currency);
    const auto found = spellings.find(currency);
    auto marks = found == spellings.end() ? QStringList{} : found->second;
    // The longest first: "Rp." before "Rp".
    return marks << qString(info.symbol) << qString(info.code);
}

bool isBlank(QChar each)
{
    return each.category() == QChar::Separator_Space;
}

/// Takes one mark of the currency off the text, at whichever end it stands.
QString withoutMark(const QString& text, const QStringList& marks)
{
    for (const auto& mark : marks) {
        if (text.startsWith(mark, Qt::CaseInsensitive))
            return text.mid(mark.size()).trimmed();
        if (text.endsWith(mark, Qt::CaseInsensitive))
            return text.chopped(mark.size()).trimmed();
    }
    return text;
}

/// "1250000,-" names no smaller units.
QString withoutDash(QString text)
{
    for (const auto* dash : {u",-", u".-", u",–", u".–", u",—", u".—"}) {
        if (text.endsWith(QStringView{dash}))
            return text.chopped(2);
    }
    return text;
}

/// The bare figure of an amount that was copied with its currency, and in brackets where the books show what went out.
QString figureOf(const QString& clipboard, std::string_view currency)
{
    const auto marks = marksOfCurrency(currency);
    auto text = withoutMark(clipboard.trimmed(), marks);
    if (text.startsWith(QLatin1Char{'('}) && text.endsWith(QLatin1Char{')'}))
        text = text.mid(1, text.size() - 2).trimmed();
    return withoutDash(withoutMark(text, marks));
}

/// Blanks that part the digits in threes give way to `grouping`; blanks anywhere else make it no amount, or several.
std::optional<QString> withoutBlanks(const QString& text, Marks own)
{
    if (std::ranges::none_of(text, isBlank))
        return text;
    static const QRegularExpression inThrees{QStringLiteral(R"(^(\d{1,3}(?:\p{Zs}\d{3})+)(?:[.,](\d+))?$)")};
    const auto match = inThrees.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    auto integer = match.captured(1);
    integer.removeIf(isBlank);
    const auto fraction = match.captured(2);
    return grouped(integer, own.grouping) + (fraction.isEmpty() ? QString{} : own.decimal + fraction);
}

bool isMinus(QChar each)
{
    return each == QLatin1Char{'-'} || each.category() == QChar::Punctuation_Dash || each == QChar{0x2212};
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

/// An amount without a sign, in the separators of the language; nothing when it is not one in this currency.
std::optional<QString> unsignedAmount(const QString& clipboard, std::string_view currency, std::string_view locale)
{
    const auto marks = marksOf(locale);
    const auto figure = figureOf(clipboard, currency);
    const auto unspaced = withoutBlanks(figure, marks);
    if (!unspaced)
        return std::nullopt;
    const auto& text = *unspaced;
    const auto isPart = [&](QChar each) { return isDigit(each) || each == marks.decimal || each == marks.grouping; };
    if (text.isEmpty() || !isDigit(text.front()) || !std::ranges::all_of(text, isPart))
        return std::nullopt;
    if (text != figure)
        return text;
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

}

AmountText AmountTyping::typed(const AmountText& before, const QString& after, int caret, std::string_view locale)
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

std::optional<std::int64_t> AmountTyping::minor(const QString& text, std::string_view currency, std::string_view locale)
{
    const auto typed = text.toStdString();
    if (AmountExpression::isOne(typed)) {
        const auto result = AmountExpression::evaluate(typed, currency, locale);
        return result ? std::optional{*result} : std::nullopt;
    }
    const auto amount = Money::parse(typed, currency, locale);
    return amount ? std::optional{*amount} : std::nullopt;
}

QString AmountTyping::settled(const QString& text, std::string_view currency, std::string_view locale)
{
    if (const auto amount = minor(text, currency, locale))
        return *amount >= 0 ? qString(Money::formatDigits(*amount, currency, locale)) : text;
    // A mark of the currency is taken off, as from an amount that is pasted.
    const bool hasMark = std::ranges::any_of(
        text, [](QChar each) { return each.isLetter() || each.category() == QChar::Symbol_Currency; });
    return hasMark ? pasted(text, currency, locale).value_or(text) : text;
}

bool AmountTyping::continuesArithmetic(const QString& kept, const QString& after, std::string_view currency,
                                       std::string_view locale)
{
    const auto text = after.toStdString();
    return AmountExpression::isOne(kept.toStdString()) && AmountExpression::isOne(text) &&
           AmountExpression::evaluate(text, currency, locale).has_value();
}

std::expected<QString, PasteRefusal> AmountTyping::pasted(const QString& clipboard, std::string_view currency,
                                                          std::string_view locale)
{
    if (const auto amount = unsignedAmount(clipboard, currency, locale))
        return *amount;
    const auto isBreak = [](QChar each) { return each == QLatin1Char{'\n'} || each == QLatin1Char{'\t'}; };
    if (std::ranges::any_of(clipboard.trimmed(), isBreak))
        return std::unexpected{PasteRefusal::several};
    const auto figure = figureOf(clipboard, currency);
    const bool isSigned = !figure.isEmpty() && isMinus(figure.front());
    return std::unexpected{isSigned && unsignedAmount(figure.mid(1), currency, locale) ? PasteRefusal::negative
                                                                                       : PasteRefusal::notAnAmount};
}
