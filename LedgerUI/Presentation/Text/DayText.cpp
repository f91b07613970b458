#include "LedgerUI/Presentation/Text/DayText.h"

#include <string>

#include <fmt/format.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

// %1 day of the month, %2 month, %3 year, %4 weekday.
const WordTable& patterns()
{
    static const WordTable words{
        {"shortDay", "%2%1日", "%1 %2", "%1/%2", "%1 %2"},
        {"longDay", "%3年%2%1日", "%1 %2 %3", "%1 %2, %3", "%1 %2 %3"},
        {"weekdayAndDay", "%3年%2%1日 %4", "%4, %1 %2 %3", "%4, %1 %2, %3", "%4 %1 %2 %3"},
        {"month", "%3年%2", "%2 %3", "%2 năm %3", "%2 %3"},
        {"year", "%3年", "%3", "%3", "%3"},
        {"shortDate", "%3年%2%1日", "%1 %2 %3", "%1/%2/%3", "%1 %2 %3"},
        {"shortMonth", "%2", "%2", "Thg %2", "%2"},
        {"shortMonthOfYear", "%3年%2", "%2 %3", "%2/%3", "%2 %3"},
        {"timeOfDay", "%1:%2", "%1.%2", "%1:%2", "%1:%2"},
    };
    return words;
}

// %1 first and %2 last day of the month, %3 month, %4 year; across months %1 and %2 are whole days.
const WordTable& ranges()
{
    static const WordTable words{
        {"inMonth", "%4年%3%1日–%2日", "%1–%2 %3 %4", "%1–%2/%3/%4", "%1–%2 %3 %4"},
        {"inYear", "%4年%1–%2", "%1 – %2 %4", "%1 – %2/%4", "%1 – %2 %4"},
        {"acrossYears", "%1–%2", "%1 – %2", "%1 – %2", "%1 – %2"},
    };
    return words;
}

// Keys are the two digits of the month; Vietnamese and Chinese count theirs.
const WordTable& longMonths()
{
    static const WordTable words{
        {"01", "1月", "Januari", "tháng 1", "January"},
        {"02", "2月", "Februari", "tháng 2", "February"},
        {"03", "3月", "Maret", "tháng 3", "March"},
        {"04", "4月", "April", "tháng 4", "April"},
        {"05", "5月", "Mei", "tháng 5", "May"},
        {"06", "6月", "Juni", "tháng 6", "June"},
        {"07", "7月", "Juli", "tháng 7", "July"},
        {"08", "8月", "Agustus", "tháng 8", "August"},
        {"09", "9月", "September", "tháng 9", "September"},
        {"10", "10月", "Oktober", "tháng 10", "October"},
        {"11", "11月", "November", "tháng 11", "November"},
        {"12", "12月", "Desember", "tháng 12", "December"},
    };
    return words;
}

// Vietnamese writes days in figures: the number alone.
const WordTable& shortMonths()
{
    static const WordTable words{
        {"01", "1月", "Jan", "1", "Jan"},   {"02", "2月", "Feb", "2", "Feb"},   {"03", "3月", "Mar", "3", "Mar"},
        {"04", "4月", "Apr", "4", "Apr"},   {"05", "5月", "Mei", "5", "May"},   {"06", "6月", "Jun", "6", "Jun"},
        {"07", "7月", "Jul", "7", "Jul"},   {"08", "8月", "Agu", "8", "Aug"},   {"09", "9月", "Sep", "9", "Sep"},
        {"10", "10月", "Okt", "10", "Oct"}, {"11", "11月", "Nov", "11", "Nov"}, {"12", "12月", "Des", "12", "Dec"},
    };
    return words;
}

// Keys count from Sunday.
const WordTable& weekdays()
{
    static const WordTable words{
        {"0", "周日", "Min", "CN", "Sun"}, {"1", "周一", "Sen", "T2", "Mon"}, {"2", "周二", "Sel", "T3", "Tue"},
        {"3", "周三", "Rab", "T4", "Wed"}, {"4", "周四", "Kam", "T5", "Thu"}, {"5", "周五", "Jum", "T6", "Fri"},
        {"6", "周六", "Sab", "T7", "Sat"},
    };
    return words;
}

std::string_view monthName(const WordTable& months, std::chrono::month month, std::string_view locale)
{
    return months.text(fmt::format("{:02}", static_cast<unsigned>(month)), locale);
}

std::string_view weekdayName(std::chrono::weekday weekday, std::string_view locale)
{
    return weekdays().text(std::to_string(weekday.c_encoding()), locale);
}

QString written(std::string_view pattern, std::string_view dayText, const WordTable& months, std::string_view locale)
{
    const auto day = LedgerDay::parse(dayText);
    if (!day)
        return qString(dayText);
    const auto number = std::to_string(static_cast<unsigned>(day->day()));
    const auto year = std::to_string(static_cast<int>(day->year()));
    const std::chrono::weekday weekday{std::chrono::sys_days{*day}};
    return qString(patterns().filled(
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
    return written("shortDay", day, shortMonths(), locale);
}

QString DayText::shortDate(std::string_view day, std::string_view locale)
{
    return written("shortDate", day, shortMonths(), locale);
}

QString DayText::range(std::string_view first, std::string_view last, std::string_view locale)
{
    const auto from = LedgerDay::parse(first);
    const auto to = LedgerDay::parse(last);
    const auto filled = [&](std::string_view key, const QString& left, const QString& right) {
        const auto month = to ? monthName(shortMonths(), to->month(), locale) : std::string_view{};
        const auto year = to ? std::to_string(static_cast<int>(to->year())) : std::string{};
        return qString(ranges().filled(key, locale, {left.toStdString(), right.toStdString(), month, year}));
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
    return written("longDay", day, longMonths(), locale);
}

QString DayText::weekdayAndDay(std::string_view day, std::string_view locale)
{
    return written("weekdayAndDay", day, longMonths(), locale);
}

QString DayText::month(std::chrono::year_month month, std::string_view locale)
{
    const auto year = std::to_string(static_cast<int>(month.year()));
    return standingAlone(
        qString(patterns().filled("month", locale, {"", monthName(longMonths(), month.month(), locale), year})));
}

QString DayText::shortMonth(std::chrono::month month, std::string_view locale)
{
    return qString(patterns().filled("shortMonth", locale, {"", monthName(shortMonths(), month, locale)}));
}

QString DayText::shortMonthOfYear(std::chrono::year_month month, std::string_view locale)
{
    const auto year = std::to_string(static_cast<int>(month.year()));
    return qString(
        patterns().filled("shortMonthOfYear", locale, {"", monthName(shortMonths(), month.month(), locale), year}));
}

QString DayText::year(std::chrono::year year, std::string_view locale)
{
    return qString(patterns().filled("year", locale, {"", "", std::to_string(static_cast<int>(year))}));
}

QString DayText::shortWeekday(std::chrono::weekday weekday, std::string_view locale)
{
    return qString(weekdayName(weekday, locale));
}

QString DayText::timeOfDay(std::string_view time, std::string_view locale)
{
    if (time.size() != 5)
        return qString(time);
    return qString(patterns().filled("timeOfDay", locale, {time.substr(0, 2), time.substr(3)}));
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
