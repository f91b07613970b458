#pragma once

#include <expected>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"

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

using DividendProblem = RecordProblem<DividendRefusal>;

/// What a person filled in, and the records as they stood when the form was opened.
struct DividendForm : RecordDraft<DividendRoute, DividendState, DividendRefusal> {
    std::string ratio = {}; // the default one of a participant
    std::string period = {};
    std::string amount = {};
    TypedTexts ratios = {};             // percentages, by participant
    std::set<std::string> leftOut = {}; // participants who take no part in an allocation
    std::string batchID = {};
    std::string advanceID = {};

    bool operator==(const DividendForm&) const = default;
};

using DividendSubmission = Submission<DividendForm, DividendCommand>;

/// What the form does: from the records that it is opened on to the command that it sends.
struct DividendForms {
    using PreserveDraft = ::PreserveDraft;

    /// Which actions settle a line of an allocation, use an advance, or move money on an account.
    static bool settlesLine(std::string_view action);
    static bool usesAdvance(std::string_view action);
    static bool movesMoney(std::string_view action);

    /// Captures the records of now and fills in what they say, in the separators of `locale`.
    static DividendForm initialize(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale,
                                   PreserveDraft preserveDraft);
    static DividendForm opened(const DividendRoute& route, const LedgerSnapshot& snapshot, std::string_view locale);

    /// Everything again from the records of now; what was typed stays.
    static DividendForm reloadLatest(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale);
    /// What can no longer be chosen is no longer chosen.
    static DividendForm reconcileSelections(DividendForm form, const LedgerSnapshot& snapshot);
    /// The default ratios of now in all rows.
    static DividendForm withDefaultRatios(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale);

    /// Whether the records still are those that the form was opened on.
    static bool isCurrent(const DividendForm& form, const LedgerSnapshot& snapshot);

    /// The participants on offer, as the form was opened on them. Pointers point into the form.
    static std::vector<const DividendParticipant*> people(const DividendForm& form);
    /// The allocations of the chosen currency in which something of the chosen participant is unpaid.
    static std::vector<const DividendBatch*> eligibleBatches(const DividendForm& form, const LedgerSnapshot& snapshot);
    /// The advances of the chosen participant and currency of which something is left.
    static std::vector<const DividendMovement*> eligibleAdvances(const DividendForm& form,
                                                                 const LedgerSnapshot& snapshot);
    /// The largest amount that the action may carry; nothing while nothing is chosen.
    static std::optional<std::int64_t> limit(const DividendForm& form, const LedgerSnapshot& snapshot);
    /// The same in the records that the form was opened on: what was sent may have used it up since.
    static std::optional<std::int64_t> capturedLimit(const DividendForm& form, const LedgerSnapshot& snapshot);
    /// What was typed for each who takes part.
    static std::vector<DividendCommands::ShareText> shareTexts(const DividendForm& form);
    /// One for each who takes part; nothing while a text is no percentage.
    static std::optional<std::vector<DividendShare>> shares(const DividendForm& form, std::string_view locale);
    /// The allocation of the typed total; nothing while it cannot be made.
    static std::optional<std::vector<DividendLine>> preview(const DividendForm& form, std::string_view locale);
    /// The basis points of all that take part and can be read.
    static std::int64_t ratioTotal(const DividendForm& form, std::string_view locale);

    /// The entry booked by the first movement that came after the form's records: by the command that was made from
    /// them, once it is accepted. Empty where that moved no money.
    static std::string bookedEntry(const DividendForm& form, const LedgerSnapshot& snapshot);

    static DividendForm edited(DividendForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                               std::string_view locale);

    /// The keys left the amount as it stands, or the ratio of a person in the table: what keeps it from being used is
    /// said now.
    static DividendForm leftAmount(DividendForm form, const std::string& personID, std::string_view locale);
    /// What was to be pasted is not one amount; what stands there stays.
    /// `personID` is whose amount it was to be; empty for the one amount of the form.
    static DividendForm refusedPaste(DividendForm form, PasteRefusal refusal, std::string personID);
    /// The form that sent a command of which nobody knows whether it was carried out.
    static DividendForm restored(const DividendCommand& command, const LedgerSnapshot& snapshot,
                                 std::string_view locale);

    /// The same with typed amounts and percentages in the separators of another language.
    static DividendForm rewritten(DividendForm form, std::string_view fromLocale, std::string_view toLocale);

    /// The command for what stands in the form, or what is to be put right.
    static std::expected<DividendCommand, std::vector<DividendProblem>>
    command(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale);

    /// `initial` is the form as it was opened.
    static RecordFormContent content(const DividendSubmission& submission, const DividendForm& initial,
                                     const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);
};
