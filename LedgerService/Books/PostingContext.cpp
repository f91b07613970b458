#include "LedgerService/Books/PostingContext.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Books/BalanceChange.h"
#include "LedgerService/Books/BookDays.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/EntryShape.h"

namespace LedgerService {

namespace {

using EntryShape::given;
using Answer = std::optional<Refusal>;

const std::string& idOf(const auto& row)
{
    if constexpr (requires { row.entry.id; })
        return row.entry.id;
    else
        return row.id;
}

/// Whether the named row was found; unnamed ones need none.
bool isFound(const std::optional<std::string>& id, const auto& row)
{
    const auto named = given(id);
    if (row)
        require(idOf(*row) == named, "the context holds the rows that the command names");
    return row || named.empty();
}

std::string_view targetCurrency(const TransactionInput& input)
{
    const auto received = given(input.targetCurrency);
    return received.empty() ? input.currency : received;
}

bool sees(const Member& member, const LedgerTransaction& entry)
{
    return std::ranges::any_of(entry.legs, [&](const auto& leg) { return member.can("view", leg.accountID); });
}

/// The destination of a transfer may be one that the member fills without seeing it.
bool seesTarget(const std::optional<Account>& source, const Account& target, const Member& member,
                std::string_view kind)
{
    if (!source || kind != EntryKind::transfer)
        return member.can("view", target.id);
    return LedgerEntryAccess::whyNotReceive(*source, target, member) !=
           LedgerEntryAccess::DestinationRefusal::notViewable;
}

Answer whyNotFound(const TransactionInput& input, const PostingContext& context)
{
    const auto& member = context.member;
    const auto& source = context.source;
    const auto& target = context.target;
    const auto& original = context.original;
    const bool found = isFound(input.sourceAccountID, source) && isFound(input.targetAccountID, target) &&
                       isFound(input.categoryID, context.category) && isFound(input.originalTransactionID, original) &&
                       context.attachments.size() == input.attachmentIDs.size();
    if (!found || (source && !member.can("view", source->id)) ||
        (target && !seesTarget(source, *target, member, input.kind)) || (original && !sees(member, original->entry)))
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

Answer whyNotDestination(const Account& source, const Account& target, const Member& member,
                         std::string_view statedPurpose)
{
    if (const auto refusal = LedgerEntryAccess::whyNotReceive(source, target, member)) {
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
    if (statedPurpose != LedgerEntryAccess::transferPurpose(source, target).value_or(""))
        return BookRefusal::invalid("The transfer's purpose is not the one of its accounts.");
    return std::nullopt;
}

Answer whyNotOnAccounts(const TransactionInput& input, const PostingContext& context)
{
    const auto& source = context.source;
    const auto& target = context.target;
    if (source) {
        if (auto refusal = whyNotUsable(*source, context.member, input.kind))
            return refusal;
    }
    if (source && target && input.kind == EntryKind::transfer) {
        if (auto refusal = whyNotDestination(*source, *target, context.member, given(input.transferPurpose)))
            return refusal;
    } else if (target) {
        if (auto refusal = whyNotUsable(*target, context.member, input.kind))
            return refusal;
    }
    if ((source && !source->holds(input.currency)) || (target && !target->holds(targetCurrency(input))))
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
        if (input.date < BookDays::shifted(context.original->entry.date, -1)) // a client's day may lag by one
            return BookRefusal::invalid("The day lies before the income that is refunded.");
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
    const bool linked = std::ranges::any_of(context.attachments,
                                            [](const Attachment& each) { return !given(each.transactionID).empty(); });
    return linked ? Answer{BookRefusal::attachmentLinked()} : std::nullopt;
}

std::vector<LedgerLeg> legsOf(const TransactionInput& input, const PostingContext& context)
{
    std::vector<LedgerLeg> legs;
    if (context.source)
        legs.push_back({context.source->id, input.currency, -input.amountMinor});
    if (context.target)
        legs.push_back({context.target->id, std::string{targetCurrency(input)},
                        input.targetAmountMinor.value_or(input.amountMinor)});
    return legs;
}

std::optional<std::string> unlessEmpty(std::string_view text)
{
    return text.empty() ? std::nullopt : std::optional<std::string>{text};
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
    entry.categoryID = unlessEmpty(given(input.categoryID));
    entry.legs = legsOf(input, context);
    entry.attachmentIDs = input.attachmentIDs;
    entry.originalTransactionID = unlessEmpty(given(input.originalTransactionID));
    entry.transferPurpose = unlessEmpty(given(input.transferPurpose));
    entry.externalReference = unlessEmpty(refundReference(input));
    return entry;
}

}

std::string_view refundReference(const TransactionInput& input)
{
    return TextFold::trimmed(given(input.externalReference));
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

}
