#pragma once

#include <expected>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Money/MoneyError.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Capital/RecordForm.h"

/// Which action of dividends the form serves, and what it is about.
struct DividendRoute {
    std::string action; // a `DividendAction`
    std::string participantID = {};
    std::string batchID = {};
    std::string advanceID = {};
    std::string movementID = {};
    std::string currency = {};

    bool operator==(const DividendRoute&) const = default;
};

/// One thing to put right. A text that cannot be read keeps the reason of that.
struct DividendProblem {
    std::optional<RecordPart> part = {}; // of the whole form without one
    std::string personID = {};
    std::optional<DividendRefusal> refusal = {};
    std::optional<MoneyError> money = {};

    bool operator==(const DividendProblem&) const = default;
    [[nodiscard]] QString message(std::string_view locale) const;
};

/// What a person filled in, and the records as they stood when the form was opened.
struct DividendForm {
    DividendRoute route;
    std::string participantID = {}; // of setParticipant: empty for a new one
    std::string name = {};
    std::optional<std::string> memberID = {};
    std::string ratio = {}; // the default one of a participant
    bool archived = false;
    std::string period = {};
    std::string currency = {};
    std::string amount = {};
    std::map<std::string, std::string> ratios = {}; // typed percentages, by participant
    std::set<std::string> leftOut = {};             // participants who take no part in an allocation
    std::string batchID = {};
    std::string advanceID = {};
    std::string accountID = {};
    std::string note = {};
    std::vector<std::string> receiptIDs = {};
    DividendState captured = {};
    bool initialized = false;
    bool needsReload = false;                       // the records have changed since
    std::map<std::string, std::string> newest = {}; // what newer records say where a person typed something else
    std::vector<DividendProblem> problems = {};

    bool operator==(const DividendForm&) const = default;
};

using DividendSubmission = Submission<DividendForm, DividendCommand>;

namespace DividendForms {

enum class PreserveDraft { no, yes };

/// Captures the records of now and fills in what they say, in the separators of `locale`.
DividendForm initialize(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale,
                        PreserveDraft preserveDraft);
DividendForm opened(const DividendRoute& route, const LedgerSnapshot& snapshot, std::string_view locale);

/// Everything again from the records of now; what was typed stays.
DividendForm reloadLatest(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale);
/// What can no longer be chosen is no longer chosen.
DividendForm reconcileSelections(DividendForm form, const LedgerSnapshot& snapshot);
/// The default ratios of now in all rows.
DividendForm withDefaultRatios(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale);

/// Whether the records still are those that the form was opened on.
bool isCurrent(const DividendForm& form, const LedgerSnapshot& snapshot);

/// The participants on offer. Pointers point into the snapshot.
std::vector<const DividendParticipant*> people(const LedgerSnapshot& snapshot);
/// The allocations of the chosen currency in which something of the chosen participant is unpaid.
std::vector<const DividendBatch*> eligibleBatches(const DividendForm& form, const LedgerSnapshot& snapshot);
/// The advances of the chosen participant and currency of which something is left.
std::vector<const DividendMovement*> eligibleAdvances(const DividendForm& form, const LedgerSnapshot& snapshot);
/// The largest amount that the action may carry; nothing while nothing is chosen.
std::optional<std::int64_t> limit(const DividendForm& form, const LedgerSnapshot& snapshot);
/// One for each who takes part; nothing while a text is no percentage.
std::optional<std::vector<DividendShare>> shares(const DividendForm& form, const LedgerSnapshot& snapshot,
                                                 std::string_view locale);
/// The allocation of the typed total; nothing while it cannot be made.
std::optional<std::vector<DividendLine>> preview(const DividendForm& form, const LedgerSnapshot& snapshot,
                                                 std::string_view locale);
/// The basis points of all that take part and can be read.
int ratioTotal(const DividendForm& form, const LedgerSnapshot& snapshot, std::string_view locale);

DividendForm edited(DividendForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot, std::string_view locale);

/// The same with typed amounts and percentages in the separators of another language.
DividendForm rewritten(DividendForm form, std::string_view fromLocale, std::string_view toLocale);

/// The command for what stands in the form, or what is to be put right.
std::expected<DividendCommand, std::vector<DividendProblem>>
command(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale);

/// `initial` is the form as it was opened.
RecordFormContent content(const DividendSubmission& submission, const DividendForm& initial,
                          const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);

}
