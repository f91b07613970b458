#include "LedgerCore/Domain/Access/MembershipRules.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

using MembershipRules::Refusal;
using MembershipRules::Team;
using Texts = std::vector<std::string>;
using Grants = std::vector<AccountGrant>;

/// Something that a member may or may not do.
using Right = std::function<bool(const Member&)>;

bool contains(const auto& range, std::string_view wanted)
{
    return std::ranges::find(range, wanted) != std::ranges::end(range);
}

/// Every right that there is over these accounts.
std::vector<Right> rightsOver(std::span<const Account> accounts)
{
    using namespace MemberRights;
    std::vector<Right> rights{canViewCompany,     canManage,          canExport,           canViewCapital,
                              canPostCapital,     canCorrectCapital,  canExportCapital,    canSeeDividends,
                              canManageDividends, canSettleDividends, canMoveDividendMoney};
    for (const auto permission : Permission::all) {
        const bool manages = permission == Permission::manageCompany;
        rights.emplace_back([permission, manages](const Member& member) {
            return manages ? canManage(member) : member.active && member.hasPermission(permission);
        });
    }
    for (const auto& account : accounts) {
        for (const auto action : AccountGrant::knownActions)
            rights.emplace_back(
                [id = std::string_view{account.id}, action](const Member& member) { return member.can(action, id); });
    }
    return rights;
}

/// Whether the member has anything to do with the account.
bool knows(const Member& member, std::string_view accountID)
{
    return std::ranges::any_of(AccountGrant::knownActions,
                               [&](std::string_view action) { return member.can(action, accountID); });
}

/// One grant for each account and each action once; what grants nothing is left out.
Grants tidied(const Grants& grants)
{
    Grants tidy;
    std::map<std::string_view, std::size_t> places;
    std::set<std::pair<std::string_view, std::string_view>> granted;
    for (const auto& each : grants) {
        const auto place = places.try_emplace(each.accountID, tidy.size());
        if (place.second)
            tidy.push_back({each.accountID, {}});
        for (const auto& action : each.actions) {
            if (granted.emplace(each.accountID, action).second)
                tidy[place.first->second].actions.push_back(action);
        }
    }
    std::erase_if(tidy, [](const AccountGrant& grant) { return grant.actions.empty(); });
    return tidy;
}

Texts tidied(const Texts& texts)
{
    std::set<std::string_view> seen;
    Texts tidy;
    std::ranges::copy_if(texts, std::back_inserter(tidy),
                         [&](const std::string& each) { return seen.insert(each).second; });
    return tidy;
}

Member activated(Member member)
{
    member.active = true;
    return member;
}

bool isOwner(const Member& member)
{
    return member.role == MemberRole::owner;
}

std::size_t rank(std::string_view role)
{
    return static_cast<std::size_t>(std::ranges::find(MembershipRules::roles, role) - MembershipRules::roles.begin());
}

/// Words that mean nothing.
std::optional<Refusal> whyNotWords(const Member& before, const MemberUpdate& update)
{
    const bool givesRole = update.role && (before.id.empty() || *update.role != before.role);
    if (givesRole && !contains(MembershipRules::roles, *update.role))
        return Refusal::unknownRole;
    const auto isPermission = [](const std::string& each) { return contains(Permission::all, each); };
    if (!std::ranges::all_of(update.permissions.value_or(Texts{}), isPermission))
        return Refusal::unknownPermission;
    const auto isAction = [](const std::string& each) { return contains(AccountGrant::knownActions, each); };
    for (const auto& grant : update.accountGrants.value_or(Grants{})) {
        if (!std::ranges::all_of(grant.actions, isAction))
            return Refusal::unknownAction;
    }
    return std::nullopt;
}

/// Accounts that the giver has nothing to do with may only be named as they stood there before.
std::optional<Refusal> whyNotAccounts(const Member& before, const MemberUpdate& update, const Member& giver,
                                      const Team& team)
{
    const auto isKnown = [&](const std::string& id) {
        return std::ranges::find(team.accounts, id, &Account::id) != team.accounts.end() && knows(giver, id);
    };
    const auto held = tidied(before.accountGrants.value_or(Grants{}));
    const auto isHeld = [&](const AccountGrant& named) {
        const auto found = std::ranges::find(held, named.accountID, &AccountGrant::accountID);
        return found != held.end() && std::ranges::all_of(named.actions, [&](const std::string& action) {
                   return contains(found->actions, action);
               });
    };
    for (const auto& grant : update.accountGrants.value_or(Grants{})) {
        if (!isKnown(grant.accountID) && !isHeld(grant))
            return Refusal::unknownAccount;
    }
    for (const auto& id : update.accountIDs.value_or(Texts{})) {
        if (!isKnown(id) && !contains(before.accountIDs, id))
            return Refusal::unknownAccount;
    }
    return std::nullopt;
}

