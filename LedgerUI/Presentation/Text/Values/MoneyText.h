#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QString>

class WordTable;

/// An amount of money in one language, as a person reads and hears it. Made once from minor units; what needs the sign,
/// the digits or the code asks for them, so that nothing has to read a written amount again.
struct MoneyText {
    enum class Sign { none, plus, minus };

    QString currency; // its code; empty when there is no amount at all
    QString digits;   // grouped, without a sign; a dash where there is no amount or none that fits a number
    Sign sign = Sign::none;
    QString spoken; // "minus 38,600,000 Vietnamese dong"; empty for a dash
    std::int64_t minor = 0;

    bool operator==(const MoneyText&) const = default;

    [[nodiscard]] bool isKnown() const { return !spoken.isEmpty(); }
    /// "−38,600,000".
    [[nodiscard]] QString figure() const;
    /// "VND −38,600,000", held together.
    [[nodiscard]] QString text() const;
    /// For spreadsheets: digits as they are read, a hyphen before amounts below zero, no plus.
    [[nodiscard]] QString plain() const;
};

/// A movement: "+16,074.00", "−12,000.00".
MoneyText movementText(std::int64_t minor, std::string_view currency, std::string_view locale);

/// What is there: a sign only below zero.
MoneyText balanceText(std::int64_t minor, std::string_view currency, std::string_view locale);

/// A dash in the place of an amount of this currency.
MoneyText unknownMoney(std::string_view currency);

/// What one unit of `from` came to, to four digits or more: "SGD 1.340"; "–" where an amount is missing.
QString rateText(std::int64_t fromMinor, const std::string& from, std::int64_t toMinor, const std::string& to,
                 std::string_view locale);

/// How an amount is said aloud, by which way it goes.
const WordTable& spokenMoney();
