#pragma once

#include <string_view>

/// The kinds of dividend movement, as they stand on the wire.
namespace DividendMovementKind {
inline constexpr std::string_view payment = "payment";
inline constexpr std::string_view advance = "advance";
inline constexpr std::string_view returning = "return";
inline constexpr std::string_view application = "application"; // an advance set against a line, without cash
inline constexpr std::string_view reversal = "reversal";
}
