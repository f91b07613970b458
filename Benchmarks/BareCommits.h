#pragma once

#include <string>

#include "Benchmarks/Samples.h"

/// What the database library and the disk do alone: each sample is one small row, committed durably in the mode that
/// the service uses and to a log that has reached its size, as it has after the first minutes of a service. Replaces
/// the file and removes it afterwards. Throws when it cannot.
Samples bareCommits(const std::string& databaseFile, std::chrono::seconds duration);
