#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"

#include "LedgerService/Storage/Rows/Sections/SectionRecords.h"

namespace LedgerService {

namespace {

using SectionRecords::of;
using SectionRecords::revisionOf;
using Participants = std::vector<DividendParticipant>;

constexpr const auto& changeColumns = SectionRecords::changeColumns<DividendChange>;

constexpr Columns participantColumns{revisionOf<DividendParticipant>(),
                                     of("id", &DividendParticipant::id),
                                     of("name", &DividendParticipant::name),
                                     of("member_id", &DividendParticipant::memberID),
                                     of("ratio_bps", &DividendParticipant::ratioBps),
                                     of("archived", &DividendParticipant::archived)};

constexpr Columns batchColumns{revisionOf<DividendBatch>(),
                               of("id", &DividendBatch::id),
                               of("period", &DividendBatch::period),
                               of("currency", &DividendBatch::currency),
                               of("amount_minor", &DividendBatch::amountMinor),
                               of("lines", &DividendBatch::lines)};

constexpr Columns cancellationColumns{revisionOf<DividendCancellation>(),
                                      of("batch_id", &DividendCancellation::batchID)};

constexpr Columns movementColumns{revisionOf<DividendMovement>(),
                                  of("id", &DividendMovement::id),
                                  of("kind", &DividendMovement::kind),
                                  of("participant_id", &DividendMovement::participantID),
                                  of("currency", &DividendMovement::currency),
                                  of("amount_minor", &DividendMovement::amountMinor),
                                  of("batch_id", &DividendMovement::batchID),
                                  of("advance_id", &DividendMovement::advanceID),
                                  of("transaction_id", &DividendMovement::transactionID),
                                  of("reversal_of", &DividendMovement::reversalOf)};

constexpr Columns visibilityColumns{revisionOf<SidebarVisibility>(), of("shown", &SidebarVisibility::shown)};

const auto selectChanges = changeColumns.select(
    "FROM dividend_changes WHERE company_id = :company AND revision >= :revision ORDER BY revision");
const auto selectParticipants = participantColumns.select(
    "FROM dividend_participants WHERE company_id = :company AND revision >= :revision ORDER BY revision, position");
const auto selectBatches =
    batchColumns.select("FROM dividend_batches WHERE company_id = :company AND revision >= :revision");
const auto selectCancellations =
    cancellationColumns.select("FROM dividend_cancellations WHERE company_id = :company AND revision >= :revision");
const auto selectMovements =
    movementColumns.select("FROM dividend_movements WHERE company_id = :company AND revision >= :revision");
const auto selectVisibility =
    visibilityColumns.select("FROM dividend_visibility WHERE company_id = :company AND revision >= :revision");

const auto insertChange = changeColumns.insert("dividend_changes", {{"company_id", ":company"}});
const auto insertParticipant =
    participantColumns.insert("dividend_participants", {{"company_id", ":company"}, {"position", ":position"}});
const auto insertBatch = batchColumns.insert("dividend_batches", {{"company_id", ":company"}});
const auto insertCancellation = cancellationColumns.insert("dividend_cancellations", {{"company_id", ":company"}});
const auto insertMovement = movementColumns.insert("dividend_movements", {{"company_id", ":company"}});
const auto insertVisibility = visibilityColumns.insert("dividend_visibility", {{"company_id", ":company"}});

/// Writes what a change made.
struct Insertion : SectionRecords::Writer {
    void operator()(const Participants& made) const
    {
        for (std::size_t at = 0; at < made.size(); ++at) {
            Query query{connection, insertParticipant};
            query.bind("company", companyID).bind("position", static_cast<int>(at));
            SectionRecords::write(query, participantColumns, revision, made[at]);
        }
    }
    void operator()(const DividendBatch& made) const { write(insertBatch, batchColumns, made); }
    void operator()(const DividendCancellation& made) const { write(insertCancellation, cancellationColumns, made); }
    void operator()(const DividendMovement& made) const { write(insertMovement, movementColumns, made); }
    void operator()(const SidebarVisibility& made) const { write(insertVisibility, visibilityColumns, made); }
};

void readParticipants(const SectionRecords::Range& range, std::vector<DividendChange>& changes)
{
    Query query{range.connection, selectParticipants};
    SectionRecords::eachRecord<DividendParticipant>(range.bind(query), participantColumns, changes,
                                                    [](DividendChange& change, const DividendParticipant& record) {
                                                        if (auto* const made = std::get_if<Participants>(&change.made))
                                                            made->push_back(record);
                                                    });
}

}

std::vector<DividendChange> DividendRepository::changes(Connection& connection, std::string_view companyID)
{
    return changesFrom(connection, companyID, 0);
}

std::vector<DividendChange> DividendRepository::changesFrom(Connection& connection, std::string_view companyID,
                                                            int revision)
{
    Query query{connection, selectChanges};
    auto changes =
        recordsOf<DividendChange>(query.bind("company", companyID).bind("revision", revision), changeColumns);
    if (changes.empty())
        return changes;
    readParticipants({connection, companyID, revision}, changes);
    SectionRecords::read<DividendBatch>({connection, companyID, revision}, selectBatches, batchColumns, changes);
    SectionRecords::read<DividendCancellation>({connection, companyID, revision}, selectCancellations,
                                               cancellationColumns, changes);
    SectionRecords::read<DividendMovement>({connection, companyID, revision}, selectMovements, movementColumns,
                                           changes);
    SectionRecords::read<SidebarVisibility>({connection, companyID, revision}, selectVisibility, visibilityColumns,
                                            changes);
    return changes;
}

DividendState DividendRepository::state(Connection& connection, std::string_view companyID)
{
    return DividendHistory::stateAfter(changes(connection, companyID));
}

void DividendRepository::append(Connection& connection, std::string_view companyID, const DividendChange& change)
{
    Query query{connection, insertChange};
    changeColumns.bind(query.bind("company", companyID), change);
    query.run();
    std::visit(Insertion{{connection, companyID, change.revision}}, change.made);
}

}
