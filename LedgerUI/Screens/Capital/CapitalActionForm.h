#pragma once

#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Screens/Capital/RecordActionForm.h"

/// The capital section of the books, as a form sends to it.
struct CapitalSection {
    using Route = CapitalRoute;
    using Form = CapitalForm;
    using Command = CapitalCommand;

    static Form opened(const Route& route, const LedgerSnapshot& snapshot, const std::string& today,
                       std::string_view locale);
    static Form reloaded(Form form, const LedgerSnapshot& snapshot, const std::string& today, std::string_view locale);
    static Form edited(Form form, const RecordEdit& edit, const LedgerSnapshot& snapshot, std::string_view locale);
    static Form rewritten(Form form, std::string_view fromLocale, std::string_view toLocale);
    static bool isCurrent(const Form& form, const LedgerSnapshot& snapshot);
    static std::expected<Command, std::vector<CapitalProblem>> command(const Form& form, const LedgerSnapshot& snapshot,
                                                                       CommandIssue issue, std::string_view locale);
    static RecordFormContent content(const CapitalSubmission& submission, const Form& initial,
                                     const LedgerSnapshot& snapshot, const std::string& today, std::string_view locale);
    static QString whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale);
    static bool isConflict(const Failure& failure);
    static constexpr auto submit = &LedgerStore::submitCapital;
    static int width(const Route& route);
};

/// Changes capital records: contributions and their reversal, owners, the historical baseline, the ownership
/// percentages.
class CapitalActionForm final : public RecordActionForm<CapitalSection> {
public:
    using RecordActionForm::RecordActionForm;
};
