#include "LedgerService/Books/Books.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace LedgerService {

namespace {

auto byID(auto& rows, std::string_view id)
{
    const auto found = std::ranges::find(rows, id, [](const auto& row) -> std::string_view { return row.id; });
    return found == rows.end() ? nullptr : &*found;
}

template <class Row>
std::optional<Row> named(const std::vector<Row>& rows, const std::optional<std::string>& id)
{
    const auto* const row = byID(rows, EntryText::given(id));
    return row ? std::optional{*row} : std::nullopt;
}

std::vector<Account> accountsOf(const LedgerTransaction& entry, const Books& books)
{
    std::vector<Account> accounts;
    for (const auto& leg : entry.legs) {
        const auto* const account = books.account(leg.accountID);
        if (account && !byID(accounts, account->id))
            accounts.push_back(*account);
    }
    return accounts;
}

bool isActiveRefund(const LedgerTransaction& entry)
{
    return entry.kind == EntryKind::refund && !entry.reversedBy;
}

MinorByCurrency refundedOf(const std::string& incomeID, const Books& books)
{
    MinorByCurrency refunded;
    for (const auto& entry : books.entries) {
        if (!isActiveRefund(entry) || entry.originalTransactionID != incomeID)
            continue;
        for (const auto& leg : entry.legs)
            refunded[leg.currency] -= leg.amountMinor;
    }
    return refunded;
}

std::optional<RefundOriginal> refundOriginal(const TransactionInput& input, const Books& books)
{
    auto entry = named(books.entries, input.originalTransactionID);
    if (!entry)
        return std::nullopt;
    auto accounts = accountsOf(*entry, books);
    auto refunded = refundedOf(entry->id, books);
    return RefundOriginal{*std::move(entry), std::move(accounts), std::move(refunded)};
}

bool isReferenceUsed(const TransactionInput& input, const Member& member, const Books& books)
{
    const auto reference = EntryReference::of(input);
    const auto wanted = EntryReference::folded(reference);
    return !reference.empty() && std::ranges::any_of(books.entries, [&](const LedgerTransaction& entry) {
        return isActiveRefund(entry) && entry.externalReference &&
               EntryReference::folded(*entry.externalReference) == wanted &&
               std::ranges::any_of(entry.legs, [&](const LedgerLeg& leg) {
                   return mayKnowOfReference(member, leg.accountID, input.sourceAccountID);
               });
    });
}

std::vector<std::string> activeOpenings(std::string_view accountID, std::string_view currency, const Books& books)
{
    std::vector<std::string> ids;
    for (const auto& entry : books.entries) {
        const bool touches = std::ranges::any_of(
            entry.legs, [&](const LedgerLeg& leg) { return leg.accountID == accountID && leg.currency == currency; });
        if (entry.kind == EntryKind::opening && !entry.reversedBy && touches)
            ids.push_back(entry.id);
    }
    return ids;
}

const Member& actorOf(const BookAct& act, const Books& books)
{
    const auto* const member = byID(books.members, act.memberID);
    require(member != nullptr, "only members act on the books");
    return *member;
}

}

const Account* Books::account(std::string_view id) const
{
    return byID(accounts, id);
}

const LedgerTransaction* Books::entry(std::string_view id) const
{
    return byID(entries, id);
}

PostingRows Books::rowsOf(const TransactionInput& input, const BookAct& act) const
{
    PostingRows rows{.entryID = act.entryID,
                     .today = act.today,
                     .now = act.now,
                     .member = actorOf(act, *this),
                     .settings = settings,
                     .source = named(accounts, input.sourceAccountID),
                     .target = named(accounts, input.targetAccountID),
                     .category = named(categories, input.categoryID),
                     .original = refundOriginal(input, *this),
                     .referenceUsed = isReferenceUsed(input, actorOf(act, *this), *this),
                     .activeOpeningIDs = {},
                     .attachments = {}};
    if (input.kind == EntryKind::opening && rows.target)
        rows.activeOpeningIDs = activeOpenings(rows.target->id, input.currency, *this);
    for (const auto& id : input.attachmentIDs) {
        if (const auto* const attachment = byID(attachments, id))
            rows.attachments.push_back(*attachment);
    }
    return rows;
}

ReversalRows Books::rowsOf(std::string_view originalID, const BookAct& act) const
{
    ReversalRows rows{.entryID = act.entryID,
                      .today = act.today,
                      .now = act.now,
                      .member = actorOf(act, *this),
                      .settings = settings,
                      .original = std::nullopt,
                      .accounts = {},
                      .refundsExist = false};
    if (const auto* const original = entry(originalID)) {
        rows.original = *original;
        rows.accounts = accountsOf(*original, *this);
        rows.refundsExist = std::ranges::any_of(entries, [&](const LedgerTransaction& each) {
            return isActiveRefund(each) && each.originalTransactionID == originalID;
        });
    }
    return rows;
}

std::expected<void, Refusal> Books::record(const TransactionInput& input, const BookAct& act)
{
    auto change = decide(input, rowsOf(input, act));
    if (!change)
        return std::unexpected(std::move(change.error()));
    apply(*change);
    return {};
}

std::expected<void, Refusal> Books::reverse(std::string_view originalID, const Reversal& command, const BookAct& act)
{
    auto change = decide(command, rowsOf(originalID, act));
    if (!change)
        return std::unexpected(std::move(change.error()));
    apply(*change);
    return {};
}

void Books::apply(const EntryChange& change)
{
    for (const auto& balance : change.balances)
        byID(accounts, balance.accountID)->balances[balance.currency] = balance.balanceMinor;
    for (const auto& id : change.entry.attachmentIDs)
        byID(attachments, id)->transactionID = change.entry.id;
    if (change.entry.reversalOf)
        byID(entries, *change.entry.reversalOf)->reversedBy = change.entry.id;
    entries.push_back(change.entry);
}

}
