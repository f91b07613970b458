#include "LedgerService/Commands/CapitalSubmission.h"

#include <utility>

#include "LedgerService/Books/CapitalRows.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Commands/SectionTelling.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"

namespace LedgerService {

namespace {

using SectionTelling::find;

std::optional<std::string> entryOf(const std::optional<std::string>& contributionID, const CapitalState& state)
{
    const auto* const contribution = contributionID ? find(state.contributions, *contributionID) : nullptr;
    return contribution ? std::optional{contribution->transactionID} : std::nullopt;
}

/// Tells how what a change is made to stood before, and how it stands now. What is only added is told by the command.
struct Telling {
    const CommandAct& act;
    const CapitalState& before;

    void operator()(const CapitalParticipant& made) const
    {
        act.note.record = made.id;
        if (const auto* const known = find(before.participants, made.id))
            act.tell(*known, made);
    }
    void operator()(const CapitalContribution& made) const
    {
        act.note.record = made.reversalOf.value_or(made.id);
        if (made.reversalOf)
            SectionTelling::reversed(act, *find(before.contributions, *made.reversalOf), made.id);
    }
    void operator()(const CapitalBaseline& made) const
    {
        act.note.record = made.id;
        if (const auto* const replaced = made.replacesID ? find(before.baselines, *made.replacesID) : nullptr)
            act.tell(*replaced, made);
    }
    void operator()(const CapitalOwnershipVersion& made) const
    {
        act.note.record = made.id;
        if (!before.ownershipVersions.empty())
            act.tell(before.ownershipVersions.back(), made);
    }
    void operator()(const SidebarVisibility& made) const
    {
        SectionTelling::shown(act, before.showInSidebar, made.shown);
    }
};

}

std::expected<void, Refusal> CapitalSubmission::submit(const CommandAct& act, const CapitalCommand& command)
{
    CapitalRows rows{.rows = {}, .state = act.sections.capital.underWay(act.connection, act.companyID)};
    rows.rows = NamedRows::sectionRows(act, command.accountID, entryOf(command.contributionID, *rows.state),
                                       command.attachmentIDs);
    auto decision = decide(command, rows);
    if (!decision)
        return std::unexpected(std::move(decision.error()));
    if (decision->entry)
        NamedRows::write(act, *decision->entry);
    else
        CompanyHistory::advance(act.connection, act.companyID);
    CapitalRepository::append(act.connection, act.companyID, decision->change);
    std::visit(Telling{act, *rows.state}, decision->change.made);
    return {};
}

}
