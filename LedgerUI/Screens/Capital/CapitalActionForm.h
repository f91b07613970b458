#pragma once

#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Screens/Records/RecordActionForm.h"

/// The capital section of the books, as a form sends to it.
struct CapitalSection : CapitalForms {
    using Route = CapitalRoute;
    using Form = CapitalForm;
    using Command = CapitalCommand;

    static Form reloaded(Form form, const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);
    static QString whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale);
    static constexpr auto submit = &LedgerStore::submitCapital;
    static bool hasTable(const Route& route);
    /// Whether the action books an entry that receipts can be on.
    static bool takesReceipts(const Route& route);
};

extern template class RecordActionForm<CapitalSection>;

/// Changes capital records: contributions and their reversal, owners, the historical baseline, the ownership
/// percentages.
class CapitalActionForm final : public RecordActionForm<CapitalSection> {
public:
    using RecordActionForm::RecordActionForm;
};
