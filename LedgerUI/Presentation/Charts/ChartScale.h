#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The value axis of a chart of money: the values it spans and the round ones that bear a grid line. All in minor units
/// of one currency; zero is always among them.
struct ChartScale {
    std::int64_t lowest = 0;
    std::int64_t highest = 0;
    std::int64_t step = 0; // between two grid lines; 0 when there is nothing to measure

    /// The multiples of `step` from `lowest` to `highest`, in order.
    [[nodiscard]] std::vector<std::int64_t> ticks() const;

    /// Where a value lies: 0 at `lowest`, 1 at `highest`.
    [[nodiscard]] double position(std::int64_t value) const;

    bool operator==(const ChartScale&) const = default;
};

namespace ChartScales {

/// Spans zero, `lowest` and `highest` with steps of 1, 2 or 5 times a power of ten, in whole units of the currency, so
/// that at most `mostTicks` lines are drawn (two at least). Values up to ±2^61.
ChartScale spanning(std::int64_t lowest, std::int64_t highest, std::string_view currency, int mostTicks);

/// What the lines are called, one text for each of the scale's ticks: in the unit that the language counts large
/// numbers in ("400 M", "400 jt", "400 tr", "4 亿"), the same for all, with no more decimals than the step needs.
std::vector<std::string> labels(const ChartScale& scale, std::string_view currency, std::string_view locale);

}
