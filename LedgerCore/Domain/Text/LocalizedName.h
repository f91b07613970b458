#pragma once

#include <map>
#include <string>
#include <string_view>

/// Texts by key: display names by language tag, colour choices by entry kind.
using TextMap = std::map<std::string, std::string, std::less<>>;

/// The name for a locale out of names by language tag ("en-US", or a short code such as "en"). A name that is missing
/// or empty is stood in for by the English one, else by any other: the result is empty only when every name is.
std::string_view localizedName(const TextMap& names, std::string_view locale);
