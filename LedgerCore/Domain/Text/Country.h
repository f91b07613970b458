#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Countries by their codes of two capital letters.
namespace Country {

/// What people call the country in the language of `locale`; a code that stands for none is its own name.
std::string name(std::string_view code, std::string_view locale);

/// The codes of all countries, in the order of their names in that language.
std::vector<std::string> all(std::string_view locale);

}
