#pragma once

#include <functional>
#include <vector>

#include "LedgerUI/Screens/Reports/ReportTab.h"

class AttentionList;
class ChartView;
class ReportTable;
class TextLabel;

/// Where the company stands: each currency in the period, the months up to it, what was spent on, and what wants a
/// hand. The chosen currency drives chart and list.
class OverviewTab final : public ReportTab {
    Q_OBJECT
public:
    /// What wants a hand beside what the sheet says, asked each time that the tab is shown.
    using Beside = std::function<std::vector<AttentionItem>()>;
    explicit OverviewTab(Beside beside, QWidget* parent = nullptr);

    void present(const ReportSheet& sheet, const ChartColors& colors) override;
    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    QWidget* buildChart();
    QWidget* buildExpenses();
    void bindParts();

    Beside m_beside;
    std::vector<std::chrono::year_month> m_months; // of the chart's slots
    ReportTable* m_currencies = nullptr;
    TextLabel* m_chartTitle = nullptr;
    TextLabel* m_chartCurrency = nullptr;
    TextLabel* m_chartNone = nullptr;
    ChartView* m_chart = nullptr;
    TextLabel* m_expensesTitle = nullptr;
    TextLabel* m_expensesCurrency = nullptr;
    TextLabel* m_expensesNone = nullptr;
    ReportTable* m_expenses = nullptr;
    AttentionList* m_attention = nullptr;
};
