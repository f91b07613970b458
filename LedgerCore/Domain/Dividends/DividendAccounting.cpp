#include "LedgerCore/Domain/Dividends/DividendAccounting.h"

#include <algorithm>

#include "LedgerCore/Domain/Dividends/DividendSummary.h"

namespace {

/// The currency of the batch or movement of this id, or nothing.
template <class Record>
std::optional<std::string_view> currencyOf(const std::vector<Record>& records, std::string_view id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? std::nullopt : std::optional<std::string_view>{found->currency};
}

}

std::expected<std::int64_t, DividendError> DividendAccounting::unpaid(std::string_view batchID,
                                                                      std::string_view participantID,
                                                                      const DividendState& state,
                                                                      std::optional<std::string_view> throughDay)
{
    const auto line = lineSummary(batchID, participantID, state, throughDay);
    if (!line)
        return std::unexpected(line.error());
    return line->unpaidMinor;
}

std::expected<std::int64_t, DividendError>
DividendAccounting::advanceRemaining(std::string_view advanceID, const DividendState& state,
                                     std::optional<std::string_view> throughDay)
{
    const auto currency = currencyOf(state.movements, advanceID);
    if (!currency)
        return 0;
    const auto book = DividendBook::create(state, *currency, throughDay);
    if (!book)
        return std::unexpected(book.error());
    return book->advanceRemaining(advanceID);
}

std::expected<DividendLineSummary, DividendError>
DividendAccounting::lineSummary(std::string_view batchID, std::string_view participantID, const DividendState& state,
                                std::optional<std::string_view> throughDay)
{
    const auto currency = currencyOf(state.batches, batchID);
    if (!currency)
        return DividendLineSummary{};
    const auto book = DividendBook::create(state, *currency, throughDay);
    if (!book)
        return std::unexpected(book.error());
    return book->line(batchID, participantID);
}

std::expected<std::int64_t, DividendError> DividendAccounting::periodPaid(std::string_view currency,
                                                                          std::optional<std::string_view> startDay,
                                                                          std::optional<std::string_view> endDay,
                                                                          std::string_view participantID,
                                                                          const DividendState& state)
{
    const auto summary = DividendSummary::create(state, currency, startDay, endDay);
    if (!summary)
        return std::unexpected(summary.error());
    const auto row =
        std::ranges::find(summary->participants, participantID, &DividendParticipantSummary::participantID);
    return row == summary->participants.end() ? 0 : row->paidMinor;
}
