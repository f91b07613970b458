#include "LedgerService/TimeZone.h"

#include <memory>

#include <unicode/timezone.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace LedgerService {

namespace {

using Milliseconds = std::chrono::milliseconds;

/// Nothing when the name is none.
std::unique_ptr<icu::TimeZone> zoneOf(std::string_view name)
{
    const icu::StringPiece text{name.data(), static_cast<int32_t>(name.size())};
    std::unique_ptr<icu::TimeZone> zone{icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(text))};
    return !zone || *zone == icu::TimeZone::getUnknown() ? nullptr : std::move(zone);
}

}

bool TimeZone::isKnown(std::string_view name)
{
    return zoneOf(name) != nullptr;
}

std::string TimeZone::day(const std::optional<std::string>& name, std::chrono::system_clock::time_point instant)
{
    const auto zone = name ? zoneOf(*name) : nullptr;
    if (!zone)
        return LedgerDay::localGregorian().day(instant);
    const auto sinceEpoch = std::chrono::floor<Milliseconds>(instant.time_since_epoch());
    int32_t offset = 0;
    int32_t summer = 0;
    auto failure = U_ZERO_ERROR;
    zone->getOffset(static_cast<UDate>(sinceEpoch.count()), false, offset, summer, failure);
    const std::chrono::sys_time<Milliseconds> there{sinceEpoch + Milliseconds{offset} + Milliseconds{summer}};
    return LedgerDay::format(std::chrono::floor<std::chrono::days>(there));
}

}
