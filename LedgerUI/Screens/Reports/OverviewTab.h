#pragma once

#include <functional>
#include <vector>

#include "LedgerUI/Screens/Reports/ReportTab.h"

class AttentionList;
class ReportChart;
class ReportTable;
class TextLabel;

/// Where the company stands: each currency in the period, the months up to it as a chart, what was spent on, what wants
/// a hand, and below it the same months in figures and what was earned by. The chosen currency drives all but the first
/// table. In a narrow window its parts are lower.
class OverviewTab final : public ReportTab {
    Q_OBJECT
public:
    /// What wants a hand beside what the sheet says, asked each time that the tab is shown.
    using Beside = std::function<std::vector<AttentionItem>()>;
    explicit OverviewTab(Beside beside, QWidget* parent = nullptr);

    void present(const ReportSheet& sheet, const ChartColors& colors) override;
    [[nodiscard]] QList<QWidget*> panes() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A list of the largest categories, or a word where there are none.
    struct Categories {
        TextLabel* title = nullptr;
        TextLabel* currency = nullptr;
        TextLabel* none = nullptr;
        ReportTable* table = nullptr;
    };

    ReportChart* buildChart(QWidget* parent);
    QWidget* buildMonths(QWidget* parent);
    struct CategoryNames {
        const char* table;
        const char* none;
    };
    QWidget* buildCategories(Categories& made, const CategoryNames& names, QWidget* parent);
    void bindParts();
    void chooseMonth(std::size_t at);
    void presentCategories(const Categories& shown, const ReportGrid& grid, std::string_view none,
                           const ChartColors& colors);

    Beside m_beside;
    std::vector<std::chrono::year_month> m_months; // of the chart's slots
    ReportTable* m_currencies = nullptr;
    ReportChart* m_chart = nullptr;
    Categories m_expenses;
    AttentionList* m_attention = nullptr;
    TextLabel* m_monthsTitle = nullptr;
    TextLabel* m_monthsCurrency = nullptr;
    ReportTable* m_monthTable = nullptr;
    Categories m_income;
};
