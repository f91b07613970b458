#pragma once

#include "LedgerUI/Screens/Reports/ReportPage.h"

class AttentionList;
class ReportTable;
class TextLabel;

/// What a member who does not see the whole company answers for: own accounts, latest entries, own categories, and
/// what wants a hand. There are no totals over accounts.
class SummaryView final : public ReportPage {
    Q_OBJECT
public:
    explicit SummaryView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    QWidget* buildBody();
    QWidget* buildLatest();
    QWidget* buildExpenses();
    void bindParts();
    void present(const ReportSheet* sheet) override;
    void presentPrint();
    void print();
    void presentNotes(const ReportSheet& sheet);

    TextLabel* m_accountsTitle = nullptr;
    TextLabel* m_scope = nullptr;
    ReportTable* m_accounts = nullptr;
    TextLabel* m_latestTitle = nullptr;
    TextLabel* m_latestNone = nullptr;
    ReportTable* m_latest = nullptr;
    AttentionList* m_attention = nullptr;
    TextLabel* m_expensesTitle = nullptr;
    TextLabel* m_expensesNone = nullptr;
    ReportTable* m_expenses = nullptr;
};
