#pragma once

#include <expected>
#include <memory>
#include <optional>

#include "LedgerCore/Domain/Capital/CapitalHistory.h"
#include "LedgerCore/Domain/Capital/CapitalRules.h"
#include "LedgerService/Books/SectionBooking.h"

namespace LedgerService {

/// The rows that a capital command looks at.
struct CapitalRows {
    SectionRows rows;
    std::shared_ptr<const CapitalState> state;

    /// As the rules look at them; a view of these rows.
    [[nodiscard]] CapitalContext context() const;
};

/// A decided capital command: all that must be written, in one transaction.
struct CapitalDecision {
    CapitalChange change;
    std::optional<EntryChange> entry; // the money of a contribution or of its reversal
};

/// What is wrong with the command by itself.
std::optional<Refusal> whyNotShaped(const CapitalCommand& command);

/// Decides a command by `CapitalRules`: all that must be written, or the first thing that is wrong.
std::expected<CapitalDecision, Refusal> decide(const CapitalCommand& command, const CapitalRows& rows);

}
