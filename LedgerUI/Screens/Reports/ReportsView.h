#pragma once

#include <map>

#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"
#include "LedgerUI/Screens/Reports/ReportPage.h"

class ChoiceField;
class EmptyState;
class PageTabs;
class QStackedWidget;
class ReportTab;

/// The reports page: one period, all accounts or some, one currency at a time, and a tab for each way of looking at
/// them. Every figure opens the entries behind it in the ledger.
class ReportsView final : public ReportPage {
    Q_OBJECT
public:
    explicit ReportsView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    void buildLayout();
    [[nodiscard]] ReportTab& tab(ReportPart part);
    [[nodiscard]] ReportTab* make(ReportPart part);
    void bindTab(ReportTab* tab);
    void present(const ReportSheet* sheet) override;
    void presentTab();
    void presentAccounts(const ReportSheet& sheet);
    void presentFailure(ReportError failure);
    void presentExits();
    [[nodiscard]] ReportPart part() const;
    void print();
    void exportReport(const QString& tableName);
    void copyWhole(const QString& tableID);
    void narrowTo(const std::set<std::string, std::less<>>& accountIDs);

    ChoiceField* m_accounts = nullptr;
    QStackedWidget* m_stack = nullptr;
    PageTabs* m_tabs = nullptr;
    EmptyState* m_notice = nullptr;
    std::map<ReportPart, ReportTab*> m_made; // those that were looked at
};
