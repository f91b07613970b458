#include "LedgerCore/Domain/Templates/TemplateRules.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Templates/RecurrenceDays.h"
#include "LedgerCore/Domain/Text/Naming.h"

namespace {

using EntryText::given;

constexpr std::array kinds{EntryKind::income, EntryKind::expense, EntryKind::transfer, EntryKind::exchange};

/// Whether the reason is about something that is decided on the day of recording.
bool isForLater(const TemplateEntry& entry, const PostingRefusal& refusal)
{
    switch (refusal.reason) {
    case PostingReason::missing:
        return refusal.field == EntryField::category;
    case PostingReason::notPositive:
        return refusal.field == EntryField::amount ? !entry.amountMinor : !entry.targetAmountMinor;
    case PostingReason::insufficientFunds:
    case PostingReason::reserveUnknown:
    case PostingReason::balanceLimit:
    case PostingReason::inFuture:
    case PostingReason::beforeStart:
    case PostingReason::startUnreadable:
        return true;
    default:
        return false;
    }
}

bool sees(const Member& member, const std::optional<std::string>& id)
{
    return given(id).empty() || member.can(AccountAction::view, *id);
}

}

bool TemplateRules::takesKind(std::string_view kind)
{
    return std::ranges::find(kinds, kind) != kinds.end();
}

std::optional<TemplateRules::Refusal> TemplateRules::whyNotShaped(std::string_view name, const TemplateEntry& entry,
                                                                  const std::optional<Recurrence>& recurrence)
{
    if (!Naming::isName(name))
        return Refusal::nameUnsound;
    if (!takesKind(entry.kind))
        return Refusal::kindRefused;
    if (recurrence && !RecurrenceDays::isSound(*recurrence))
        return Refusal::recurrenceUnsound;
    return std::nullopt;
}

TransactionInput TemplateRules::inputOf(const TemplateEntry& entry, std::string_view day, const Account* source,
                                        const Account* target)
{
    TransactionInput input;
    input.kind = entry.kind;
    input.date = day;
    input.note = entry.note;
    input.categoryID = entry.categoryID;
    input.sourceAccountID = entry.sourceAccountID;
    input.targetAccountID = entry.targetAccountID;
    input.currency = entry.currency;
    input.targetCurrency = entry.targetCurrency;
    input.amountMinor = entry.amountMinor.value_or(0);
    input.targetAmountMinor = entry.targetAmountMinor;
    if (entry.kind == EntryKind::transfer && source && target) {
        if (const auto purpose = LedgerEntryAccess::transferPurpose(*source, *target))
            input.transferPurpose = *purpose;
    }
    input.idempotencyKey = "template";
    return input;
}

std::optional<PostingReason> TemplateRules::whyNotKeep(const TemplateEntry& entry, const PostingContext& context)
{
    const auto input = inputOf(entry, context.today, context.source, context.target);
    for (const auto& each : PostingRules::refusals(input, context)) {
        if (!isForLater(entry, each))
            return each.reason;
    }
    return std::nullopt;
}

std::string_view TemplateRules::accountID(const TemplateEntry& entry)
{
    const auto source = given(entry.sourceAccountID);
    return source.empty() ? given(entry.targetAccountID) : source;
}

bool TemplateRules::mayRecord(const TemplateEntry& entry, const Account& account, const Member& member)
{
    return !LedgerEntryAccess::whyNotRecord(account, member, entry.kind);
}

bool TemplateRules::maySee(const EntryTemplate& kept, const Member& member)
{
    if (!member.active)
        return false;
    if (kept.memberID == member.id)
        return member.can(AccountAction::view, accountID(kept.entry));
    return kept.shared && sees(member, kept.entry.sourceAccountID) && sees(member, kept.entry.targetAccountID);
}

bool TemplateRules::mayChange(const EntryTemplate& kept, const Member& member)
{
    return maySee(kept, member) && (kept.memberID == member.id || MemberRights::canManage(member));
}
