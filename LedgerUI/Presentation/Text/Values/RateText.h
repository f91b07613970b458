#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QString>

/// What one unit of `from` came to, to four digits or more: "SGD 1.340"; "–" where an amount is missing.
QString rateText(std::int64_t fromMinor, const std::string& from, std::int64_t toMinor, const std::string& to,
                 std::string_view locale);
