#pragma once

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Ledger/LedgerSort.h"

class LedgerBrowser;
class LedgerTableModel;

/// The ledger's entries.
class LedgerTable final : public RowTable {
    Q_OBJECT
public:
    explicit LedgerTable(QWidget* parent = nullptr);

    void present(const LedgerBrowser& browser);
    void retranslate();

    /// The chosen entries' places in the book.
    [[nodiscard]] std::vector<std::uint32_t> selectedEntries() const;
    void copySelection() const;
    [[nodiscard]] const LedgerTableModel& entries() const { return *m_model; }

    /// What pressing the head of the column that sorts by `key` asks for.
    [[nodiscard]] LedgerSort sortedBy(LedgerSort::Key key) const;
    /// By the next visible column, from the left and round.
    [[nodiscard]] LedgerSort sortedByNext() const;

Q_SIGNALS:
    void sortWanted(LedgerSort sort);

protected:
    void layOut() override;

private:
    explicit LedgerTable(LedgerTableModel* model, QWidget* parent);
    [[nodiscard]] int dateWidth() const;
    [[nodiscard]] int amountWidth() const;

    LedgerTableModel* m_model;
    LedgerSort m_sort;
};
