#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The rows that reversing one entry looks at, found within the member's company.
struct ReversalRows {
    std::string entryID; // for the reversal to append
    std::string today;   // the service's day, "YYYY-MM-DD"
    std::string now;     // stamp of recording
    Member member;       // who reverses
    std::optional<FinancialSettings> settings;
    std::optional<LedgerTransaction> original; // unset when the company has no such entry
    std::vector<Account> accounts;             // those of its legs, with their balances
    bool refundsExist = false;                 // a refund that is not reversed names the original

    /// As the rules look at them; a view of these rows.
    [[nodiscard]] ReversalContext context() const;
};

/// Decides the opposite entry by `ReversalRules`: all that must be written, or the first thing that is wrong.
std::expected<EntryChange, Refusal> decide(const Reversal& command, const ReversalRows& rows);

}
