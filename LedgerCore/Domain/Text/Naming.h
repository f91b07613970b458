#pragma once

#include <cstddef>
#include <string_view>

/// What people may call themselves and their companies, where they live and where mail reaches them.
namespace Naming {

/// The most code points of a name, and the most bytes of an address.
inline constexpr std::size_t maximumName = 120;
inline constexpr std::size_t maximumEmail = 254;

/// One line that says something, without control characters and without signs that turn the direction of the text
/// around it. Blanks around it are not counted.
bool isName(std::string_view text);

/// A code of two capital letters, such as "ID".
bool isCountry(std::string_view code);

/// Whether mail could be sent there. Whether somebody reads it there is not known.
bool isEmail(std::string_view text);

}
