#pragma once

#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Capital/CapitalOverview.h"

class QVBoxLayout;

/// How the company was owned over time: each version of the shares as a bar of a hundred percent, the latest on top.
class OwnershipBars final : public QWidget {
    Q_OBJECT
public:
    explicit OwnershipBars(QWidget* parent = nullptr);

    void present(const std::vector<OwnershipBar>& bars, const QString& none);

private:
    void addBar(const OwnershipBar& bar);

    QVBoxLayout* m_rows = nullptr;
    std::vector<OwnershipBar> m_bars;
    QString m_none;
};
