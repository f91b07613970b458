#pragma once

#include <string_view>

/// Why dividend figures could not be computed.
enum class DividendError { invalidAmount, invalidShares, participantUnavailable, invalidState, amountOverflow };

/// The stable text of a case.
std::string_view rawValue(DividendError error);
