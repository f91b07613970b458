#include "LedgerService/Commands/AccountCommands.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/AccountGrants.h"
#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"

namespace LedgerService {

namespace {

using AccountRules::History;

/// The company's accounts and members as they stand.
struct Rows {
    std::vector<Member> members;
    std::vector<Account> accounts;

    explicit Rows(const CommandAct& act)
        : members(MemberRepository::all(act.connection, act.companyID)),
          accounts(AccountRepository::all(act.connection, act.companyID))
    {
    }

    [[nodiscard]] AccountRules::Ground ground(const CommandAct& act) const { return {act.member, members, accounts}; }
};

/// What a member holds on the account, as a change of the member would tell it.
std::string rightsOn(std::string_view accountID, const Member& member)
{
    MemberUpdate told;
    told.accountGrants.emplace().push_back(AccountGrants::on(accountID, member));
    return Json::encode(told);
}

/// Keeps the rights that follow from the account, and tells of each member whose rights have changed.
void write(const CommandAct& act, std::string_view accountID, const std::vector<Member>& before,
           const std::vector<Member>& after)
{
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (before[at] == after[at])
            continue;
        MemberRepository::write(act.connection, act.companyID, after[at]);
        act.note.rights.push_back({after[at].id, rightsOn(accountID, before[at]), rightsOn(accountID, after[at])});
    }
}

}

std::expected<Account, Refusal> AccountCommands::create(const CommandAct& act, const AccountCreate& command)
{
    const Rows rows{act};
    if (const auto* const existing = AccountRules::alreadyCreated(command, rows.ground(act))) {
        act.note.isRepetition = true;
        return *existing;
    }
    if (const auto refused = AccountRules::whyNotCreate(command, rows.ground(act)))
        return std::unexpected(SetupRefusal::of(*refused));
    auto account = AccountRules::created(command, Random::identifier());
    AccountRepository::insert(act.connection, act.companyID, account);
    act.note.record = account.id;
    write(act, account.id, rows.members, AccountRules::membersAfter(command, account, rows.members));
    return account;
}

std::expected<Account, Refusal> AccountCommands::update(const CommandAct& act, std::string_view accountID,
                                                        const AccountUpdate& command)
{
    const Rows rows{act};
    const bool touched = EntryRepository::touches(act.connection, act.companyID, accountID);
    const auto history = touched ? History::recorded : History::none;
    if (const auto refused = AccountRules::whyNotUpdate(accountID, command, rows.ground(act), history))
        return std::unexpected(SetupRefusal::of(*refused));
    const auto& before = *std::ranges::find(rows.accounts, accountID, &Account::id);
    auto after = AccountRules::updated(before, command);
    if (after != before)
        AccountRepository::update(act.connection, act.companyID, after);
    act.tell(before, after);
    write(act, accountID, rows.members, AccountRules::membersAfter(command, before, after, rows.members));
    return after;
}

}
