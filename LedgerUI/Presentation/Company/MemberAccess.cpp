#include "LedgerUI/Presentation/Company/MemberAccess.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Words = AccessDraft::Words;

constexpr std::array entryActions{AccountAction::income, AccountAction::expense, AccountAction::exchange,
                                  AccountAction::refund, AccountAction::opening};

std::size_t differing(const Words& left, const Words& right)
{
    std::vector<std::string> differences;
    std::ranges::set_symmetric_difference(left, right, std::back_inserter(differences));
    return differences.size();
}

const Words& wordsOf(const AccessDraft& draft, const std::string& accountID)
{
    static const Words none;
    const auto found = draft.grants.find(accountID);
    return found == draft.grants.end() ? none : found->second;
}

std::set<std::string> accountsOf(const AccessDraft& left, const AccessDraft& right)
{
    std::set<std::string> ids;
    for (const auto* draft : {&left, &right}) {
        for (const auto& [id, actions] : draft->grants)
            ids.insert(id);
    }
    return ids;
}

/// `now` with the words that came and went between `before` and `draft`.
Words rebasedWords(const Words& draft, const Words& before, Words now)
{
    for (const auto& word : draft) {
        if (!before.contains(word))
            now.insert(word);
    }
    for (const auto& word : before) {
        if (!draft.contains(word))
            now.erase(word);
    }
    return now;
}

AccountGrant grantOf(const std::string& accountID, const Words& actions)
{
    AccountGrant grant{.accountID = accountID, .actions = {}};
    for (const auto action : AccountGrant::knownActions) {
        if (actions.contains(action))
            grant.actions.emplace_back(action);
    }
    return grant;
}

/// Accounts in the order of the books, then those that the current member does not see.
std::vector<AccountGrant> grantsOf(const AccessDraft& draft, const LedgerSnapshot& snapshot)
{
    std::vector<AccountGrant> grants;
    auto rest = draft.grants;
    for (const auto& account : snapshot.accounts) {
        if (auto found = rest.extract(account.id))
            grants.push_back(grantOf(found.key(), found.mapped()));
    }
    for (const auto& [id, actions] : rest)
        grants.push_back(grantOf(id, actions));
    return grants;
}

std::vector<std::string> permissionsOf(const AccessDraft& draft)
{
    std::vector<std::string> listed;
    for (const auto permission : Permission::all) {
        if (draft.permissions.contains(permission))
            listed.emplace_back(permission);
    }
    return listed;
}

/// The member as far as one account goes: what it holds on the others says nothing about this one.
Member onlyOn(const Member& member, std::string_view accountID)
{
    Member narrow;
    narrow.id = member.id;
    narrow.role = member.role;
    narrow.active = member.active;
    narrow.permissions = member.permissions;
    if (std::ranges::find(member.accountIDs, accountID) != member.accountIDs.end())
        narrow.accountIDs.emplace_back(accountID);
    if (!member.accountGrants)
        return narrow;
    narrow.accountGrants.emplace();
    std::ranges::copy_if(*member.accountGrants, std::back_inserter(*narrow.accountGrants),
                         [&](const AccountGrant& grant) { return grant.accountID == accountID; });
    return narrow;
}

/// Looks at no accounts but those of the change: what it leaves alone on the others is judged there.
std::optional<MembershipRules::Refusal> whyNot(const Member& saved, const AccessDraft& draft,
                                               const LedgerSnapshot& snapshot, const std::vector<Account>& accounts)
{
    const MembershipRules::Team team{.members = snapshot.members, .accounts = accounts};
    if (saved.id.empty())
        return MembershipRules::whyNotInvite(MemberAccess::invitation({}, {}, draft, snapshot), snapshot.currentMember,
                                             team);
    return MembershipRules::whyNotChange(saved, MemberAccess::update(saved, draft, snapshot), snapshot.currentMember,
                                         team);
}

}

bool AccessDraft::grantsAction(std::string_view action, std::string_view accountID) const
{
    const auto found = grants.find(accountID);
    return found != grants.end() && found->second.contains(action);
}

AccessDraft MemberAccess::draftOf(const Member& member)
{
    AccessDraft draft{.role = member.role, .permissions = {}, .grants = {}};
    if (member.permissions)
        draft.permissions = {member.permissions->begin(), member.permissions->end()};
    if (member.accountGrants) {
        for (const auto& grant : *member.accountGrants)
            draft.grants[grant.accountID].insert(grant.actions.begin(), grant.actions.end());
    } else {
        for (const auto& id : member.accountIDs)
            draft.grants[id].insert(std::string{AccountAction::view});
    }
    std::erase_if(draft.grants, [](const auto& each) { return each.second.empty(); });
    return draft;
}

AccessDraft MemberAccess::withAction(AccessDraft draft, std::string_view accountID, std::string_view action,
                                     bool isGiven)
{
    const std::string id{accountID};
    if (isGiven) {
        auto& actions = draft.grants[id];
        actions.insert(std::string{action});
        actions.insert(std::string{AccountAction::view});
        return draft;
    }
    if (action == AccountAction::view) {
        draft.grants.erase(id);
        return draft;
    }
    const auto found = draft.grants.find(id);
    if (found == draft.grants.end())
        return draft;
    if (const auto word = found->second.find(action); word != found->second.end())
        found->second.erase(word);
    if (found->second.empty())
        draft.grants.erase(found);
    return draft;
}

