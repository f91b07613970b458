#pragma once

#include "LedgerUI/Presentation/Dividends/DividendForm.h"
#include "LedgerUI/Screens/Records/RecordActionForm.h"

/// The dividend section of the books, as a form sends to it.
struct DividendSection : DividendForms {
    using Route = DividendRoute;
    using Form = DividendForm;
    using Command = DividendCommand;

    static Form opened(const Route& route, const LedgerSnapshot& snapshot, std::string_view today,
                       std::string_view locale);
    static Form reloaded(Form form, const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale);
    static QString whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale);
    static constexpr auto submit = &LedgerStore::submitDividend;
    static bool hasTable(const Route& route);
    /// Whether the action books an entry that receipts can be on.
    static bool takesReceipts(const Route& route);
};

extern template class RecordActionForm<DividendSection>;

/// Changes dividend records: allocations and their cancellation, payments, advances with their returns and set-offs,
/// reversals and participants.
class DividendActionForm final : public RecordActionForm<DividendSection> {
public:
    DividendActionForm(LedgerStore& store, const DividendRoute& route, QWidget* parent);
    DividendActionForm(LedgerStore& store, const DividendCommand& kept, bool outcomeUnknown, QWidget* parent);

private:
    void addRatioActions();
    void present() override;
    void fillFromOwnership();

    QPushButton* m_useDefaults = nullptr; // of an allocation
    QPushButton* m_fill = nullptr;        // of an allocation and of participants
};
