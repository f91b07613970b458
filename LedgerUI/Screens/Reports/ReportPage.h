#pragma once

#include <vector>

#include "LedgerUI/Components/Chart/ChartPainter.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportSheet.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class LedgerStore;
class PageHeader;
class PeriodNavigator;
class ReportBrowser;
class SplitButton;
class TransactionForm;

/// What the pages that look at a period of the books have in common: the period, a new entry, the way to the entries
/// behind a figure and to where a hand is wanted.
class ReportPage : public PageView {
    Q_OBJECT
public:
    void adoptInvitations(const std::vector<PendingInvitation>& invitations) override;
    void followDay() override { adoptSnapshot(); }

protected:
    /// Begins with this report; `name` begins the names of the controls.
    ReportPage(LedgerStore& store, ReportPart report, const QString& name, QWidget* parent);

    /// To be called once the page is built; later when the language has changed.
    void adoptSnapshot();
    /// Shows the sheet in force; null while there is none.
    virtual void present(const ReportSheet* sheet) = 0;

    [[nodiscard]] PageHeader& header() const { return *m_header; }
    [[nodiscard]] PeriodNavigator& period() const { return *m_period; }
    [[nodiscard]] ReportBrowser& browser() const { return *m_browser; }
    [[nodiscard]] LedgerStore& store() const { return m_store; }
    [[nodiscard]] ActionSet& actions() const { return *m_actions; }
    [[nodiscard]] static ChartColors colorsOf(const ReportSheet& sheet);

    void showInLedger(LedgerFilter filter);
    void showBacking(const ReportBacking& backing);
    void showEntry(const QString& id);
    void lend(const AttentionItem& item);
    /// What wants a hand and is no part of the books.
    [[nodiscard]] std::vector<AttentionItem> besideBooks() const;
    void sayCopied();

    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool openBooks();
    void loadInvitations();
    void buildNewEntry(const QString& name);
    void presentSheet();
    void presentActions();
    void showTemplates();
    void openForm(const EntryForm::Opening& opening);
    void openForm(TransactionForm* form);

    LedgerStore& m_store;
    ReportBrowser* m_browser = nullptr;
    ActionSet* m_actions = nullptr;
    PageHeader* m_header = nullptr;
    PeriodNavigator* m_period = nullptr;
    SplitButton* m_newEntry = nullptr;
    std::vector<PendingInvitation> m_invitations; // as they were when last read
    bool m_wantsInvitations = false;
};
