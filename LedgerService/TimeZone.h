#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// Time zones by their IANA names, such as "Asia/Jakarta".
namespace TimeZone {

bool isKnown(std::string_view name);

/// The day that `instant` falls on in this zone; in that of the machine when there is none, or none of this name.
std::string day(const std::optional<std::string>& name, std::chrono::system_clock::time_point instant);

}

}
