#pragma once

#include <algorithm>
#include <chrono>

/// How long writers wait for others before they give up.
namespace LedgerService::Patience {

inline constexpr std::chrono::milliseconds whole{10'000};

/// What is left of it; never nothing, which servers take for having no end.
inline std::chrono::milliseconds until(std::chrono::steady_clock::time_point end)
{
    using namespace std::chrono_literals;
    return std::clamp(std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()), 1ms, whole);
}

}
