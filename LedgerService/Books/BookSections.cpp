#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Books/Books.h"

namespace LedgerService {

namespace {

template <class Decision, class Change>
std::expected<void, Refusal> write(std::expected<Decision, Refusal> decision, std::vector<Change>& changes,
                                   Books& books)
{
    if (!decision)
        return std::unexpected(std::move(decision.error()));
    if (decision->entry)
        books.apply(*decision->entry);
    changes.push_back(std::move(decision->change));
    return {};
}

template <class Record>
const Record* find(const std::vector<Record>& records, const std::optional<std::string>& id)
{
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return record.id == id; });
    return found == records.end() ? nullptr : &*found;
}

}

SectionRows Books::sectionRows(const BookAct& act, const std::optional<std::string>& accountID,
                               const std::optional<std::string>& originalEntryID,
                               const std::optional<std::vector<std::string>>& attachmentIDs) const
{
    const auto* const actor = find(members, act.memberID);
    require(actor != nullptr, "only members act on the books");
    SectionRows rows{.recordID = act.recordID,
                     .entryID = act.entryID,
                     .today = act.today,
                     .now = act.now,
                     .member = *actor,
                     .members = members,
                     .accounts = {},
                     .original = std::nullopt,
                     .attachments = {},
                     .settings = settings};
    if (const auto* const original = find(entries, originalEntryID)) {
        rows.original = *original;
        rows.accounts.push_back(*account(original->legs.front().accountID));
    }
    if (const auto* const named = find(accounts, accountID); named && !find(rows.accounts, accountID))
        rows.accounts.push_back(*named);
    for (const auto& id : attachmentIDs.value_or(std::vector<std::string>{})) {
        if (const auto* const attachment = find(attachments, id))
            rows.attachments.push_back(*attachment);
    }
    return rows;
}

CapitalRows Books::rowsOf(const CapitalCommand& command, const BookAct& act) const
{
    auto state = CapitalHistory::stateAfter(capitalChanges);
    const auto* const undone = find(state.contributions, command.contributionID);
    auto rows = sectionRows(act, command.accountID, undone ? std::optional{undone->transactionID} : std::nullopt,
                            command.attachmentIDs);
    return {.rows = std::move(rows), .state = std::make_shared<const CapitalState>(std::move(state))};
}

DividendRows Books::rowsOf(const DividendCommand& command, const BookAct& act) const
{
    auto state = DividendHistory::stateAfter(dividendChanges);
    const auto* const undone = find(state.movements, command.movementID);
    auto rows =
        sectionRows(act, command.accountID, undone ? undone->transactionID : std::nullopt, command.attachmentIDs);
    return {.rows = std::move(rows),
            .state = std::make_shared<const DividendState>(std::move(state)),
            .capital = std::make_shared<const CapitalState>(CapitalHistory::stateAfter(capitalChanges))};
}

std::expected<void, Refusal> Books::submit(const CapitalCommand& command, const BookAct& act)
{
    return write(decide(command, rowsOf(command, act)), capitalChanges, *this);
}

std::expected<void, Refusal> Books::submit(const DividendCommand& command, const BookAct& act)
{
    return write(decide(command, rowsOf(command, act)), dividendChanges, *this);
}

}
