#pragma once

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Books of each size, made once and kept for as long as benchmarks of that size follow each other.
namespace BooksUnderTest {

const LedgerSnapshot& books(std::size_t entryCount);
/// The same as the JSON text of a snapshot.
const std::string& json(std::size_t entryCount);

/// Reports entries a second and the most memory that this process ever held: run one benchmark a process for the
/// latter to mean anything.
void count(benchmark::State& state, std::size_t entryCount);

}
