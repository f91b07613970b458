#include "LedgerCore/Domain/Access/AccountRules.h"

#include <algorithm>
#include <array>
#include <utility>

#include "LedgerCore/Domain/Access/AccountGrants.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/MembershipRules.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using AccountRules::Ground;
using AccountRules::Refusal;
using Problem = std::optional<Refusal>;
using Texts = std::vector<std::string>;
using OptionalText = std::optional<std::string>;

constexpr std::array purposes{AccountPurpose::employee, AccountPurpose::refund, AccountPurpose::operating};

bool contains(const auto& range, std::string_view wanted)
{
    return std::ranges::find(range, wanted) != std::ranges::end(range);
}

/// What is named, or nothing: an empty text names nothing.
OptionalText named(const OptionalText& text)
{
    return text && !text->empty() ? text : std::nullopt;
}

bool repeats(Texts texts)
{
    std::ranges::sort(texts);
    return std::ranges::adjacent_find(texts) != texts.end();
}

Problem whyNotCurrencies(const Texts& currencies)
{
    if (!std::ranges::all_of(currencies, CurrencyInfo::isSupported))
        return Refusal::currencyUnknown;
    return repeats(currencies) ? Problem{Refusal::currencyRepeated} : std::nullopt;
}

Problem whyNotPurpose(const OptionalText& purpose)
{
    return purpose && !purpose->empty() && !contains(purposes, *purpose) ? Problem{Refusal::purposeUnknown}
                                                                         : std::nullopt;
}

const Account* visible(std::string_view id, const Ground& ground)
{
    const auto found = std::ranges::find(ground.accounts, id, &Account::id);
    return found != ground.accounts.end() && ground.member.can(AccountAction::view, id) ? &*found : nullptr;
}

Problem whyNotInCharge(const OptionalText& id, const Ground& ground)
{
    if (!id || id->empty())
        return std::nullopt;
    const auto found = std::ranges::find(ground.members, *id, &Member::id);
    if (found == ground.members.end())
        return Refusal::memberUnknown;
    return found->active ? std::nullopt : Problem{Refusal::memberInactive};
}

Problem whyNotFunded(const std::optional<Texts>& funders, const Account& account, const Ground& ground)
{
    if (!funders || funders->empty())
        return std::nullopt;
    if (!account.isRestricted())
        return Refusal::notFunded;
    for (const auto& id : *funders) {
        if (id.empty())
            return Refusal::memberUnknown;
        if (auto problem = whyNotInCharge(id, ground))
            return problem;
    }
    return std::nullopt;
}

Problem whyNotReturning(const OptionalText& id, const Account& account, const Ground& ground)
{
    if (!id || id->empty())
        return std::nullopt;
    if (!account.isRestricted() || *id == account.id)
        return Refusal::returnUnsuitable;
    const auto* const target = visible(*id, ground);
    if (!target)
        return Refusal::returnUnknown;
    return target->archived || target->isRestricted() ? Problem{Refusal::returnUnsuitable} : std::nullopt;
}

Problem whyNotNamed(const Account& account, const Ground& ground)
{
    const bool taken = std::ranges::any_of(ground.accounts, [&](const Account& other) {
        return other.id != account.id && !other.archived && TextFold::areSame(other.name, account.name) &&
               ground.member.can(AccountAction::view, other.id);
    });
    return taken && !account.archived ? Problem{Refusal::nameTaken} : std::nullopt;
}

bool isEmpty(const Account& account)
{
    return std::ranges::all_of(account.balances, [](const auto& balance) { return balance.second == 0; });
}

/// Whether the account would be kept by other rules.
bool changesKind(const Account& before, const Account& after)
{
    return before.isEmployeeFund() != after.isEmployeeFund() ||
           before.hasPurpose(AccountPurpose::refund) != after.hasPurpose(AccountPurpose::refund);
}

