#include "LedgerCore/Domain/Access/AccountGrants.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"

namespace {

using Actions = std::span<const std::string_view>;

template <class Range>
bool contains(const Range& range, std::string_view wanted)
{
    return std::ranges::find(range, wanted) != std::ranges::end(range);
}

/// The member's grants. Where there was no list yet, one that lets the member see the same accounts as before.
std::vector<AccountGrant>& grantsOf(Member& member)
{
    if (!member.accountGrants) {
        member.accountGrants.emplace();
        for (const auto& id : member.accountIDs)
            member.accountGrants->push_back({id, {std::string{AccountAction::view}}});
    }
    return *member.accountGrants;
}

void give(Member& member, std::string_view accountID, Actions actions)
{
    auto& grants = grantsOf(member);
    auto grant = std::ranges::find(grants, accountID, &AccountGrant::accountID);
    if (grant == grants.end())
        grant = grants.insert(grants.end(), AccountGrant{std::string{accountID}, {}});
    for (const auto action : actions) {
        if (!contains(grant->actions, action))
            grant->actions.emplace_back(action);
    }
    if (contains(actions, AccountAction::view) && !contains(member.accountIDs, accountID))
        member.accountIDs.emplace_back(accountID);
}

/// Takes these actions on the account; a grant of nothing goes.
template <class Goes>
void narrow(Member& member, std::string_view accountID, const Goes& goes)
{
    if (!member.accountGrants)
        return;
    for (auto& grant : *member.accountGrants) {
        if (grant.accountID == accountID)
            std::erase_if(grant.actions, goes);
    }
    std::erase_if(*member.accountGrants, [](const AccountGrant& grant) { return grant.actions.empty(); });
}

/// Takes every action, the sight of the account included, but those that stay.
void take(Member& member, std::string_view accountID, Actions stay)
{
    std::erase(member.accountIDs, accountID);
    narrow(member, accountID, [&](std::string_view action) { return !contains(stay, action); });
}

Member* memberOf(std::vector<Member>& members, std::optional<std::string_view> id)
{
    const auto found = id ? std::ranges::find(members, *id, &Member::id) : members.end();
    return found == members.end() ? nullptr : &*found;
}

constexpr std::string_view filling[]{AccountAction::transferIn};

}

bool AccountGrants::leads(const Member& member)
{
    return member.role == MemberRole::owner || member.role == MemberRole::admin ||
           member.hasPermission(Permission::manageCompany);
}

AccountGrant AccountGrants::on(std::string_view accountID, Member member)
{
    const auto& grants = grantsOf(member);
    const auto found = std::ranges::find(grants, accountID, &AccountGrant::accountID);
    return found == grants.end() ? AccountGrant{std::string{accountID}, {}} : *found;
}

std::vector<std::string_view> AccountGrants::ofOperator(const Account& account)
{
    std::vector<std::string_view> actions{AccountAction::view};
    for (const auto action : AccountGrant::creationActions) {
        if (action == AccountAction::transferOut || LedgerEntryAccess::takesKind(account, action))
            actions.push_back(action);
    }
    if (!account.isRestricted())
        actions.push_back(AccountAction::transferIn);
    actions.push_back(AccountAction::correct);
    return actions;
}

void AccountGrants::giveForNew(std::vector<Member>& members, const Account& account,
                               std::span<const std::string> funders)
{
    for (auto& member : members) {
        if (leads(member))
            give(member, account.id, AccountGrant::knownActions);
    }
    setFunders(members, account.id, funders);
    if (auto* const responsible = memberOf(members, account.responsibleMemberID()))
        give(*responsible, account.id, ofOperator(account));
}

void AccountGrants::handOver(std::vector<Member>& members, const Account& before, const Account& after)
{
    const auto was = before.responsibleMemberID();
    const auto is = after.responsibleMemberID();
    if (was == is && ofOperator(before) == ofOperator(after))
        return;
    if (auto* const earlier = memberOf(members, was); earlier && !leads(*earlier))
        take(*earlier, after.id, filling); // who also fills the account goes on filling it
    if (auto* const responsible = memberOf(members, is))
        give(*responsible, after.id, ofOperator(after));
}

void AccountGrants::setFunders(std::vector<Member>& members, std::string_view accountID,
                               std::span<const std::string> funders)
{
    for (auto& member : members) {
        if (contains(funders, member.id)) {
            give(member, accountID, filling);
        } else if (!leads(member) && member.can(AccountAction::transferIn, accountID)) {
            narrow(member, accountID, [](std::string_view action) { return action == AccountAction::transferIn; });
        }
    }
}
