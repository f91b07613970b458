#pragma once

#include "LedgerUI/Screens/Reports/TitledTablesTab.h"

class QCheckBox;

/// Accounts by kind of movement in the period, and accounts by month.
class MatrixTab final : public TitledTablesTab {
    Q_OBJECT
public:
    explicit MatrixTab(QWidget* parent = nullptr);

private:
    void presentBeside(const ReportSheet& sheet) override;

    QCheckBox* m_hides = nullptr;
};
