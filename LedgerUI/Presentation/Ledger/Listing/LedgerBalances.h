#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// The money on one account, one line per currency that it holds.
struct LedgerAccountBalance {
    std::string accountID;
    QString name;
    std::vector<MoneyText> amounts;

    bool operator==(const LedgerAccountBalance&) const = default;
};

struct LedgerBalanceGroup {
    QString title;
    std::vector<LedgerAccountBalance> accounts;

    bool operator==(const LedgerBalanceGroup&) const = default;
};

/// What is where at the end of one day: the accounts that the member may view by purpose, and the sum of each currency
/// over all of them.
struct LedgerBalances {
    QString day;                            // "At the end of 30 September 2026"
    std::vector<LedgerBalanceGroup> groups; // company, employees, refunds, archived; none of them empty
    std::vector<MoneyText> totals;          // in the order of the currency pickers
    QString hint;                           // why some are not known; empty when all are

    bool operator==(const LedgerBalances&) const = default;
};

/// The currencies that an account holds, then any others that still have money on it.
std::vector<std::string> currenciesOf(const Account& account);

/// The day at whose end a look at `period` sees the balances: its last, but none after today and the last entry.
std::chrono::year_month_day balanceDay(const LedgerBook& book, const Period& period, std::chrono::year_month_day today);

/// The balances at the end of `day`. A past balance is known only where the entries that the member sees explain the
/// balance of now. Archived accounts are left out where they are empty.
LedgerBalances balancesOn(const LedgerBook& book, std::chrono::year_month_day day);
