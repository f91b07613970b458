#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"

#include "LedgerService/Storage/Rows/Sections/SectionRecords.h"

namespace LedgerService {

namespace {

using SectionRecords::of;
using SectionRecords::revisionOf;

constexpr const auto& changeColumns = SectionRecords::changeColumns<CapitalChange>;

constexpr Columns participantColumns{
    revisionOf<CapitalParticipant>(), of("id", &CapitalParticipant::id), of("name", &CapitalParticipant::name),
    of("member_id", &CapitalParticipant::memberID), of("archived", &CapitalParticipant::archived)};

constexpr Columns contributionColumns{revisionOf<CapitalContribution>(),
                                      of("id", &CapitalContribution::id),
                                      of("participant_id", &CapitalContribution::participantID),
                                      of("participant_name", &CapitalContribution::participantName),
                                      of("currency", &CapitalContribution::currency),
                                      of("amount_minor", &CapitalContribution::amountMinor),
                                      of("transaction_id", &CapitalContribution::transactionID),
                                      of("reversal_of", &CapitalContribution::reversalOf)};

constexpr Columns baselineColumns{revisionOf<CapitalBaseline>(),
                                  of("id", &CapitalBaseline::id),
                                  of("currency", &CapitalBaseline::currency),
                                  of("through_date", &CapitalBaseline::throughDate),
                                  of("entries", &CapitalBaseline::entries),
                                  of("replaces_id", &CapitalBaseline::replacesID)};

constexpr Columns ownershipColumns{revisionOf<CapitalOwnershipVersion>(), of("id", &CapitalOwnershipVersion::id),
                                   of("entries", &CapitalOwnershipVersion::entries)};

constexpr Columns visibilityColumns{revisionOf<SidebarVisibility>(), of("shown", &SidebarVisibility::shown)};

const auto selectChanges = changeColumns.select(
    "FROM capital_changes WHERE company_id = :company AND revision >= :revision ORDER BY revision");
const auto selectParticipants =
    participantColumns.select("FROM capital_participants WHERE company_id = :company AND revision >= :revision");
const auto selectContributions =
    contributionColumns.select("FROM capital_contributions WHERE company_id = :company AND revision >= :revision");
const auto selectBaselines =
    baselineColumns.select("FROM capital_baselines WHERE company_id = :company AND revision >= :revision");
const auto selectOwnership =
    ownershipColumns.select("FROM capital_ownership_versions WHERE company_id = :company AND revision >= :revision");
const auto selectVisibility =
    visibilityColumns.select("FROM capital_visibility WHERE company_id = :company AND revision >= :revision");

const auto insertChange = changeColumns.insert("capital_changes", {{"company_id", ":company"}});
const auto insertParticipant = participantColumns.insert("capital_participants", {{"company_id", ":company"}});
const auto insertContribution = contributionColumns.insert("capital_contributions", {{"company_id", ":company"}});
const auto insertBaseline = baselineColumns.insert("capital_baselines", {{"company_id", ":company"}});
const auto insertOwnership = ownershipColumns.insert("capital_ownership_versions", {{"company_id", ":company"}});
const auto insertVisibility = visibilityColumns.insert("capital_visibility", {{"company_id", ":company"}});

/// Writes what a change made.
struct Insertion : SectionRecords::Writer {
    void operator()(const CapitalParticipant& made) const { write(insertParticipant, participantColumns, made); }
    void operator()(const CapitalContribution& made) const { write(insertContribution, contributionColumns, made); }
    void operator()(const CapitalBaseline& made) const { write(insertBaseline, baselineColumns, made); }
    void operator()(const CapitalOwnershipVersion& made) const { write(insertOwnership, ownershipColumns, made); }
    void operator()(const SidebarVisibility& made) const { write(insertVisibility, visibilityColumns, made); }
};

}

std::vector<CapitalChange> CapitalRepository::changes(Connection& connection, std::string_view companyID)
{
    return changesFrom(connection, companyID, 0);
}

std::vector<CapitalChange> CapitalRepository::changesFrom(Connection& connection, std::string_view companyID,
                                                          int revision)
{
    Query query{connection, selectChanges};
    auto changes = recordsOf<CapitalChange>(query.bind("company", companyID).bind("revision", revision), changeColumns);
    if (changes.empty())
        return changes;
    SectionRecords::read<CapitalParticipant>({connection, companyID, revision}, selectParticipants, participantColumns,
                                             changes);
    SectionRecords::read<CapitalContribution>({connection, companyID, revision}, selectContributions,
                                              contributionColumns, changes);
    SectionRecords::read<CapitalBaseline>({connection, companyID, revision}, selectBaselines, baselineColumns, changes);
    SectionRecords::read<CapitalOwnershipVersion>({connection, companyID, revision}, selectOwnership, ownershipColumns,
                                                  changes);
    SectionRecords::read<SidebarVisibility>({connection, companyID, revision}, selectVisibility, visibilityColumns,
                                            changes);
    return changes;
}

CapitalState CapitalRepository::state(Connection& connection, std::string_view companyID)
{
    return CapitalHistory::stateAfter(changes(connection, companyID));
}

void CapitalRepository::append(Connection& connection, std::string_view companyID, const CapitalChange& change)
{
    Query query{connection, insertChange};
    changeColumns.bind(query.bind("company", companyID), change);
    query.run();
    std::visit(Insertion{{connection, companyID, change.revision}}, change.made);
}

}
