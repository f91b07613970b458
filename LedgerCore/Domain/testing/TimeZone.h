#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

/// Puts the process into a time zone until the end of its scope.
class TimeZone {
public:
    explicit TimeZone(const char* name)
    {
        const auto* before = std::getenv("TZ");
        if (before)
            m_before = before;
        setenv("TZ", name, 1);
        tzset();
    }
    ~TimeZone()
    {
        if (m_before)
            setenv("TZ", m_before->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<std::string> m_before;
};
