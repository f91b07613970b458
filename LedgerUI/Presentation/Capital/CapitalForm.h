#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"

/// Which action of capital the form serves, and what it is about.
struct CapitalRoute {
    std::string action; // a `CapitalAction`
    std::string participantID = {};
    std::string contributionID = {};
    std::string currency = {};

    bool operator==(const CapitalRoute&) const = default;
};

using CapitalProblem = RecordProblem<CapitalRefusal>;

/// What a person filled in, and the records as they stood when the form was opened.
struct CapitalForm : RecordDraft<CapitalRoute, CapitalState, CapitalRefusal> {
    std::optional<std::string> historicalDate = {};      // the last day that a baseline covers
    std::string startDate = {};                          // from which shares hold
    TypedTexts amounts = {};                             // by owner
    TypedTexts ratios = {};                              // percentages, by owner
    std::vector<CapitalParticipant> capturedPeople = {}; // the rows of the table
    bool zeroConfirmed = false;

    bool operator==(const CapitalForm&) const = default;
};

using CapitalSubmission = Submission<CapitalForm, CapitalCommand>;

/// What the form does: from the records that it is opened on to the command that it sends.
struct CapitalForms {
    using PreserveDraft = ::PreserveDraft;

    /// Captures the records of now and fills in what they say, in the separators of `locale`. A preserved draft keeps
    /// what was typed.
    static CapitalForm initialize(CapitalForm form, const LedgerSnapshot& snapshot, std::string_view today,
                                  std::string_view locale, PreserveDraft preserveDraft);
    static CapitalForm opened(const CapitalRoute& route, const LedgerSnapshot& snapshot, std::string_view today,
                              std::string_view locale);

    /// Whether the records still are those that the form was opened on.
    static bool isCurrent(const CapitalForm& form, const LedgerSnapshot& snapshot);

    /// The basis points of all that can be read.
    static std::int64_t ratioTotal(const CapitalForm& form, std::string_view locale);

    /// The entry booked by the first contribution that came after the form's records: by the command that was made from
    /// them, once it is accepted. Empty where that booked none.
    static std::string bookedEntry(const CapitalForm& form, const LedgerSnapshot& snapshot);

    static CapitalForm edited(CapitalForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                              std::string_view locale);

    /// The keys left the amount as it stands, or what is typed for a person in the table: what keeps it from being used
    /// is said now.
    static CapitalForm leftAmount(CapitalForm form, const std::string& personID, std::string_view locale);
    /// What was to be pasted is not one amount; what stands there stays.
    /// `personID` is whose amount it was to be; empty for the one amount of the form.
    static CapitalForm refusedPaste(CapitalForm form, PasteRefusal refusal, std::string personID);
    /// The form that sent a command of which nobody knows whether it was carried out.
    static CapitalForm restored(const CapitalCommand& command, const LedgerSnapshot& snapshot, std::string_view locale);

    /// The same with typed amounts and percentages in the separators of another language.
    static CapitalForm rewritten(CapitalForm form, std::string_view fromLocale, std::string_view toLocale);

    /// The command for what stands in the form, or what is to be put right.
    static std::expected<CapitalCommand, std::vector<CapitalProblem>>
    command(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale);

    /// `initial` is the form as it was opened.
    static RecordFormContent content(const CapitalSubmission& submission, const CapitalForm& initial,
                                     const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);
};
