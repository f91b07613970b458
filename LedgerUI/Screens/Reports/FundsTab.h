#pragma once

#include "LedgerUI/Screens/Reports/ReportTab.h"

class CurrencySegments;
class ReportTable;
class TextLabel;
class TitledTables;

/// The money that moved without being income or expense: by kind, and movement by movement.
class FundsTab final : public ReportTab {
    Q_OBJECT
public:
    explicit FundsTab(QWidget* parent = nullptr);

    void present(const ReportSheet& sheet, const ChartColors& colors) override;
    [[nodiscard]] QList<QWidget*> panes() const override;

private:
    void bindParts();

    ReportQuery m_query;
    CurrencySegments* m_currency = nullptr;
    TitledTables* m_tables = nullptr;
    ReportTable* m_sums = nullptr;
    ReportTable* m_list = nullptr;
    TextLabel* m_note = nullptr;
};
