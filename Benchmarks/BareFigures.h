#pragma once

#include <string>

#include "Benchmarks/Samples.h"

// What the figures are compared to: the same work done by a library and the system alone.

/// What the database library and the disk do alone: each sample is one small row, committed durably in the mode that
/// the service uses and to a log that has reached its size, as it has after the first minutes of a service. Replaces
/// the file and removes it afterwards. Throws when it cannot.
Samples bareCommits(const std::string& databaseFile, std::chrono::seconds duration);

/// What a server of PostgreSQL and its disk do alone: each sample is one small row, committed durably over a connection
/// such as the service's. Replaces the schema "bare" and removes it afterwards. Throws when it cannot.
Samples bareServedCommits(const std::string& address, std::chrono::seconds duration);

/// What the loopback network does alone: each sample is these bytes sent whole over one kept TCP connection, from the
/// reader's request of one byte to the last byte read.
Samples bareTransfer(const std::string& bytes, int repetitions);
