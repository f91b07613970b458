#include "LedgerCore/Domain/Exports/DividendCSV.h"

#include <array>
#include <unordered_map>

#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/DividendState.h"

namespace {

constexpr std::array<std::string_view, 17> columns{
    "record_id",        "kind",      "date",          "created_at",   "period",   "currency",   "participant_id",
    "participant_name", "ratio_bps", "amount",        "amount_minor", "batch_id", "advance_id", "reversal_of",
    "reversed_by",      "cancelled", "cancelled_date"};

using TextByID = std::unordered_map<std::string_view, std::string_view>;

std::string_view textOf(const TextByID& texts, std::string_view id)
{
    const auto found = texts.find(id);
    return found == texts.end() ? std::string_view{} : found->second;
}

/// The names of today's participants, and of former ones as their allocations have them.
TextByID participantNames(const DividendState& state)
{
    TextByID names;
    for (const auto& participant : state.participants)
        names.emplace(participant.id, participant.name);
    for (const auto& batch : state.batches) {
        for (const auto& line : batch.lines)
            names.emplace(line.participantID, line.participantName);
    }
    return names;
}

void write(CsvDocument& document, const DividendBatch& batch)
{
    for (const auto& line : batch.lines) {
        document.record({batch.id, "entitlement", batch.date, batch.createdAt, batch.period, batch.currency,
                         line.participantID, line.participantName, std::to_string(line.ratioBps),
                         Money::decimalString(line.amountMinor, batch.currency), std::to_string(line.amountMinor),
                         batch.id, "", "", "", batch.cancelled ? "true" : "false", orEmpty(batch.cancelledDate)});
    }
}

void write(CsvDocument& document, const DividendMovement& movement, const TextByID& names, const TextByID& periods)
{
    document.record({movement.id, movement.kind, movement.date, movement.createdAt,
                     textOf(periods, orEmpty(movement.batchID)), movement.currency, movement.participantID,
                     textOf(names, movement.participantID), "",
                     Money::decimalString(movement.amountMinor, movement.currency),
                     std::to_string(movement.amountMinor), orEmpty(movement.batchID), orEmpty(movement.advanceID),
                     orEmpty(movement.reversalOf), orEmpty(movement.reversedBy), "false", ""});
}

}

std::string DividendCSV::render(const DividendState& state, std::string_view /*locale*/)
{
    CsvDocument document{columns};
    TextByID periods;
    for (const auto& batch : state.batches) {
        periods.emplace(batch.id, batch.period);
        write(document, batch);
    }
    const auto names = participantNames(state);
    for (const auto& movement : state.movements)
        write(document, movement, names, periods);
    return document.take();
}

std::string DividendCSV::fileName(std::string_view day)
{
    return "tallyfold-dividends-" + std::string{day} + ".csv";
}
