#pragma once

#include <expected>
#include <memory>
#include <optional>

#include "LedgerCore/Domain/Dividends/DividendHistory.h"
#include "LedgerCore/Domain/Dividends/DividendRules.h"
#include "LedgerService/Books/SectionBooking.h"

namespace LedgerService {

/// The rows that a dividend command looks at.
struct DividendRows {
    SectionRows rows;
    std::shared_ptr<const DividendState> state;
    std::shared_ptr<const CapitalState> capital; // for a "fillFromOwnership"

    /// As the rules look at them; a view of these rows.
    [[nodiscard]] DividendContext context() const;
};

/// A decided dividend command: all that must be written, in one transaction.
struct DividendDecision {
    DividendChange change;
    std::optional<EntryChange> entry; // the money of a movement that is not an application, or of its reversal
};

/// What is wrong with the command by itself.
std::optional<Refusal> whyNotShaped(const DividendCommand& command);

/// Decides a command by `DividendRules`: all that must be written, or the first thing that is wrong.
std::expected<DividendDecision, Refusal> decide(const DividendCommand& command, const DividendRows& rows);

}
