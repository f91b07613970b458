#pragma once

#include <chrono>
#include <string>

/// Where the present comes from.
class Clock {
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual std::chrono::system_clock::time_point now() const = 0;

    /// The day that `now` falls on in the machine's time zone, "YYYY-MM-DD".
    [[nodiscard]] std::string today() const;
};

/// The machine's own clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] std::chrono::system_clock::time_point now() const override;
};
