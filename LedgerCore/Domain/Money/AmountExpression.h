#pragma once

#include <cstdint>
#include <expected>
#include <string_view>

/// Arithmetic over amounts as a person types it: "12*3500", "(1,200+300)/2". Numbers stand in the separators of the
/// language; + − * / and brackets mean what they mean in books, × ÷ x : and their wide forms are taken too. Every step
/// is exact; nothing is ever rounded.
namespace AmountExpression {

enum class Error {
    unreadable, // not finished, or no arithmetic
    notExact,   // the result has a fraction below the currency's smallest unit
    dividesByZero,
    outOfRange, // the result, or a step on the way to it
    unsupportedCurrency
};

/// Whether a text is more than one number with or without a sign.
bool isOne(std::string_view text);

/// The result in minor units; it may be negative.
std::expected<std::int64_t, Error> evaluate(std::string_view text, std::string_view currency, std::string_view locale);

}
