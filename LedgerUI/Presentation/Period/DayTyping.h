#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

/// The days on which an entry can be booked, as "YYYY-MM-DD". Tomorrow is one of them: a colleague in the east may be
/// there already.
struct DayBounds {
    std::optional<std::string> earliest; // the start of the books; while none is confirmed, the first that there can be
    std::string latest;
    std::string today;

    /// Every day that a ledger could ever hold.
    static DayBounds ofCalendar(std::string today)
    {
        return {.earliest = "0001-01-01", .latest = "9999-12-31", .today = std::move(today)};
    }

    [[nodiscard]] bool hold(std::string_view day) const { return (!earliest || day >= *earliest) && day <= latest; }
    bool operator==(const DayBounds&) const = default;
};

/// What a form shows of its day.
struct DayContent {
    std::string day;
    QString text;
    QString hint;
    QString message; // what is wrong with the day
    DayBounds bounds;
    bool mayChange = false;
};

/// A day of the books: how it is chosen, typed and shown.
namespace DayTyping {

DayBounds bounds(const LedgerSnapshot& snapshot, std::string_view today);

/// The day so many days later; the nearest one that the bounds hold.
std::string moved(std::string_view day, int by, const DayBounds& bounds);

/// What a person typed: a whole day, a day without its year (the latest one that the bounds hold), or the day of the
/// month of `shown`. Day before month, in Chinese month before day; a year in front stands before both. Nothing when
/// the text names no day; the bounds are the caller's to check.
std::optional<std::string> typed(const QString& text, std::string_view shown, const DayBounds& bounds,
                                 std::string_view locale);

/// The text in which a day stands in its field: "20/11/2026", in Chinese "2026/11/20".
QString written(std::string_view day, std::string_view locale);

/// The month that holds `shown`, with only the days that the bounds hold on offer.
PeriodGrid month(std::string_view shown, const DayBounds& bounds, std::string_view locale);

/// Why the day cannot be taken, in words; empty for one that the bounds hold.
QString whyNot(std::string_view day, const DayBounds& bounds, std::string_view locale);

}
