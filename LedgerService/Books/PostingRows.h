#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The income that a refund names.
struct RefundOriginal {
    LedgerTransaction entry;
    std::vector<Account> accounts; // those of its legs
    MinorByCurrency refunded;      // already paid back by refunds that name it and are not reversed; positive
};

/// Whether the member may learn that a refund on `accountID` carries a reference: the member views the account, or the
/// new refund leaves it. Elsewhere the reference counts as unused, so that a refusal tells of no hidden entry.
bool mayKnowOfReference(const Member& member, std::string_view accountID,
                        const std::optional<std::string>& sourceAccountID);

/// The rows that recording one entry looks at; nothing in it grows with the ledger. Rows are found by id within the
/// member's company, and one that is not there stays unset. Accounts carry at least their balances in the currencies
/// of the command.
struct PostingRows {
    std::string entryID; // for the entry to append
    std::string today;   // the company's day, "YYYY-MM-DD"
    std::string now;     // stamp of recording
    Member member;       // who records
    std::optional<FinancialSettings> settings;
    std::optional<Account> source;             // of `sourceAccountID`
    std::optional<Account> target;             // of `targetAccountID`; may be the very account of `source`
    std::optional<Category> category;          // of `categoryID`
    std::optional<RefundOriginal> original;    // of `originalTransactionID`
    bool referenceUsed = false;                // by a refund that is not reversed and of which the member may know
    std::vector<std::string> activeOpeningIDs; // openings of the target in `currency` that are not reversed
    std::vector<Attachment> attachments;       // those of `attachmentIDs` that exist

    /// As the rules look at them; a view of these rows.
    [[nodiscard]] PostingContext context(const TransactionInput& input) const;
};

/// Whether a recorded entry that the member sees says what this command asks for, and has all receipts that it names:
/// they would be lost on who takes the entry for the own one.
bool isRecordOf(const LedgerTransaction& entry, const TransactionInput& input, const PostingRows& rows);

/// Decides an entry by `PostingRules`: all that must be written, or the first thing that is wrong.
std::expected<EntryChange, Refusal> decide(const TransactionInput& input, const PostingRows& rows);

}
