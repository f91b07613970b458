#pragma once

#include "LedgerUI/Screens/Reports/TitledTablesTab.h"

/// The money that moved without being income or expense: by kind, and movement by movement.
class FundsTab final : public TitledTablesTab {
    Q_OBJECT
public:
    explicit FundsTab(QWidget* parent = nullptr);

private:
    void presentBeside(const ReportSheet& sheet) override;

    TextLabel* m_note = nullptr;
};
