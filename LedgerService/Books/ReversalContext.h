#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The rows that reversing one entry looks at, found within the member's company.
struct ReversalContext {
    std::string entryID; // for the reversal to append
    std::string today;   // the service's day, "YYYY-MM-DD"
    std::string now;     // stamp of recording
    Member member;       // who reverses
    std::optional<FinancialSettings> settings;
    std::optional<LedgerTransaction> original; // unset when the company has no such entry
    std::vector<Account> accounts;             // those of its legs, with their balances
    bool refundsExist = false;                 // a refund that is not reversed names the original
};

/// Decides the opposite entry by every rule of the books, the first broken one in this order:
///  1. the member is active ("inactive_member");
///  2. a real day and a sound reason ("validation_error");
///  3. the entry exists, with an account that the member sees ("not_found");
///  4. it is no reversal ("validation_error") and not reversed yet ("already_reversed");
///  5. it belongs to no contribution or dividend ("capital_correction_required", "dividend_correction_required");
///  6. the member may correct it ("forbidden");
///  7. nothing hangs on it ("refunds_exist"), and none of its accounts is archived ("account_archived");
///  8. the day is within the books and at most one day, as time zones go, before the original ("validation_error",
///     "financial_before_start_date");
///  9. the balances stay possible ("insufficient_funds", "balance_limit").
std::expected<EntryChange, Refusal> decide(const Reversal& command, const ReversalContext& context);

}
