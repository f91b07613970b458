#pragma once

#include <string>
#include <variant>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Failure.h"
#include "LedgerCore/Domain/LedgerSnapshot.h"

/// A reason is being typed. A refusal is told by the store's own alert.
struct ReversalTyping {
    std::string reason;
    bool isReasonMissing = false;
};

/// Sent; the reply is awaited.
struct ReversalSending {
    std::string reason;
    bool isRetry = false;
};

/// Nobody knows whether it is posted: only the same request may be sent again.
struct ReversalUncertain {
    std::string reason;
};

/// Posted.
struct ReversalDone {
    std::string reason;
};

using ReversalState = std::variant<ReversalTyping, ReversalSending, ReversalUncertain, ReversalDone>;

/// One movement of the original or of the entry that undoes it.
struct ReversalRow {
    QString day;
    QString glyph;
    QString title;
    QString account; // empty where the entry has a single movement
    QString currency;
    QString amount;
    bool isOpposite = false;

    bool operator==(const ReversalRow&) const = default;
};

struct ReversalContent {
    QString title;
    QString explanation;
    std::vector<ReversalRow> rows;
    QString reason;
    QString reasonMessage;
    QString confirm;
};

namespace EntryReversal {

/// `today` is the day on which the reversal is booked.
ReversalContent content(const ReversalState& state, const LedgerTransaction& original, const LedgerSnapshot& snapshot,
                        std::string_view today, std::string_view locale);

ReversalState afterReply(const ReversalSending& sending, const Result<void>& reply);

const std::string& reasonOf(const ReversalState& state);

}
