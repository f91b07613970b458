#pragma once

#include <string>

#include "Benchmarks/Samples.h"

/// What a server of PostgreSQL and its disk do alone: each sample is one small row, committed durably over a connection
/// such as the service's. Replaces the schema "bare" and removes it afterwards. Throws when it cannot.
Samples bareServedCommits(const std::string& address, std::chrono::seconds duration);
