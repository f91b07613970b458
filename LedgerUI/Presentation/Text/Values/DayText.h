#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include <QString>

/// Days, months and times of day as each language writes them. Days are "YYYY-MM-DD"; a text that is no day is shown
/// as it stands. `locale` is one of AppLanguage::supportedLocales.
namespace DayText {

/// "20 Nov", "11月20日", "20/11".
QString shortDay(std::string_view day, std::string_view locale);

/// "20 Nov 2026", "2026年11月20日", "20/11/2026".
QString shortDate(std::string_view day, std::string_view locale);

/// The first of them, and the second where the year is another one than that of `today`.
QString nearDay(std::string_view day, std::string_view today, std::string_view locale);

/// "16–22 Nov 2026", "28 Sep – 4 Oct 2026": both ends, naming what they share once.
QString range(std::string_view first, std::string_view last, std::string_view locale);

/// "20 November 2026", "2026年11月20日".
QString longDay(std::string_view day, std::string_view locale);

/// "Thu 19 November 2026", "2026年11月19日 周四".
QString weekdayAndDay(std::string_view day, std::string_view locale);

/// "November 2026", "2026年11月", "Tháng 11 năm 2026".
QString month(std::chrono::year_month month, std::string_view locale);

/// "Nov", "11月", "Thg 11".
QString shortMonth(std::chrono::month month, std::string_view locale);

/// "Nov 2026", "2026年11月", "11/2026".
QString shortMonthOfYear(std::chrono::year_month month, std::string_view locale);

/// "2026", "2026年".
QString year(std::chrono::year year, std::string_view locale);

/// "Thu", "周四", "T5".
QString shortWeekday(std::chrono::weekday weekday, std::string_view locale);

/// A time of day from "HH:MM": "14:32", in Indonesian "14.32".
QString timeOfDay(std::string_view time, std::string_view locale);

/// The day here on which a stamp of the service falls.
std::string dayOf(const std::string& stamp);

/// The day and time here of a stamp of the service: "2026-11-19 16:42", in Indonesian "2026-11-19 16.42".
QString moment(const std::string& stamp, std::string_view locale);

}
