#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Money/MoneyError.h"

/// Amounts are signed counts of a currency's minor units; this is the one place that turns them into text and back.
namespace Money {

/// The largest magnitude of an amount or of a running sum, in minor units.
inline constexpr std::int64_t maximumMinor = 9'000'000'000'000;

/// The separators of a locale: comma and point change places for Indonesian and Vietnamese.
struct Separators {
    char decimal = '.';
    char grouping = ',';
};
Separators separators(std::string_view locale);

/// Plain text for machines, such as "-1234.50". An unknown currency has two decimals.
std::string decimalString(std::int64_t minor, std::string_view currency);

/// Digits as people read them, without the currency code: "−1,234.50". Whole rupiah show no decimals.
std::string formatDigits(std::int64_t minor, std::string_view currency, std::string_view locale);

/// Code, one blank and the digits: "USD −1,234.50".
std::string format(std::int64_t minor, std::string_view currency, std::string_view locale);

/// Reads what a person typed. A sign is accepted; whether it is allowed is the caller's rule.
std::expected<std::int64_t, MoneyError> parse(std::string_view text, std::string_view currency,
                                              std::string_view locale);

/// The sum, or nothing when it does not fit 64 bits.
std::optional<std::int64_t> add(std::int64_t left, std::int64_t right);

/// Whether `minor` lies within ±`maximumMinor`.
constexpr bool isWithinLimit(std::int64_t minor)
{
    return minor >= -maximumMinor && minor <= maximumMinor;
}

}