std::optional<Refusal> whyNotRole(const Member& before, const Member& after, const Member& giver)
{
    const bool own = before.id == giver.id;
    if ((isOwner(before) && !own && !isOwner(giver)) || (isOwner(after) && !isOwner(giver)))
        return Refusal::ownersOnly;
    if (after.role == before.role)
        return std::nullopt;
    if (own && rank(after.role) < rank(before.role))
        return Refusal::ownRise;
    const bool leads = isOwner(giver) || giver.role == MemberRole::admin;
    return after.role == MemberRole::admin && !leads ? std::optional{Refusal::aboveOwnRole} : std::nullopt;
}

/// What one of the owners holds and would lose, and no other owner holds.
bool losesLastHold(const Member& before, const Member& after, const std::vector<Right>& rights,
                   const std::vector<Member>& members)
{
    const auto holds = [](const Member& member, const Right& right) {
        return member.active && isOwner(member) && right(member);
    };
    return std::ranges::any_of(rights, [&](const Right& right) {
        return holds(before, right) && !holds(after, right) && std::ranges::none_of(members, [&](const Member& other) {
                   return other.id != before.id && holds(other, right);
               });
    });
}

/// Whether the member would gain what the giver does not hold.
bool gainsUnheld(const Member& before, const Member& after, const std::vector<Right>& rights, const Member& giver)
{
    // What a deactivated member is given counts now: whoever brings the member back might not notice.
    const bool returns = after.active && !before.active;
    const auto gained = activated(after);
    const auto held = returns ? before : activated(before);
    return std::ranges::any_of(rights,
                               [&](const Right& right) { return right(gained) && !right(held) && !right(giver); });
}

std::optional<Refusal> whyNotGive(const Member& before, const Member& after, const Member& giver, const Team& team)
{
    if (auto refusal = whyNotRole(before, after, giver))
        return refusal;
    const auto rights = rightsOver(team.accounts);
    if (gainsUnheld(before, after, rights, giver))
        return before.id == giver.id ? Refusal::ownRise : Refusal::notHeld;
    if (losesLastHold(before, after, rights, team.members))
        return Refusal::lastOwner;
    return std::nullopt;
}

/// `makeAfter` gives the membership after the update; it is asked only once the update has been found to make sense.
std::optional<Refusal> whyNot(const Member& before, const MemberUpdate& update, const auto& makeAfter,
                              const Member& giver, const Team& team)
{
    if (!MemberRights::canManage(giver))
        return Refusal::notManager;
    if (auto refusal = whyNotWords(before, update))
        return refusal;
    if (auto refusal = whyNotAccounts(before, update, giver, team))
        return refusal;
    return whyNotGive(before, makeAfter(), giver, team);
}

MemberUpdate updateOf(const Invite& invitation)
{
    return {.role = invitation.role,
            .accountIDs = invitation.accountIDs,
            .active = true,
            .permissions = invitation.permissions,
            .accountGrants = invitation.accountGrants};
}

}

Member MembershipRules::invited(const Invite& invitation)
{
    Member member;
    member.name = invitation.name;
    member.email = invitation.email;
    member.role = invitation.role;
    member.accountIDs = tidied(invitation.accountIDs);
    member.active = true;
    member.permissions = tidied(invitation.permissions);
    member.accountGrants = tidied(invitation.accountGrants);
    return member;
}

Member MembershipRules::changed(const Member& member, const MemberUpdate& update, const Member& giver)
{
    auto after = member;
    after.role = update.role.value_or(member.role);
    after.active = update.active.value_or(member.active);
    if (update.permissions)
        after.permissions = tidied(*update.permissions);
    if (update.accountIDs) {
        after.accountIDs = tidied(*update.accountIDs);
        std::erase_if(after.accountIDs, [&](const std::string& id) { return !knows(giver, id); });
        std::ranges::copy_if(member.accountIDs, std::back_inserter(after.accountIDs),
                             [&](const std::string& id) { return !knows(giver, id); });
    }
    if (update.accountGrants) {
        after.accountGrants = tidied(*update.accountGrants);
        std::erase_if(*after.accountGrants, [&](const AccountGrant& each) { return !knows(giver, each.accountID); });
        for (const auto& each : member.accountGrants.value_or(Grants{})) {
            if (!knows(giver, each.accountID))
                after.accountGrants->push_back(each);
        }
    }
    return after;
}

std::optional<MembershipRules::Refusal> MembershipRules::whyNotInvite(const Invite& invitation, const Member& giver,
                                                                      const Team& team)
{
    return whyNot({}, updateOf(invitation), [&] { return invited(invitation); }, giver, team);
}

std::optional<MembershipRules::Refusal> MembershipRules::whyNotChange(const Member& member, const MemberUpdate& update,
                                                                      const Member& giver, const Team& team)
{
    return whyNot(member, update, [&] { return changed(member, update, giver); }, giver, team);
}

bool MembershipRules::givesUnheld(std::span<const Member> before, std::span<const Member> after, const Account& account,
                                  const Member& giver)
{
    const auto rights = rightsOver({&account, 1});
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (before[at] != after[at] && gainsUnheld(before[at], after[at], rights, giver))
            return true;
    }
    return false;
}