/// Whether anybody but the member who asks sees the account, before or after the change.
bool isSeenByOthers(const Account& account, const Ground& ground)
{
    return std::ranges::any_of(ground.members, [&](const Member& each) {
        return each.id != ground.member.id && each.can(AccountAction::view, account.id);
    });
}

Problem whyNotPeople(const AccountUpdate& command, const Account& before, const Account& after, const Ground& ground)
{
    if (auto problem = whyNotInCharge(command.operatorMemberID, ground))
        return problem;
    const bool touched = command.operatorMemberID || command.purpose;
    if (touched && after.isRestricted() && !after.responsibleMemberID())
        return Refusal::exclusiveOperator;
    if (auto problem = whyNotFunded(command.fundingMemberIDs, after, ground))
        return problem;
    if (auto problem = whyNotReturning(command.returnAccountID, after, ground))
        return problem;
    const auto members = AccountRules::membersAfter(command, before, after, ground.members);
    return MembershipRules::givesUnheld(ground.members, members, after, ground.member) ? Problem{Refusal::notHeld}
                                                                                       : std::nullopt;
}

Problem whyNotAcknowledged(const AccountUpdate& command, const Account& before, const Account& after,
                           const Ground& ground, AccountRules::History history)
{
    const auto responsible = after.responsibleMemberID();
    if (responsible && responsible != before.responsibleMemberID() && history == AccountRules::History::recorded &&
        !command.acknowledgeHistoryAccess.value_or(false))
        return Refusal::historyAcknowledgementRequired;
    if (after.currencies.size() > before.currencies.size() && isSeenByOthers(after, ground) &&
        !command.acknowledgeCurrencyAccess.value_or(false))
        return Refusal::currencyAcknowledgementRequired;
    return std::nullopt;
}

bool mayFill(std::string_view memberID, std::string_view accountID, const Ground& ground)
{
    return std::ranges::any_of(ground.members, [&](const Member& each) {
        return each.id == memberID && each.can(AccountAction::transferIn, accountID);
    });
}

}

AccountRules::Ground AccountRules::groundOf(const LedgerSnapshot& snapshot)
{
    return {.member = snapshot.currentMember, .members = snapshot.members, .accounts = snapshot.accounts};
}

std::optional<Refusal> AccountRules::whyNotShaped(const AccountCreate& command)
{
    if (!Naming::isName(command.name))
        return Refusal::nameUnsound;
    if (command.currencies.empty())
        return Refusal::currencyRequired;
    if (auto problem = whyNotCurrencies(command.currencies))
        return problem;
    if (auto problem = whyNotPurpose(command.purpose))
        return problem;
    const auto account = created(command, {});
    return account.isRestricted() && !account.responsibleMemberID() ? Problem{Refusal::operatorMissing} : std::nullopt;
}

std::optional<Refusal> AccountRules::whyNotShaped(const AccountUpdate& command)
{
    if (command.name && !Naming::isName(*command.name))
        return Refusal::nameUnsound;
    if (auto problem = whyNotCurrencies(command.addCurrencies.value_or(Texts{})))
        return problem;
    return whyNotPurpose(command.purpose);
}

std::optional<Refusal> AccountRules::whyNotCreate(const AccountCreate& command, const Ground& ground)
{
    if (!MemberRights::canManage(ground.member))
        return Refusal::noAuthority;
    if (auto problem = whyNotShaped(command))
        return problem;
    const auto account = created(command, {});
    for (const auto& id : {command.ownerMemberID, command.operatorMemberID}) {
        if (auto problem = whyNotInCharge(id, ground))
            return problem;
    }
    if (auto problem = whyNotFunded(command.fundingMemberIDs, account, ground))
        return problem;
    if (auto problem = whyNotReturning(command.returnAccountID, account, ground))
        return problem;
    return whyNotNamed(account, ground);
}

