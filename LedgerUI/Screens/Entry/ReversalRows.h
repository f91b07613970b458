#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/Entry/EntryReversal.h"
#include "LedgerUI/Theme/ThemeColor.h"

class QGridLayout;

/// The movements of an entry and those that undo it, one below the other.
class ReversalRows final : public QFrame {
    Q_OBJECT
public:
    explicit ReversalRows(QWidget* parent = nullptr);

    /// In the colours of the kind undone and of reversals.
    void present(const std::vector<ReversalRow>& rows, const ThemeColor& original, const ThemeColor& opposite);

private:
    void addRow(int at, const ReversalRow& row, const ThemeColor& kindColor);

    QGridLayout* m_grid = nullptr;
    std::vector<ReversalRow> m_rows;
};
