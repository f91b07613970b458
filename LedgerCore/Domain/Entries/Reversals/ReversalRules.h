#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// What reversing one entry looks at. A view: everything that it names must outlive it.
struct ReversalContext {
    const Member* member = nullptr;              // who reverses
    std::string_view today;                      // "YYYY-MM-DD"
    std::string_view start;                      // first day of the books; empty while none is confirmed
    const LedgerTransaction* original = nullptr; // null when there is no such entry
    std::vector<const Account*> accounts; // those of its legs; a member's view may lack some, which are not judged
    bool refundsExist = false;            // a refund that is not reversed names the original
};

/// Whether an entry may be undone by its opposite. The service accepts by these rules, screens offer by them.
namespace ReversalRules {

enum class Refusal {
    inactiveMember,
    // The command by itself
    invalidDay,
    invalidKey, // the idempotency key is empty or too long
    reasonTooLong,
    reasonUnsound, // broken UTF-8 or a NUL
    // The entry
    notFound, // not there, or not to be seen by the member
    isReversal,
    alreadyReversed,
    capitalCorrection,  // undone on the Capital page
    dividendCorrection, // undone on the Dividends page
    noLegs,
    notPermitted,
    // What hangs on it
    refundsExist,
    accountArchived,
    // The day
    inFuture,       // after tomorrow
    beforeStart,    // of the books
    beforeOriginal, // more than a day, as time zones go
    // The balances
    insufficientFunds, // the money on an employee's account is spent
    balanceLimit,
};

/// The context of an entry that a member sees, for a window: no day is judged until a command names one. The second is
/// for a window that knows by other means whether a refund that is not reversed names the entry.
ReversalContext contextOf(const LedgerTransaction& entry, const VisibleBooks& books, std::string_view today);
ReversalContext contextOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, bool hasRefunds,
                          std::string_view today);

/// What keeps the member from reversing the entry at all, whatever the day and the reason; nothing when the reversal
/// can be offered. The service may still know of an obstacle that the member does not see.
std::optional<Refusal> whyNot(const LedgerTransaction& entry, const VisibleBooks& books);
std::optional<Refusal> whyNot(const ReversalContext& context);

/// What keeps this reversal from being recorded, the first obstacle in the order of `Refusal`.
std::optional<Refusal> whyNot(const Reversal& command, const ReversalContext& context);

/// What a person reads about it.
std::string_view text(Refusal refusal, std::string_view locale);

/// The movements of the reversal.
std::vector<LedgerLeg> legs(const LedgerTransaction& original);

}
