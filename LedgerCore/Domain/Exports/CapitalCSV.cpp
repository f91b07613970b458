#include "LedgerCore/Domain/Exports/CapitalCSV.h"

#include <array>

#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/CapitalState.h"

namespace {

constexpr std::array<std::string_view, 14> columns{
    "record_id", "kind",         "date",          "created_at",   "currency",    "participant_id", "participant_name",
    "amount",    "amount_minor", "ownership_bps", "through_date", "replaces_id", "reversal_of",    "reversed_by"};

void write(CsvDocument& document, const CapitalBaseline& baseline)
{
    for (const auto& line : baseline.entries) {
        document.record({baseline.id, "baseline", baseline.date, baseline.createdAt, baseline.currency,
                         line.participantID, line.participantName,
                         Money::decimalString(line.amountMinor, baseline.currency), std::to_string(line.amountMinor),
                         "", baseline.throughDate, orEmpty(baseline.replacesID), "", ""});
    }
}

void write(CsvDocument& document, const CapitalContribution& contribution)
{
    document.record({contribution.id, contribution.reversalOf ? "correction" : "contribution", contribution.date,
                     contribution.createdAt, contribution.currency, contribution.participantID,
                     contribution.participantName,
                     Money::decimalString(contribution.amountMinor, contribution.currency),
                     std::to_string(contribution.amountMinor), "", "", "", orEmpty(contribution.reversalOf),
                     orEmpty(contribution.reversedBy)});
}

void write(CsvDocument& document, const CapitalOwnershipVersion& version)
{
    for (const auto& line : version.entries) {
        document.record({version.id, "ownership", version.date, version.createdAt, "", line.participantID,
                         line.participantName, "", "", std::to_string(line.ownershipBps), "", "", "", ""});
    }
}

}

std::string CapitalCSV::render(const CapitalState& state)
{
    CsvDocument document{columns};
    for (const auto& baseline : state.baselines)
        write(document, baseline);
    for (const auto& contribution : state.contributions)
        write(document, contribution);
    for (const auto& version : state.ownershipVersions)
        write(document, version);
    return document.take();
}

std::string CapitalCSV::fileName(std::string_view day)
{
    return "tallyfold-capital-" + std::string{day} + ".csv";
}
