#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

/// A stretch of whole days that a page looks at, first and last included, within the years 0001 to 9999.
class Period {
public:
    enum class Span { day, week, month, quarter, year, allTime, dates };

    /// The day, week (Monday to Sunday), month, quarter or year that holds `day`. All time for `allTime`; for `dates`
    /// the single day.
    static Period containing(Span span, std::chrono::year_month_day day);
    static Period allTime();
    /// The days from `first` to `last`; nothing when one of them does not exist or they are in the wrong order.
    static std::optional<Period> between(std::chrono::year_month_day first, std::chrono::year_month_day last);

    [[nodiscard]] Span span() const { return m_span; }
    [[nodiscard]] std::chrono::year_month_day firstDay() const { return m_first; }
    [[nodiscard]] std::chrono::year_month_day lastDay() const { return m_last; }
    [[nodiscard]] bool isAllTime() const { return m_span == Span::allTime; }

    /// Whether the day "YYYY-MM-DD" lies inside. All time holds every text.
    [[nodiscard]] bool contains(std::string_view day) const;

    /// The stretch of the same kind (of dates: of the same length) right after or before this one; nothing for all
    /// time and past the ends of the calendar.
    [[nodiscard]] std::optional<Period> next() const;
    [[nodiscard]] std::optional<Period> previous() const;
    /// The stretch of the same kind that holds `day`. Dates keep their length and end on it.
    [[nodiscard]] Period movedTo(std::chrono::year_month_day day) const;

    bool operator==(const Period&) const = default;

private:
    Period(Span span, std::chrono::year_month_day first, std::chrono::year_month_day last);

    Span m_span;
    std::chrono::year_month_day m_first;
    std::chrono::year_month_day m_last;
    std::string m_firstText; // as the ledger writes days, so that `contains` only compares texts
    std::string m_lastText;
};

/// A week of ISO 8601: it belongs to the year that holds its Thursday.
struct IsoWeek {
    int year = 0;
    unsigned number = 0; // 1 to 53

    bool operator==(const IsoWeek&) const = default;
};
IsoWeek isoWeek(std::chrono::year_month_day day);
