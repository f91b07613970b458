#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/Posting/PostingRefusal.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// What recording one entry looks at: the records that the command names, as far as they exist, and what the books say
/// about them. Whether the member may see and use a record is judged by the rules. A view: all of it must outlive it.
struct PostingContext {
    const Member* member = nullptr; // who records
    std::string_view today;         // "YYYY-MM-DD"
    std::string_view start;         // first day of the books; empty while none is confirmed
    const Account* source = nullptr;
    const Account* target = nullptr; // may be the very account of `source`
    const Category* category = nullptr;
    const LedgerTransaction* original = nullptr;  // the income that a refund names
    std::vector<const Account*> originalAccounts; // those of its legs
    std::int64_t refundedMinor = 0;               // already paid back of it in the command's currency; positive
    bool referenceUsed = false;                   // a refund that is not reversed carries the command's reference
    bool openingExists = false;                   // one of the target in the currency that is not reversed
    bool historyComplete = true;                  // `openingExists` is certain
    bool balanceKnown = true;                     // that of `source` in the currency
    /// Those of the command's receipts that exist; nothing where receipts that were uploaded cannot be looked up.
    std::optional<std::vector<const Attachment*>> receipts;
};

/// Whether an entry may be recorded. The service accepts by these rules; form and import foretell by them.
namespace PostingRules {

/// The context of a command in the books that a member sees, without a pass over the entries once they are indexed.
PostingContext contextOf(const TransactionInput& input, const VisibleBooks& books, std::string_view today);

/// Everything that keeps the entry from being recorded, in this order. A rule whose ground is missing, such as a
/// balance without an account, says nothing.
///  1. the member is active;
///  2. the command is whole: a kind that can be recorded, just the fields of its kind, a real day, sound texts, amounts
///     above zero and within the limit;
///  3. every record it names exists and is visible;
///  4. the accounts may be used for it by this member and hold the currency, and a transfer states its own purpose;
///  5. the day is within the books;
///  6. what its kind asks for: category, refund, opening;
///  7. receipts are free to be linked;
///  8. the balances stay possible.
std::vector<PostingRefusal> refusals(const TransactionInput& input, const PostingContext& context);

/// The first of them, by which the service refuses.
std::optional<PostingRefusal> whyNot(const TransactionInput& input, const PostingContext& context);

/// The movements of the entry: out of the source, into the target.
std::vector<LedgerLeg> legs(const TransactionInput& input);

/// The part of an income that arrived in the currency; minor units.
std::int64_t receivedMinor(const LedgerTransaction& income, std::string_view currency);

}
