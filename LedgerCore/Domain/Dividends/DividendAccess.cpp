#include "LedgerCore/Domain/Dividends/DividendAccess.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

template <class Record, class ID>
const Record* find(std::span<const Record> records, const std::optional<ID>& id)
{
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return id && record.id == *id; });
    return found == records.end() ? nullptr : &*found;
}

bool canReverse(const DividendCommand& command, const DividendContext& context)
{
    const auto* movement = find(std::span{context.state.movements}, command.movementID);
    if (!movement || movement->kind == DividendMovementKind::reversal || movement->reversedBy)
        return false;
    if (movement->kind == DividendMovementKind::application)
        return true;
    const auto* account = find(context.accounts, context.movementAccountID);
    return account && account->holds(movement->currency) && DividendAccess::movesDividends(*account, context.member);
}

}

DividendContext DividendContext::of(const LedgerSnapshot& snapshot)
{
    static const DividendState none;
    return {.state = snapshot.dividends ? *snapshot.dividends : none,
            .member = snapshot.currentMember,
            .members = snapshot.members,
            .accounts = snapshot.accounts,
            .dividendsEnabled = !snapshot.financialSettings || snapshot.financialSettings->dividendsEnabled,
            .capital = snapshot.capital ? &*snapshot.capital : nullptr};
}

DividendContext DividendContext::of(const LedgerSnapshot& snapshot, std::string_view movementID)
{
    auto context = of(snapshot);
    const auto* movement = find(std::span{context.state.movements}, std::optional{movementID});
    if (!movement)
        return context;
    const auto& entries = snapshot.transactions;
    const auto entry = std::ranges::find_if(
        entries, [&](const LedgerTransaction& each) { return each.id == movement->transactionID; });
    if (entry != entries.end() && !entry->legs.empty())
        context.movementAccountID = entry->legs.front().accountID;
    return context;
}

bool DividendAccess::movesDividends(const Account& account, const Member& member)
{
    const bool isOperating = !account.purpose || account.hasPurpose(AccountPurpose::operating);
    return MemberRights::canMoveDividendMoney(member) && !account.archived && isOperating &&
           member.can(AccountAction::view, account.id) && member.can(AccountAction::distribution, account.id);
}

std::vector<const Account*> DividendAccess::accounts(const LedgerSnapshot& snapshot,
                                                     std::optional<std::string_view> currency)
{
    std::vector<const Account*> offered;
    for (const auto& account : snapshot.accounts) {
        if ((!currency || account.holds(*currency)) && movesDividends(account, snapshot.currentMember))
            offered.push_back(&account);
    }
    return offered;
}

bool DividendAccess::canSubmit(const DividendCommand& command, const DividendContext& context)
{
    namespace Action = DividendAction;
    const auto& member = context.member;
    const auto& action = command.action;
    if (!MemberRights::canSeeDividends(member))
        return false;
    if (action == Action::setParticipant || action == Action::setVisibility)
        return MemberRights::canManageDividends(member);
    if (action == Action::allocate || action == Action::apply || action == Action::cancelBatch)
        return MemberRights::canSettleDividends(member);
    if (action == Action::advance || action == Action::pay || action == Action::returnAdvance) {
        const auto* account = find(context.accounts, command.accountID);
        return account && command.currency && account->holds(*command.currency) && movesDividends(*account, member);
    }
    return action == Action::reverse && MemberRights::canCorrectDividends(member) && canReverse(command, context);
}

bool DividendAccess::canSubmit(const DividendCommand& command, const LedgerSnapshot& snapshot)
{
    return canSubmit(command, command.movementID ? DividendContext::of(snapshot, *command.movementID)
                                                 : DividendContext::of(snapshot));
}
