#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Failure.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"

/// A reason is being typed.
struct ReversalTyping {
    std::string reason;
    bool isReasonMissing = false;
};

/// An earlier request is kept and will be sent again as it stood. A refusal is told by the store's own alert.
struct ReversalKept {
    std::string reason;
    bool mayBePosted = false; // its outcome was never learned
};

/// Sent; the reply is awaited.
struct ReversalSending {
    std::string reason;
    bool isRetry = false; // of a request that may have been posted
};

/// Nobody knows whether it is posted: only the same request may be sent again.
struct ReversalUncertain {
    std::string reason;
};

/// Posted.
struct ReversalDone {
    std::string reason;
};

using ReversalState = std::variant<ReversalTyping, ReversalKept, ReversalSending, ReversalUncertain, ReversalDone>;

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

/// How the dialog opens: anew, or on the kept request of an earlier attempt.
ReversalState opened(const std::optional<Reversal>& kept);

/// `day` is the one on which the reversal is booked.
ReversalContent content(const ReversalState& state, const LedgerTransaction& original, const LedgerSnapshot& snapshot,
                        std::string_view day, std::string_view locale);

/// `kept` is what the store will send next time; nothing where the request never went out.
ReversalState afterReply(const ReversalSending& sending, const Result<void>& reply,
                         const std::optional<Reversal>& kept);

const std::string& reasonOf(const ReversalState& state);

}
