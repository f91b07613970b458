#pragma once

#include <chrono>
#include <optional>

/// How long ago the system started this process, from its own records; nothing where it keeps none.
std::optional<std::chrono::milliseconds> processAge();
