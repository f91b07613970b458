#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How far an import came that did not come to its end, and how it goes on.
std::string importStoppedText(std::size_t confirmed, std::string_view locale);
