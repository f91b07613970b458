#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The income that a refund names.
struct RefundOriginal {
    LedgerTransaction entry;
    std::vector<Account> accounts; // those of its legs
    MinorByCurrency refunded;      // already paid back by refunds that name it and are not reversed; positive
};

/// The rows that recording one entry looks at; nothing in it grows with the ledger. Rows are found by id within the
/// member's company, and one that is not there stays unset: whether the member may see and use it is judged by
/// `decide`. Accounts carry at least their balances in the currencies of the command.
struct PostingContext {
    std::string entryID; // for the entry to append
    std::string today;   // the service's day, "YYYY-MM-DD"
    std::string now;     // stamp of recording
    Member member;       // who records
    std::optional<FinancialSettings> settings;
    std::optional<Account> source;             // of `sourceAccountID`
    std::optional<Account> target;             // of `targetAccountID`; may be the very account of `source`
    std::optional<Category> category;          // of `categoryID`
    std::optional<RefundOriginal> original;    // of `originalTransactionID`
    bool referenceUsed = false;                // a refund that is not reversed carries `refundReference(input)`
    std::vector<std::string> activeOpeningIDs; // openings of the target in `currency` that are not reversed
    std::vector<Attachment> attachments;       // those of `attachmentIDs` that exist
};

/// The reference under which a refund is known: without surrounding blanks; empty when there is none.
std::string_view refundReference(const TransactionInput& input);

/// Decides an entry by every rule of the books, the first broken one in this order:
///  1. the member is active ("inactive_member");
///  2. the command is whole: a kind that can be recorded, a real day, sound texts, amounts above zero and within the
///     limit, just the fields of its kind ("validation_error"; "refund_reference_required");
///  3. every row it names exists and is visible ("not_found");
///  4. the accounts may be used for it by this member ("account_archived", "exclusive_operator", "forbidden") and
///     hold the currency, and a transfer states its own purpose ("validation_error");
///  5. the day is within the books ("validation_error" past tomorrow, "financial_before_start_date",
///     "financial_opening_date_mismatch");
///  6. what its kind asks for: category ("CATEGORY_ARCHIVED"), refund ("invalid_refund_original",
///     "refund_original_unavailable", "validation_error" before its original, "duplicate_refund", "refund_limit"),
///     opening ("financial_opening_exists");
///  7. receipts are free to be linked ("attachment_linked");
///  8. the balances stay possible ("insufficient_funds", "balance_limit").
std::expected<EntryChange, Refusal> decide(const TransactionInput& input, const PostingContext& context);

}
