#pragma once

#include <set>

#include "LedgerUI/Screens/Reports/ReportTab.h"

class CurrencySegments;
class ReportChart;
class ReportTable;
class SegmentedControl;
class TextLabel;

/// Income and expense over days to years, and by category in one of these periods or all of them.
class IncomeTab final : public ReportTab {
    Q_OBJECT
public:
    explicit IncomeTab(QWidget* parent = nullptr);

    void present(const ReportSheet& sheet, const ChartColors& colors) override;
    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    QWidget* buildStrip();
    QWidget* buildTrend();
    QWidget* buildCategories();
    void bindParts();
    void presentSegments(const ReportSheet& sheet);
    void presentCategories();
    /// The part of the trend that the categories are of; the chosen one once more means all of it.
    void choosePart(std::size_t at);
    void toggle(const std::string& rowID);

    ReportTrend m_trend;
    ChartColors m_colors{.income = Token::ok, .expense = Token::danger};
    std::set<std::string, std::less<>> m_unfolded; // parents among the categories
    CurrencySegments* m_currency = nullptr;
    SegmentedControl* m_grain = nullptr;
    SegmentedControl* m_side = nullptr;
    ReportChart* m_chart = nullptr;
    ReportTable* m_table = nullptr;
    TextLabel* m_title = nullptr;
    TextLabel* m_of = nullptr;
    ReportTable* m_categories = nullptr;
    TextLabel* m_none = nullptr;
    TextLabel* m_hint = nullptr;
};
