#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Shares in ten-thousandths: 10000 is the whole.
namespace BasisPoints {

inline constexpr int whole = 10000;

/// The basis points of a percentage typed with at most two decimals: "12.5" is 1250. Nothing when the text is no such
/// number or lies outside 0 to 100 %.
std::optional<int> parse(std::string_view percentage, std::string_view locale);

/// As a person would type them, without zeros that say nothing: 1250 is "12.5", or "12,5" in Vietnamese.
std::string text(int points, std::string_view locale);

}
