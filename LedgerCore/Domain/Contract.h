#pragma once

#include <optional>
#include <source_location>
#include <string_view>
#include <utility>

/// Stops the process, saying where which promise between our own functions is broken.
[[noreturn]] void breakPromise(std::string_view promise, std::source_location where);

/// Stops the process when a promise between our own functions is broken. Never for bad input.
inline void require(bool held, std::string_view promise, std::source_location where = std::source_location::current())
{
    if (!held)
        breakPromise(promise, where);
}

/// What is there because a promise between our own functions says so; stops the process when it is not.
template <class Optional>
[[nodiscard]] auto& promised(Optional& value, std::string_view promise,
                             std::source_location where = std::source_location::current())
{
    if (!value)
        breakPromise(promise, where);
    return *value;
}
template <class Value>
[[nodiscard]] Value promised(std::optional<Value>&& value, std::string_view promise,
                             std::source_location where = std::source_location::current())
{
    if (!value)
        breakPromise(promise, where);
    return *std::move(value);
}