const Account* AccountRules::alreadyCreated(const AccountCreate& command, const Ground& ground)
{
    if (!MemberRights::canManage(ground.member))
        return nullptr;
    const auto found = std::ranges::find_if(ground.accounts, [&](const Account& each) {
        auto same = created(command, each.id);
        same.balances = each.balances;
        return each == same && ground.member.can(AccountAction::view, each.id) &&
               std::ranges::all_of(command.fundingMemberIDs.value_or(Texts{}),
                                   [&](const std::string& id) { return mayFill(id, each.id, ground); });
    });
    return found == ground.accounts.end() ? nullptr : &*found;
}

Account AccountRules::created(const AccountCreate& command, std::string id)
{
    Account account;
    account.id = std::move(id);
    account.name = TextFold::trimmed(command.name);
    account.currencies = command.currencies;
    account.ownerMemberID = named(command.ownerMemberID);
    account.purpose = named(command.purpose);
    account.operatorMemberID = named(command.operatorMemberID);
    account.returnAccountID = named(command.returnAccountID);
    return account;
}

std::optional<Refusal> AccountRules::whyNotUpdate(std::string_view accountID, const AccountUpdate& command,
                                                  const Ground& ground, History history)
{
    if (!MemberRights::canManage(ground.member))
        return Refusal::noAuthority;
    const auto* const before = visible(accountID, ground);
    if (!before)
        return Refusal::unknownAccount;
    if (auto problem = whyNotShaped(command))
        return problem;
    const auto after = updated(*before, command);
    if (before->archived && after.archived)
        return after == *before && !command.fundingMemberIDs ? std::nullopt : Problem{Refusal::archived};
    if (auto problem = whyNotPeople(command, *before, after, ground))
        return problem;
    if ((after.archived || changesKind(*before, after)) && !isEmpty(after))
        return Refusal::nonzeroBalance;
    const bool renamed = after.name != before->name || before->archived;
    if (auto problem = renamed ? whyNotNamed(after, ground) : std::nullopt)
        return problem;
    return whyNotAcknowledged(command, *before, after, ground, history);
}

Account AccountRules::updated(const Account& account, const AccountUpdate& command)
{
    auto after = account;
    if (command.name)
        after.name = TextFold::trimmed(*command.name);
    for (const auto& currency : command.addCurrencies.value_or(Texts{})) {
        if (!after.holds(currency))
            after.currencies.push_back(currency);
    }
    if (command.purpose)
        after.purpose = named(command.purpose);
    if (command.operatorMemberID)
        after.operatorMemberID = named(command.operatorMemberID);
    if (command.returnAccountID)
        after.returnAccountID = named(command.returnAccountID);
    if (account.isRestricted() && !after.isRestricted())
        after.returnAccountID.reset();
    after.archived = command.archived.value_or(account.archived);
    return after;
}

std::vector<Member> AccountRules::membersAfter(const AccountCreate& command, const Account& account,
                                               std::span<const Member> members)
{
    std::vector<Member> after{members.begin(), members.end()};
    AccountGrants::giveForNew(after, account, command.fundingMemberIDs.value_or(Texts{}));
    return after;
}

std::vector<Member> AccountRules::membersAfter(const AccountUpdate& command, const Account& before,
                                               const Account& after, std::span<const Member> members)
{
    std::vector<Member> changed{members.begin(), members.end()};
    AccountGrants::handOver(changed, before, after);
    if (command.fundingMemberIDs && after.isRestricted())
        AccountGrants::setFunders(changed, after.id, *command.fundingMemberIDs);
    return changed;
}

AccountRules::History AccountRules::historyOf(std::string_view accountID, const LedgerSnapshot& snapshot)
{
    const bool touched = std::ranges::any_of(snapshot.transactions, [&](const LedgerTransaction& entry) {
        return std::ranges::find(entry.legs, accountID, &LedgerLeg::accountID) != entry.legs.end();
    });
    return touched ? History::recorded : History::none;
}
