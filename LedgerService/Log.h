#pragma once

#include <chrono>
#include <string_view>

namespace LedgerService {

/// The service's log on standard error. It names routes and outcomes, never what a request or a reply carried.
/// Nothing is written before `start`. Nobody waits for whoever reads the log: when it is not taken, lines are left out
/// and counted.
namespace Log {

enum class Level { quiet, failures, requests };

void start(Level level);

/// Writes what is still to be written, if it is taken soon.
void finish();

void note(std::string_view words);
void warning(std::string_view words);
void request(std::string_view id, std::string_view method, std::string_view pattern, int status,
             std::chrono::microseconds took);
void failure(std::string_view pattern, std::string_view words);

}

}
