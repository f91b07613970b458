#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerRow.h"

/// The money on one account, one line a currency that it holds.
struct LedgerAccountBalance {
    std::string accountID;
    QString name;
    std::vector<LedgerAmount> amounts;

    bool operator==(const LedgerAccountBalance&) const = default;
};

struct LedgerBalanceGroup {
    QString title;
    std::vector<LedgerAccountBalance> accounts;

    bool operator==(const LedgerBalanceGroup&) const = default;
};

/// What is where: the accounts that the member may view by purpose, and the sum of each currency over all of them.
struct LedgerBalances {
    std::vector<LedgerBalanceGroup> groups; // company, employees, refunds, archived; none of them empty
    std::vector<LedgerAmount> totals;       // in the order of the currency pickers

    bool operator==(const LedgerBalances&) const = default;
};

/// Archived accounts are left out once they are empty.
LedgerBalances balancesOf(const LedgerSnapshot& snapshot, std::string_view locale);
