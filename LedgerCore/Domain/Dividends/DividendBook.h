#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendError.h"
#include "LedgerCore/Domain/Records/DividendState.h"

/// How one line of a batch stands, in minor units: entitlement = applied + paid + unpaid.
struct DividendLineSummary {
    std::int64_t entitlementMinor = 0;
    std::int64_t appliedMinor = 0; // advances set against it
    std::int64_t paidMinor = 0;
    std::int64_t unpaidMinor = 0;

    bool operator==(const DividendLineSummary&) const = default;
};

/// The dividends of one currency as they stood at the end of a day: built once in one pass, then only looked up.
/// Points into the state, which must outlive it.
class DividendBook {
public:
    /// Fails when the section breaks one of its rules in this currency. Without a day, everything counts.
    static std::expected<DividendBook, DividendError> create(const DividendState& state, std::string_view currency,
                                                             std::optional<std::string_view> throughDay);

    /// Batches recorded by then and not cancelled by then, in the order of the section.
    [[nodiscard]] const std::vector<const DividendBatch*>& batches() const { return m_batches; }
    /// Movements other than reversals, recorded by then and not reversed by then, in the order of the section.
    [[nodiscard]] const std::vector<const DividendMovement*>& effective() const { return m_effective; }

    /// All zero for a line of no such batch.
    [[nodiscard]] DividendLineSummary line(std::string_view batchID, std::string_view participantID) const;
    /// 0 for what is no advance or no longer counts.
    [[nodiscard]] std::int64_t advanceRemaining(std::string_view advanceID) const;

private:
    class Builder;
    using Lines = std::unordered_map<std::string_view, DividendLineSummary>; // by participant

    std::vector<const DividendBatch*> m_batches;
    std::vector<const DividendMovement*> m_effective;
    std::unordered_map<std::string_view, Lines> m_lines;                   // by batch
    std::unordered_map<std::string_view, std::int64_t> m_advanceRemaining; // by advance
};
