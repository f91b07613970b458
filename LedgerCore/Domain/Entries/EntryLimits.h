#pragma once

#include <cstddef>

/// How much an entry can carry and how far its day may lie ahead or behind. Form, companion and service count alike.
namespace EntryLimits {

inline constexpr std::size_t noteLength = 2'000;    // code points, also of a reversal's reason
inline constexpr std::size_t referenceLength = 200; // code points
inline constexpr std::size_t keyBytes = 200;        // of an idempotency key
inline constexpr std::size_t receipts = 10;

inline constexpr int daysAhead = 1;  // members may live a time zone ahead of the service
inline constexpr int daysBehind = 1; // a refund or reversal may be dated so much before what it is about

}
