#pragma once

#include "LedgerUI/Screens/Reports/ReportTab.h"

class CurrencySegments;
class QCheckBox;
class ReportTable;
class TitledTables;

/// Accounts by kind of movement in the period, and accounts by month.
class MatrixTab final : public ReportTab {
    Q_OBJECT
public:
    explicit MatrixTab(QWidget* parent = nullptr);

    void present(const ReportSheet& sheet, const ChartColors& colors) override;
    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    void bindParts();

    ReportQuery m_query;
    CurrencySegments* m_currency = nullptr;
    QCheckBox* m_hides = nullptr;
    TitledTables* m_tables = nullptr;
    ReportTable* m_movements = nullptr;
    ReportTable* m_monthEnds = nullptr;
};
