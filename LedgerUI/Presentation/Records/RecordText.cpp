#include "LedgerUI/Presentation/Records/RecordText.h"

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

RecordCell moneyCell(const MoneyText& money, RecordTone tone)
{
    return {.text = money.figure(), .tone = tone, .spoken = money.spoken};
}

}

QString RecordText::percent(std::int64_t basisPoints, std::string_view locale)
{
    // Hundredths of a percent are written as an amount of two decimals.
    return qString(Money::formatDigits(basisPoints, "CNY", locale)) + QChar::Nbsp + QLatin1Char{'%'};
}

RecordCell RecordText::amount(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return minor == 0 ? dash() : moneyCell(balanceText(minor, currency, locale), RecordTone::plain);
}

RecordCell RecordText::movement(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return minor == 0 ? dash() : moneyCell(movementText(minor, currency, locale), RecordTone::plain);
}

RecordCell RecordText::percentCell(int basisPoints, std::string_view locale)
{
    return {.text = percent(basisPoints, locale)};
}

RecordCell RecordText::dash()
{
    return {.text = QStringLiteral("–"), .tone = RecordTone::faint};
}

RecordCell RecordText::day(std::string_view day, std::string_view locale)
{
    return {.text = DayText::shortDate(day, locale), .spoken = DayText::longDay(day, locale)};
}

RecordCell RecordText::bold(RecordCell cell)
{
    cell.isBold = true;
    return cell;
}

RecordCell RecordText::struck(RecordCell cell)
{
    cell.isStruck = true;
    cell.tone = RecordTone::quiet;
    return cell;
}
