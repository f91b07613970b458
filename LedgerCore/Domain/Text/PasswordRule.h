#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// What a person may choose as a password.
namespace PasswordRule {

/// The fewest code points, and the most bytes that are hashed.
inline constexpr std::size_t minimumLength = 8;
inline constexpr std::size_t maximumBytes = 1024;

enum class Refusal { tooShort, tooLong, notText };

std::optional<Refusal> whyNot(std::string_view password);

}
