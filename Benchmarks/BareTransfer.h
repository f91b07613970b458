#pragma once

#include <string>

#include "Benchmarks/Samples.h"

/// What the loopback network does alone: each sample is these bytes sent whole over one kept TCP connection, from the
/// reader's request of one byte to the last byte read.
Samples bareTransfer(const std::string& bytes, int repetitions);
