#include "LedgerService/Books/PostingRows.h"

#include <algorithm>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Records/Permission.h"
#include "LedgerService/Books/BookRefusal.h"

namespace LedgerService {

namespace {

using EntryText::given;

template <class Row>
const Row* pointer(const std::optional<Row>& row)
{
    return row ? &*row : nullptr;
}

std::optional<std::string> unlessEmpty(std::string_view text)
{
    return text.empty() ? std::nullopt : std::optional<std::string>{text};
}

LedgerTransaction entryOf(const TransactionInput& input, const PostingRows& rows)
{
    LedgerTransaction entry;
    entry.id = rows.entryID;
    entry.kind = input.kind;
    entry.date = input.date;
    entry.note = input.note;
    entry.createdAt = rows.now;
    entry.memberID = rows.member.id;
    entry.categoryID = unlessEmpty(given(input.categoryID));
    entry.legs = PostingRules::legs(input);
    entry.attachmentIDs = input.attachmentIDs;
    entry.originalTransactionID = unlessEmpty(given(input.originalTransactionID));
    entry.transferPurpose = unlessEmpty(given(input.transferPurpose));
    entry.externalReference = unlessEmpty(EntryReference::of(input));
    return entry;
}

std::vector<BalanceAfter> balancesAfter(const LedgerTransaction& entry, const PostingContext& context)
{
    std::vector<const Account*> accounts;
    for (const auto* account : {context.source, context.target}) {
        if (account)
            accounts.push_back(account);
    }
    auto balances = BalanceRules::after(entry.legs, accounts);
    require(balances.has_value(), "an entry that is accepted leaves possible balances");
    return *std::move(balances);
}

}

PostingContext PostingRows::context(const TransactionInput& input) const
{
    PostingContext context;
    context.member = &member;
    context.today = today;
    context.start = EntryDays::start(settings);
    context.source = pointer(source);
    context.target = pointer(target);
    context.category = pointer(category);
    if (original) {
        context.original = &original->entry;
        for (const auto& account : original->accounts)
            context.originalAccounts.push_back(&account);
        const auto refunded = original->refunded.find(input.currency);
        context.refundedMinor = refunded == original->refunded.end() ? 0 : refunded->second;
    }
    context.referenceUsed = referenceUsed;
    context.openingExists = !activeOpeningIDs.empty();
    auto& receipts = context.receipts.emplace();
    for (const auto& attachment : attachments)
        receipts.push_back(&attachment);
    return context;
}

bool isRecordOf(const LedgerTransaction& entry, const TransactionInput& input, const PostingRows& rows)
{
    const auto asked = entryOf(input, rows);
    const bool seen = std::ranges::any_of(
        entry.legs, [&](const auto& leg) { return rows.member.can(AccountAction::view, leg.accountID); });
    const bool hasReceipts = std::ranges::all_of(asked.attachmentIDs, [&](const auto& id) {
        return std::ranges::find(entry.attachmentIDs, id) != entry.attachmentIDs.end();
    });
    return seen && hasReceipts && entry.kind == asked.kind && entry.date == asked.date && entry.note == asked.note &&
           entry.categoryID == asked.categoryID && entry.legs == asked.legs;
}

std::expected<EntryChange, Refusal> decide(const TransactionInput& input, const PostingRows& rows)
{
    const auto context = rows.context(input);
    if (const auto refusal = PostingRules::whyNot(input, context))
        return std::unexpected(BookRefusal::of(refusal->reason));
    EntryChange change{.entry = entryOf(input, rows), .balances = {}};
    change.balances = balancesAfter(change.entry, context);
    return change;
}

bool mayKnowOfReference(const Member& member, std::string_view accountID,
                        const std::optional<std::string>& sourceAccountID)
{
    return accountID == sourceAccountID || member.can(AccountAction::view, accountID);
}

}
