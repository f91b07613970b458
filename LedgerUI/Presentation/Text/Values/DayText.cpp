#include "LedgerUI/Presentation/Text/Values/DayText.h"

#include <string>

#include <fmt/format.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Values/CalendarWords.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

std::string_view monthName(const WordTable& months, std::chrono::month month, std::string_view locale)
{
    return months.text(fmt::format("{:02}", static_cast<unsigned>(month)), locale);
}

std::string_view weekdayName(std::chrono::weekday weekday, std::string_view locale)
{
    return CalendarWords::weekdays().text(std::to_string(weekday.c_encoding()), locale);
}

QString written(std::string_view pattern, std::string_view dayText, const WordTable& months, std::string_view locale)
{
    const auto day = LedgerDay::parse(dayText);
    if (!day)
        return qString(dayText);
    const auto number = std::to_string(static_cast<unsigned>(day->day()));
    const auto year = std::to_string(static_cast<int>(day->year()));
    const std::chrono::weekday weekday{std::chrono::sys_days{*day}};
    return qString(CalendarWords::patterns().filled(
        pattern, locale, {number, monthName(months, day->month(), locale), year, weekdayName(weekday, locale)}));
}

// Vietnamese months stand in small letters inside a sentence, in a capital one alone.
QString standingAlone(QString text)
{
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

}

QString DayText::shortDay(std::string_view day, std::string_view locale)
{
    return written("shortDay", day, CalendarWords::shortMonths(), locale);
}

QString DayText::shortDate(std::string_view day, std::string_view locale)
{
    return written("shortDate", day, CalendarWords::shortMonths(), locale);
}

QString DayText::nearDay(std::string_view day, std::string_view today, std::string_view locale)
{
    return day.substr(0, 4) == today.substr(0, 4) ? shortDay(day, locale) : shortDate(day, locale);
}

QString DayText::range(std::string_view first, std::string_view last, std::string_view locale)
{
    const auto from = LedgerDay::parse(first);
    const auto to = LedgerDay::parse(last);
    const auto filled = [&](std::string_view key, const QString& left, const QString& right) {
        const auto month = to ? monthName(CalendarWords::shortMonths(), to->month(), locale) : std::string_view{};
        const auto year = to ? std::to_string(static_cast<int>(to->year())) : std::string{};
        return qString(
            CalendarWords::ranges().filled(key, locale, {left.toStdString(), right.toStdString(), month, year}));
    };
    if (!from || !to || from->year() != to->year())
        return filled("acrossYears", shortDate(first, locale), shortDate(last, locale));
    if (from->month() != to->month())
        return filled("inYear", shortDay(first, locale), shortDay(last, locale));
    if (*from == *to)
        return shortDate(first, locale);
    return filled("inMonth", QString::number(static_cast<unsigned>(from->day())),
                  QString::number(static_cast<unsigned>(to->day())));
}

QString DayText::longDay(std::string_view day, std::string_view locale)
{
    return written("longDay", day, CalendarWords::longMonths(), locale);
}

QString DayText::weekdayAndDay(std::string_view day, std::string_view locale)
{
    return written("weekdayAndDay", day, CalendarWords::longMonths(), locale);
}

QString DayText::month(std::chrono::year_month month, std::string_view locale)
{
    const auto year = std::to_string(static_cast<int>(month.year()));
    return standingAlone(qString(CalendarWords::patterns().filled(
        "month", locale, {"", monthName(CalendarWords::longMonths(), month.month(), locale), year})));
}

QString DayText::shortMonth(std::chrono::month month, std::string_view locale)
{
    return qString(CalendarWords::patterns().filled("shortMonth", locale,
                                                    {"", monthName(CalendarWords::shortMonths(), month, locale)}));
}

QString DayText::shortMonthOfYear(std::chrono::year_month month, std::string_view locale)
{
    const auto year = std::to_string(static_cast<int>(month.year()));
    return qString(CalendarWords::patterns().filled(
        "shortMonthOfYear", locale, {"", monthName(CalendarWords::shortMonths(), month.month(), locale), year}));
}

QString DayText::year(std::chrono::year year, std::string_view locale)
{
    return qString(CalendarWords::patterns().filled("year", locale, {"", "", std::to_string(static_cast<int>(year))}));
}

QString DayText::shortWeekday(std::chrono::weekday weekday, std::string_view locale)
{
    return qString(weekdayName(weekday, locale));
}

QString DayText::timeOfDay(std::string_view time, std::string_view locale)
{
    if (time.size() != 5)
        return qString(time);
    return qString(CalendarWords::patterns().filled("timeOfDay", locale, {time.substr(0, 2), time.substr(3)}));
}

std::string DayText::dayOf(const std::string& stamp)
{
    const auto instant = LedgerDay::parseStamp(stamp);
    return instant ? LedgerDay::localGregorian().day(*instant) : stamp;
}

QString DayText::moment(const std::string& stamp, std::string_view locale)
{
    const auto instant = LedgerDay::parseStamp(stamp);
    if (!instant)
        return qString(stamp);
    const auto calendar = LedgerDay::localGregorian();
    return QStringLiteral("%1 %2").arg(qString(calendar.day(*instant)), timeOfDay(calendar.time(*instant), locale));
}
