#pragma once

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Money/MoneyError.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Capital/RecordForm.h"

/// Which action of capital the form serves, and what it is about.
struct CapitalRoute {
    std::string action; // a `CapitalAction`
    std::string participantID = {};
    std::string contributionID = {};
    std::string currency = {};

    bool operator==(const CapitalRoute&) const = default;
};

/// One thing to put right. An amount that cannot be read keeps the reason of that beside what the action says of it.
struct CapitalProblem {
    std::optional<RecordPart> part = {}; // of the whole form without one
    std::string personID = {};
    std::optional<CapitalRefusal> refusal = {};
    std::optional<MoneyError> money = {};

    bool operator==(const CapitalProblem&) const = default;
    [[nodiscard]] QString message(std::string_view locale) const;
};

/// What a person filled in, and the records as they stood when the form was opened.
struct CapitalForm {
    CapitalRoute route;
    std::string participantID = {}; // empty for a new owner
    std::string name = {};
    std::optional<std::string> memberID = {};
    bool archived = false;
    std::string currency = {};
    std::string accountID = {};
    std::string note = {};
    std::optional<std::string> historicalDate = {};      // the last day that a baseline covers
    std::string startDate = {};                          // from which shares hold
    std::map<std::string, std::string> amounts = {};     // typed, by owner
    std::map<std::string, std::string> ratios = {};      // typed percentages, by owner
    std::vector<CapitalParticipant> capturedPeople = {}; // the rows of the table
    CapitalState captured = {};
    std::vector<std::string> receiptIDs = {};
    bool initialized = false;
    bool needsReload = false; // the records have changed since
    bool zeroConfirmed = false;
    std::map<std::string, std::string> newest = {}; // what newer records say where a person typed something else
    std::vector<CapitalProblem> problems = {};

    bool operator==(const CapitalForm&) const = default;
};

using CapitalSubmission = Submission<CapitalForm, CapitalCommand>;

namespace CapitalForms {

enum class PreserveDraft { no, yes };

/// Captures the records of now and fills in what they say, in the separators of `locale`. A preserved draft keeps what
/// was typed.
CapitalForm initialize(CapitalForm form, const LedgerSnapshot& snapshot, std::string_view today,
                       std::string_view locale, PreserveDraft preserveDraft);
CapitalForm opened(const CapitalRoute& route, const LedgerSnapshot& snapshot, std::string_view today,
                   std::string_view locale);

/// Whether the records still are those that the form was opened on.
bool isCurrent(const CapitalForm& form, const LedgerSnapshot& snapshot);

/// The basis points of all that can be read.
int ratioTotal(const CapitalForm& form, std::string_view locale);

CapitalForm edited(CapitalForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot, std::string_view locale);

/// The same with typed amounts and percentages in the separators of another language.
CapitalForm rewritten(CapitalForm form, std::string_view fromLocale, std::string_view toLocale);

/// The command for what stands in the form, or what is to be put right.
std::expected<CapitalCommand, std::vector<CapitalProblem>>
command(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale);

/// `initial` is the form as it was opened.
RecordFormContent content(const CapitalSubmission& submission, const CapitalForm& initial,
                          const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);

}
