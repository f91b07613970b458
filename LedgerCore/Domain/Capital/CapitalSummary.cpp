#include "LedgerCore/Domain/Capital/CapitalSummary.h"

#include <unordered_map>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using Rows = std::unordered_map<std::string_view, CapitalParticipantSummary*>;

struct DayRange {
    std::optional<std::string_view> from;
    std::optional<std::string_view> through;

    [[nodiscard]] bool isValid() const
    {
        return (!from || CapitalMath::validDay(*from)) && (!through || CapitalMath::validDay(*through)) &&
               (!from || !through || *from <= *through);
    }
    [[nodiscard]] bool contains(std::string_view day) const
    {
        return (!from || day >= *from) && (!through || day <= *through);
    }
};

/// Adds to a sum; false when it no longer fits.
bool grow(std::int64_t& sum, std::int64_t amountMinor)
{
    const auto grown = Money::add(sum, amountMinor);
    sum = grown.value_or(sum);
    return grown.has_value();
}

Rows addRows(CapitalSummary& summary, const CapitalState& state)
{
    summary.participants.reserve(state.participants.size());
    Rows rows;
    for (const auto& participant : state.participants) {
        auto& row = summary.participants.emplace_back();
        row.participantID = participant.id;
        row.name = participant.name;
        row.periodMinor = 0;
        rows.emplace(participant.id, &row);
    }
    return rows;
}

bool addContributions(const CapitalState& state, std::string_view currency, const DayRange& range, const Rows& rows)
{
    for (const auto& contribution : state.contributions) {
        if (contribution.currency != currency)
            continue;
        auto& row = *rows.at(contribution.participantID);
        auto period = row.periodMinor.value_or(0);
        const auto inRange = range.contains(contribution.date) ? contribution.amountMinor : 0;
        if (!grow(row.recordedMinor, contribution.amountMinor) || !grow(period, inRange))
            return false;
        row.periodMinor = period;
    }
    return true;
}

bool addTotals(CapitalSummary& summary)
{
    for (auto& row : summary.participants) {
        if (summary.historyKnown)
            row.totalMinor = row.recordedMinor;
        if (!grow(summary.recordedMinor, row.recordedMinor) || !grow(summary.periodMinor, row.periodMinor.value_or(0)))
            return false;
    }
    if (summary.historyKnown)
        summary.totalMinor = summary.recordedMinor;
    return summary.recordedMinor <= Money::maximumMinor;
}

}

std::expected<CapitalSummary, CapitalError> CapitalSummary::create(const CapitalState& state, std::string_view currency,
                                                                   std::optional<std::string_view> fromDay,
                                                                   std::optional<std::string_view> throughDay)
{
    const DayRange range{fromDay, throughDay};
    if (!CurrencyInfo::isSupported(currency) || !range.isValid())
        return std::unexpected(CapitalError::invalidState);
    if (const auto invalid = CapitalMath::whyInvalid(state, currency))
        return std::unexpected(*invalid);

    CapitalSummary summary;
    summary.currency = currency;
    const auto rows = addRows(summary, state);
    if (const auto* baseline = CapitalMath::currentBaseline(state, currency)) {
        summary.historyKnown = true;
        for (const auto& line : baseline->entries)
            rows.at(line.participantID)->recordedMinor = line.amountMinor;
    }
    if (const auto* version = CapitalMath::ownershipInForce(state, throughDay)) {
        summary.ownershipVersion = *version;
        for (const auto& line : version->entries)
            rows.at(line.participantID)->ownershipBps = line.ownershipBps;
    }
    if (!addContributions(state, currency, range, rows) || !addTotals(summary))
        return std::unexpected(CapitalError::amountOverflow);
    return summary;
}
