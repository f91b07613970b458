#pragma once

#include <map>

#include "LedgerUI/Components/Chart/ChartPainter.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Reports/ReportSheet.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class ChoiceField;
class EmptyState;
class LedgerStore;
class PageHeader;
class PageTabs;
class PeriodNavigator;
class QStackedWidget;
class ReportBrowser;
class ReportTab;
class SplitButton;

/// The reports page: one period, all accounts or some, one currency at a time, and a tab for each way of looking at
/// them. Every figure opens the entries behind it in the ledger.
class ReportsView final : public PageView {
    Q_OBJECT
public:
    explicit ReportsView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void buildNewEntry();
    void bindParts();
    void addTab(const QString& id, ReportTab* tab);
    void adoptSnapshot();
    void present();
    void presentTab();
    void presentAccounts();
    void presentActions();
    void presentFailure();
    [[nodiscard]] ChartColors colors() const;
    void showInLedger(LedgerFilter filter);
    void lend(const AttentionItem& item);
    void openForm(const EntryForm::Opening& opening);

    LedgerStore& m_store;
    ReportBrowser* m_browser = nullptr;
    ActionSet* m_actions = nullptr;
    PageHeader* m_header = nullptr;
    PeriodNavigator* m_period = nullptr;
    ChoiceField* m_accounts = nullptr;
    SplitButton* m_newEntry = nullptr;
    QStackedWidget* m_stack = nullptr;
    PageTabs* m_tabs = nullptr;
    EmptyState* m_notice = nullptr;
    std::vector<QString> m_order; // of the tabs
    std::map<QString, ReportTab*> m_made;
};
