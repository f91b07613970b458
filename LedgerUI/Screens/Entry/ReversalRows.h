#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/EntryReversal.h"
#include "LedgerUI/Theme/Token.h"

class QGridLayout;

/// The movements of an entry and those that undo it, one below the other.
class ReversalRows final : public QFrame {
    Q_OBJECT
public:
    explicit ReversalRows(QWidget* parent = nullptr);

    void present(const std::vector<ReversalRow>& rows, Token kindColor);

private:
    void addRow(int at, const ReversalRow& row, Token kindColor);

    QGridLayout* m_grid = nullptr;
    std::vector<ReversalRow> m_rows;
};
