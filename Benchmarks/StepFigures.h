#pragma once

#include <functional>
#include <string_view>

/// Runs the event loop until the condition holds, asleep while there is nothing to do.
void waitFor(const std::function<bool()>& condition);

/// Takes a step several times and prints, best and median: how long it took until it was shown, what all threads of the
/// program computed for it, and how long it kept the window from answering at a stretch. `home` comes before each step
/// and is not measured.
void printStep(std::string_view name, int repetitions, const std::function<void()>& home,
               const std::function<void()>& step);