std::size_t MemberAccess::changes(const Member& saved, const AccessDraft& draft)
{
    const auto before = draftOf(saved);
    std::size_t count = before.role == draft.role ? 0 : 1;
    count += differing(before.permissions, draft.permissions);
    for (const auto& id : accountsOf(before, draft))
        count += differing(wordsOf(before, id), wordsOf(draft, id));
    return count;
}

AccessDraft MemberAccess::rebased(const AccessDraft& draft, const Member& before, const Member& now)
{
    const auto was = draftOf(before);
    auto result = draftOf(now);
    if (draft.role != was.role)
        result.role = draft.role;
    result.permissions = rebasedWords(draft.permissions, was.permissions, std::move(result.permissions));
    for (const auto& id : accountsOf(draft, was)) {
        auto actions = rebasedWords(wordsOf(draft, id), wordsOf(was, id), wordsOf(result, id));
        if (actions.empty())
            result.grants.erase(id);
        else
            result.grants[id] = std::move(actions);
    }
    return result;
}

MemberUpdate MemberAccess::update(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot)
{
    const auto before = draftOf(saved);
    MemberUpdate update;
    if (draft.role != before.role)
        update.role = draft.role;
    if (draft.permissions != before.permissions)
        update.permissions = permissionsOf(draft);
    if (draft.grants != before.grants)
        update.accountGrants = grantsOf(draft, snapshot);
    return update;
}

Invite MemberAccess::invitation(std::string name, std::string email, const AccessDraft& draft,
                                const LedgerSnapshot& snapshot)
{
    Invite invite{.name = std::move(name),
                  .email = std::move(email),
                  .role = draft.role,
                  .accountIDs = {},
                  .permissions = permissionsOf(draft),
                  .accountGrants = grantsOf(draft, snapshot)};
    for (const auto& grant : invite.accountGrants) {
        if (std::ranges::find(grant.actions, AccountAction::view) != grant.actions.end())
            invite.accountIDs.push_back(grant.accountID);
    }
    return invite;
}

std::optional<MemberAccess::Refusal> MemberAccess::whyNotRole(const Member& saved, std::string_view role,
                                                              const LedgerSnapshot& snapshot)
{
    auto draft = draftOf(saved);
    draft.role = role;
    return whyNot(saved, draft, snapshot, {});
}

std::optional<MemberAccess::Refusal> MemberAccess::whyNotPermission(const Member& saved, std::string_view permission,
                                                                    const LedgerSnapshot& snapshot)
{
    auto draft = draftOf(saved);
    if (const auto found = draft.permissions.find(permission); found != draft.permissions.end())
        draft.permissions.erase(found);
    else
        draft.permissions.emplace(permission);
    return whyNot(saved, draft, snapshot, {});
}

std::optional<MemberAccess::Refusal> MemberAccess::whyNotAction(const Member& saved, std::string_view accountID,
                                                                std::string_view action, const LedgerSnapshot& snapshot)
{
    const auto account = std::ranges::find(snapshot.accounts, accountID, &Account::id);
    if (account == snapshot.accounts.end())
        return Refusal::unknownAccount;
    const auto narrow = onlyOn(saved, accountID);
    const auto draft = draftOf(narrow);
    return whyNot(narrow, withAction(draft, accountID, action, !draft.grantsAction(action, accountID)), snapshot,
                  {*account});
}

std::optional<MemberAccess::Refusal> MemberAccess::whyNotActive(const Member& saved, bool isActive,
                                                                const LedgerSnapshot& snapshot)
{
    MemberUpdate update;
    update.active = isActive;
    return MembershipRules::whyNotChange(saved, update, snapshot.currentMember,
                                         {.members = snapshot.members, .accounts = snapshot.accounts});
}

std::optional<MemberAccess::Refusal> MemberAccess::whyNotSave(const Member& saved, const AccessDraft& draft,
                                                              const LedgerSnapshot& snapshot)
{
    return whyNot(saved, draft, snapshot, snapshot.accounts);
}

bool MemberAccess::isMeaningful(std::string_view action, const Account& account)
{
    return std::ranges::find(entryActions, action) == entryActions.end() ||
           LedgerEntryAccess::takesKind(account, action);
}

QString MemberAccess::refusalText(Refusal refusal, std::string_view locale)
{
    const auto& words = accessWords();
    switch (refusal) {
    case Refusal::notManager:
        return wordIn(locale, words, "refused.notManager");
    case Refusal::unknownRole:
    case Refusal::unknownPermission:
    case Refusal::unknownAction:
        return wordIn(locale, words, "refused.unknown");
    case Refusal::unknownAccount:
        return wordIn(locale, words, "refused.unknownAccount");
    case Refusal::ownersOnly:
        return wordIn(locale, words, "refused.ownersOnly");
    case Refusal::aboveOwnRole:
        return wordIn(locale, words, "refused.aboveOwnRole");
    case Refusal::ownRise:
        return wordIn(locale, words, "refused.ownRise");
    case Refusal::notHeld:
        return wordIn(locale, words, "refused.notHeld");
    case Refusal::lastOwner:
        return wordIn(locale, words, "refused.lastOwner");
    }
    return {};
}
