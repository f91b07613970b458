#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Which figures of capital and dividends are asked for.
struct CapitalQuestion {
    Period period = Period::allTime();
    std::string currency;

    /// The first and the last day as the ledger writes days; nothing for all time.
    [[nodiscard]] std::optional<std::string> fromDay() const;
    [[nodiscard]] std::optional<std::string> throughDay() const;
};

namespace CapitalCurrencies {

/// The currencies in which the company keeps capital or dividends, in the order of the pickers: those of its records,
/// while there are none those of its accounts, and in a company without either the first of all: owners, shares and
/// what was paid in before are recorded before there is an account.
std::vector<std::string> of(const LedgerSnapshot& snapshot);

/// The one to begin with: the chosen one while it is among them.
std::string chosen(const std::vector<std::string>& offered, std::string_view wanted);

}
