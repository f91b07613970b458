#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace LedgerService {

/// What the process has done since its start, counted. It names routes and outcomes, never what a request carried.
namespace Metrics {

void request(std::string_view pattern, int status, std::chrono::microseconds took);

/// All figures in the text form that Prometheus collects.
std::string text();

}

}
