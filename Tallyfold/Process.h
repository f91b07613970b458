#pragma once

#include <chrono>
#include <optional>

/// How long ago the system started this process, from its own records; nothing where it keeps none.
std::optional<std::chrono::milliseconds> processAge();

/// Makes large blocks of memory go back to the system as soon as they are given up. Otherwise the allocator keeps what
/// the books of yesterday took, in case it is wanted once more, and every reload leaves more of it behind.
void giveBackLargeBlocks();
