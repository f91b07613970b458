#pragma once

#include <string>
#include <string_view>

class WordTable;

/// Why a typed amount was not accepted.
enum class MoneyError { invalidFormat, excessPrecision, outOfRange, unsupportedCurrency };

/// The stable text of a case, as it stands in machine-readable reports.
std::string_view rawValue(MoneyError error);

/// What the user reads of each case, by its stable text.
const WordTable& moneyErrorWords();
/// The same of one, in the interface language that `locale` resolves to.
std::string_view friendlyMessage(MoneyError error, std::string_view locale);
