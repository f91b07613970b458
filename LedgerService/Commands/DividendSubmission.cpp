#include "LedgerService/Commands/DividendSubmission.h"

#include <algorithm>
#include <utility>

#include "LedgerService/Books/DividendRows.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"

namespace LedgerService {

namespace {

std::optional<std::string> entryOf(const std::optional<std::string>& movementID, const DividendState& state)
{
    const auto found =
        std::ranges::find_if(state.movements, [&](const DividendMovement& each) { return each.id == movementID; });
    return found == state.movements.end() ? std::nullopt : found->transactionID;
}

}

std::expected<void, Refusal> DividendSubmission::submit(const CommandAct& act, const DividendCommand& command)
{
    auto state = DividendRepository::state(act.connection, act.companyID);
    const auto originalEntryID = entryOf(command.movementID, state);
    DividendRows rows{.rows = NamedRows::sectionRows(act, command.accountID, originalEntryID, command.attachmentIDs),
                      .state = std::move(state),
                      .capital = std::nullopt};
    if (command.action == DividendAction::fillFromOwnership)
        rows.capital = CapitalRepository::state(act.connection, act.companyID);
    auto decision = decide(command, rows);
    if (!decision)
        return std::unexpected(std::move(decision.error()));
    if (decision->entry)
        NamedRows::write(act, *decision->entry);
    else
        CompanyHistory::advance(act.connection, act.companyID);
    DividendRepository::append(act.connection, act.companyID, decision->change);
    return {};
}

}
