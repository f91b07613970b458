#include "LedgerService/Commands/CapitalSubmission.h"

#include <algorithm>
#include <utility>

#include "LedgerService/Books/CapitalRows.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"

namespace LedgerService {

namespace {

std::optional<std::string> entryOf(const std::optional<std::string>& contributionID, const CapitalState& state)
{
    const auto found = std::ranges::find_if(state.contributions,
                                            [&](const CapitalContribution& each) { return each.id == contributionID; });
    return found == state.contributions.end() ? std::nullopt : std::optional{found->transactionID};
}

}

std::expected<void, Refusal> CapitalSubmission::submit(const CommandAct& act, const CapitalCommand& command)
{
    auto state = CapitalRepository::state(act.connection, act.companyID);
    const auto originalEntryID = entryOf(command.contributionID, state);
    const CapitalRows rows{.rows =
                               NamedRows::sectionRows(act, command.accountID, originalEntryID, command.attachmentIDs),
                           .state = std::move(state)};
    auto decision = decide(command, rows);
    if (!decision)
        return std::unexpected(std::move(decision.error()));
    if (decision->entry)
        NamedRows::write(act, *decision->entry);
    else
        CompanyHistory::advance(act.connection, act.companyID);
    CapitalRepository::append(act.connection, act.companyID, decision->change);
    return {};
}

}
