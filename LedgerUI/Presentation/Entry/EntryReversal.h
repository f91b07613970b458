#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

/// What a person says about a reversal.
struct ReversalForm {
    std::string reason;
    bool isReasonMissing = false;
};

/// While editing, a command beside the form is a refused request: the service remembers it, so that the next attempt
/// is the same one, with its reason and its day.
using ReversalSubmission = Submission<ReversalForm, Reversal>;

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
    QString hint; // what the next attempt sends
    bool mayEdit = true;
    bool resends = false; // the button sends an earlier request again
};

namespace EntryReversal {

/// `today` is the day on which a new request is booked.
ReversalContent content(const ReversalSubmission& submission, const LedgerTransaction& original,
                        const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);

/// How the dialog opens: anew, or on the request that an earlier attempt left.
ReversalSubmission opened(const std::optional<KeptReversal>& kept);

/// What the snapshot says against the reversal, in words; empty when it can be offered. A request that was sent once is
/// the service's to judge.
QString whyNot(const ReversalSubmission& submission, const std::string& originalID, const VisibleBooks& books,
               std::string_view locale);

/// After a failed attempt; `kept` is what the store will send next time, nothing where the request never went out.
ReversalSubmission afterFailure(ReversalSubmission submission, const Failure& failure,
                                const std::optional<KeptReversal>& kept);

}
