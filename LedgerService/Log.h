#pragma once

#include <chrono>
#include <string_view>

namespace LedgerService {

/// The service's log on standard error. It names routes and outcomes, never what a request or a reply carried.
/// Nothing is written before `start`.
namespace Log {

enum class Level { quiet, failures, requests };

void start(Level level);

void note(std::string_view words);
void request(std::string_view method, std::string_view pattern, int status, std::chrono::microseconds took);
void failure(std::string_view pattern, std::string_view words);

}

}
