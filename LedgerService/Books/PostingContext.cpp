#include "LedgerService/Books/PostingContext.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Money.h"
#include "LedgerCore/Domain/TextFold.h"
#include "LedgerService/Books/BalanceChange.h"
#include "LedgerService/Books/BookDays.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/EntryShape.h"

namespace {

using EntryShape::isGiven;
using Answer = std::optional<Refusal>;

constexpr auto idOf = [](const auto& row) -> const std::string& {
    if constexpr (requires { row.entry.id; })
        return row.entry.id;
    else
        return row.id;
};

/// Whether the named row was found; unnamed ones need none.
bool isFound(const std::optional<std::string>& id, const auto& row)
{
    if (!isGiven(id))
        return true;
    require(!row || idOf(*row) == *id, "the context holds the rows that the command names");
    return row.has_value();
}

bool sees(const Member& member, const LedgerTransaction& entry)
{
    return std::ranges::any_of(entry.legs, [&](const auto& leg) { return member.can("view", leg.accountID); });
}

bool seesTarget(const TransactionInput& input, const PostingContext& context)
{
    if (input.kind != EntryKind::transfer)
        return context.member.can("view", context.target->id);
    return LedgerEntryAccess::whyNotReceive(*context.source, *context.target, context.member) !=
           LedgerEntryAccess::DestinationRefusal::notViewable;
}

Answer whyNotFound(const TransactionInput& input, const PostingContext& context)
{
    const bool found = isFound(input.sourceAccountID, context.source) &&
                       isFound(input.targetAccountID, context.target) && isFound(input.categoryID, context.category) &&
                       isFound(input.originalTransactionID, context.original) &&
                       context.attachments.size() == input.attachmentIDs.size();
    if (!found || (isGiven(input.sourceAccountID) && !context.member.can("view", context.source->id)) ||
        (isGiven(input.targetAccountID) && !seesTarget(input, context)) ||
        (isGiven(input.originalTransactionID) && !sees(context.member, context.original->entry)))
        return BookRefusal::notFound();
    return std::nullopt;
}

Answer whyNotUsable(const Account& account, const Member& member, std::string_view kind)
{
    const auto refusal = LedgerEntryAccess::whyNotRecord(account, member, kind);
    if (!refusal)
        return std::nullopt;
    switch (*refusal) {
        using enum LedgerEntryAccess::RecordRefusal;
    case archived:
        return BookRefusal::accountArchived();
    case inactiveMember:
        return BookRefusal::inactiveMember();
    case noIdentifier:
    case notViewable:
        return BookRefusal::notFound();
    case notGranted:
        return BookRefusal::forbidden("The member may not record this kind of entry on the account.");
    case notResponsible:
        return BookRefusal::exclusiveOperator();
    case kindRefused:
        return BookRefusal::forbidden("The account does not take this kind of entry.");
    }
    __builtin_unreachable();
}

Answer whyNotDestination(const TransactionInput& input, const PostingContext& context)
{
    const auto& source = *context.source;
    const auto& target = *context.target;
    if (const auto refusal = LedgerEntryAccess::whyNotReceive(source, target, context.member)) {
        switch (*refusal) {
            using enum LedgerEntryAccess::DestinationRefusal;
        case sameAccount:
            return BookRefusal::invalid("A transfer joins two different accounts.");
        case notViewable:
            return BookRefusal::notFound();
        case notGranted:
            return BookRefusal::forbidden("The member may not transfer into the account.");
        case archived:
            return BookRefusal::accountArchived();
        case restrictedToRestricted:
            return BookRefusal::forbidden("Money of a float or refund account goes back to a company account.");
        }
    }
    const auto stated =
        isGiven(input.transferPurpose) ? std::optional<std::string_view>{*input.transferPurpose} : std::nullopt;
    if (stated != LedgerEntryAccess::transferPurpose(source, target))
        return BookRefusal::invalid("The transfer's purpose is not the one of its accounts.");
    return std::nullopt;
}

Answer whyNotOnAccounts(const TransactionInput& input, const PostingContext& context)
{
    const bool transfers = input.kind == EntryKind::transfer;
    if (context.source) {
        if (auto refusal = whyNotUsable(*context.source, context.member, input.kind))
            return refusal;
    }
    if (context.target && !transfers) {
        if (auto refusal = whyNotUsable(*context.target, context.member, input.kind))
            return refusal;
    }
    if (transfers) {
        if (auto refusal = whyNotDestination(input, context))
            return refusal;
    }
    const auto& received = isGiven(input.targetCurrency) ? *input.targetCurrency : input.currency;
    if ((context.source && !context.source->holds(input.currency)) ||
        (context.target && !context.target->holds(received)))
        return BookRefusal::invalid("The account does not hold the currency.");
    return std::nullopt;
}

Answer whyNotOnDay(const TransactionInput& input, const PostingContext& context)
{
    if (auto refusal = BookDays::whyNot(input.date, context.today, context.settings))
        return refusal;
    const auto start = BookDays::start(context.settings);
    if (input.kind == EntryKind::opening && start && input.date != *start)
        return BookRefusal::openingDateMismatch();
    return std::nullopt;
}

/// The part of an income that was received in the currency.
std::int64_t received(const LedgerTransaction& income, std::string_view currency)
{
    std::int64_t sum = 0;
    for (const auto& leg : income.legs) {
        if (leg.currency == currency)
            sum = Money::add(sum, leg.amountMinor).value_or(0);
    }
    return sum;
}

Answer whyNotRefund(const TransactionInput& input, const PostingContext& context)
{
    if (context.original) {
        const auto& accounts = context.original->accounts;
        const auto lookup = [&](std::string_view id) {
            const auto found = std::ranges::find(accounts, id, &Account::id);
            return found == accounts.end() ? nullptr : &*found;
        };
        const auto refusal =
            LedgerEntryAccess::whyNotRefund(context.original->entry, lookup, context.member, input.currency);
        using enum LedgerEntryAccess::OriginalRefusal;
        if (refusal == notIncome || refusal == otherCurrency)
            return BookRefusal::invalidRefundOriginal();
        if (refusal)
            return BookRefusal::refundOriginalUnavailable();
    }
    if (context.referenceUsed)
        return BookRefusal::duplicateRefund();
    if (context.original) {
        const auto earlier = context.original->refunded.find(input.currency);
        const auto total =
            Money::add(earlier == context.original->refunded.end() ? 0 : earlier->second, input.amountMinor);
        if (!total || *total > received(context.original->entry, input.currency))
            return BookRefusal::refundLimit();
    }
    return std::nullopt;
}

Answer whyNotByKind(const TransactionInput& input, const PostingContext& context)
{
    if (context.category && context.category->kind != input.kind)
        return BookRefusal::invalid("The category is of another kind.");
    if (context.category && context.category->archived)
        return BookRefusal::categoryArchived();
    if (input.kind == EntryKind::refund)
        return whyNotRefund(input, context);
    if (input.kind == EntryKind::opening && !context.activeOpeningIDs.empty())
        return BookRefusal::openingExists();
    return std::nullopt;
}

Answer whyNotLinkable(const PostingContext& context)
{
    const bool linked =
        std::ranges::any_of(context.attachments, [](const Attachment& each) { return isGiven(each.transactionID); });
    return linked ? Answer{BookRefusal::attachmentLinked()} : std::nullopt;
}

std::vector<LedgerLeg> legsOf(const TransactionInput& input)
{
    std::vector<LedgerLeg> legs;
    if (isGiven(input.sourceAccountID))
        legs.push_back({*input.sourceAccountID, input.currency, -input.amountMinor});
    if (isGiven(input.targetAccountID))
        legs.push_back({*input.targetAccountID, isGiven(input.targetCurrency) ? *input.targetCurrency : input.currency,
                        input.targetAmountMinor.value_or(input.amountMinor)});
    return legs;
}

std::optional<std::string> given(const std::optional<std::string>& text)
{
    return isGiven(text) ? text : std::nullopt;
}

LedgerTransaction entryOf(const TransactionInput& input, const PostingContext& context)
{
    LedgerTransaction entry;
    entry.id = context.entryID;
    entry.kind = input.kind;
    entry.date = input.date;
    entry.note = input.note;
    entry.createdAt = context.now;
    entry.memberID = context.member.id;
    entry.categoryID = given(input.categoryID);
    entry.legs = legsOf(input);
    entry.attachmentIDs = input.attachmentIDs;
    entry.originalTransactionID = given(input.originalTransactionID);
    entry.transferPurpose = given(input.transferPurpose);
    if (const auto reference = refundReference(input); !reference.empty())
        entry.externalReference = reference;
    return entry;
}

}

std::string_view refundReference(const TransactionInput& input)
{
    return input.externalReference ? TextFold::trimmed(*input.externalReference) : std::string_view{};
}

std::expected<EntryChange, Refusal> decide(const TransactionInput& input, const PostingContext& context)
{
    if (!context.member.active)
        return std::unexpected(BookRefusal::inactiveMember());
    if (auto refusal = EntryShape::whyNot(input))
        return std::unexpected(*std::move(refusal));
    for (const auto rule : {whyNotFound, whyNotOnAccounts, whyNotOnDay, whyNotByKind}) {
        if (auto refusal = rule(input, context))
            return std::unexpected(*std::move(refusal));
    }
    if (auto refusal = whyNotLinkable(context))
        return std::unexpected(*std::move(refusal));

    EntryChange change{.entry = entryOf(input, context), .balances = {}};
    std::vector<const Account*> accounts;
    for (const auto* account : {&context.source, &context.target}) {
        if (*account)
            accounts.push_back(&**account);
    }
    auto balances = balancesAfter(change.entry.legs, accounts);
    if (!balances)
        return std::unexpected(std::move(balances.error()));
    change.balances = *std::move(balances);
    return change;
}
