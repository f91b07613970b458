#include "LedgerService/Commands/DividendSubmission.h"

#include <algorithm>
#include <utility>

#include "LedgerService/Books/DividendRows.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Commands/SectionTelling.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"

namespace LedgerService {

namespace {

using SectionTelling::find;

std::optional<std::string> entryOf(const std::optional<std::string>& movementID, const DividendState& state)
{
    const auto* const movement = movementID ? find(state.movements, *movementID) : nullptr;
    return movement ? movement->transactionID : std::nullopt;
}

/// Tells how what a change is made to stood before, and how it stands now. What is only added is told by the command.
struct Telling {
    const CommandAct& act;
    const DividendChange& change;
    const DividendState& before;

    void operator()(const std::vector<DividendParticipant>& made) const
    {
        std::vector<DividendParticipant> known;
        for (const auto& each : made) {
            if (const auto* const participant = find(before.participants, each.id))
                known.push_back(*participant);
        }
        if (!made.empty())
            act.note.record = made.front().id;
        if (!known.empty())
            act.tell(known, made);
    }
    void operator()(const DividendBatch& made) const { act.note.record = made.id; }
    void operator()(const DividendCancellation& made) const
    {
        const auto& batch = *find(before.batches, made.batchID);
        auto after = batch;
        after.cancelled = true;
        after.cancelledDate = change.date;
        act.note.record = batch.id;
        act.tell(batch, after);
    }
    void operator()(const DividendMovement& made) const
    {
        act.note.record = made.reversalOf.value_or(made.id);
        if (made.reversalOf)
            SectionTelling::reversed(act, *find(before.movements, *made.reversalOf), made.id);
    }
    void operator()(const SidebarVisibility& made) const
    {
        SectionTelling::shown(act, before.showInSidebar, made.shown);
    }
};

}

std::expected<void, Refusal> DividendSubmission::submit(const CommandAct& act, const DividendCommand& command)
{
    DividendRows rows{
        .rows = {}, .state = act.sections.dividends.underWay(act.connection, act.companyID), .capital = nullptr};
    rows.rows =
        NamedRows::sectionRows(act, command.accountID, entryOf(command.movementID, *rows.state), command.attachmentIDs);
    if (command.action == DividendAction::fillFromOwnership)
        rows.capital = act.sections.capital.underWay(act.connection, act.companyID);
    auto decision = decide(command, rows);
    if (!decision)
        return std::unexpected(std::move(decision.error()));
    if (decision->entry)
        NamedRows::write(act, *decision->entry);
    else
        CompanyHistory::advance(act.connection, act.companyID);
    DividendRepository::append(act.connection, act.companyID, decision->change);
    std::visit(Telling{act, decision->change, *rows.state}, decision->change.made);
    return {};
}

}
