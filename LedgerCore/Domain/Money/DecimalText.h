#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

/// Whole numbers written with a fixed number of decimals, as amounts and percentages are. No digit passes through
/// floating point.
namespace DecimalText {

struct Marks {
    char decimal = '.';
    char grouping = ',';
};

/// Plain text for machines: -123450 with two decimals is "-1234.50".
std::string plain(std::int64_t value, std::size_t decimals);

/// With grouped thousands and a true minus sign: "−1,234.50".
std::string grouped(std::int64_t value, std::size_t decimals, Marks marks);

enum class Flaw { malformed, tooPrecise, tooLarge };

/// Reads what a person typed, with or without grouping. White space around it is passed over and a sign is accepted;
/// `most` bounds the magnitude.
std::expected<std::int64_t, Flaw> read(std::string_view text, std::size_t decimals, Marks marks, std::int64_t most);

}
