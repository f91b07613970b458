#pragma once

#include <source_location>
#include <string_view>

/// Stops the process, saying where, when a promise between our own functions is broken. Never for bad input.
void require(bool held, std::string_view promise, std::source_location where = std::source_location::current());
