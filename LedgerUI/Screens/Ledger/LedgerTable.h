#pragma once

#include <map>

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSort.h"

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
    /// Chooses those that are shown and brings the uppermost into sight; false when none is.
    bool chooseAll(const std::vector<std::string>& ids);
    [[nodiscard]] const LedgerTableModel& entries() const { return *m_model; }

    /// Columns that a person may show and hide; entry, date and amount are always there.
    [[nodiscard]] bool isColumnWanted(int column) const;
    void setColumnWanted(int column, bool isWanted);
    /// Columns and widths as they were before anybody changed them.
    void resetColumns();

    /// What pressing the head of the column that sorts by `key` asks for.
    [[nodiscard]] LedgerSort sortedBy(LedgerSort::Key key) const;
    /// By the next visible column, from the left and round.
    [[nodiscard]] LedgerSort sortedByNext() const;

Q_SIGNALS:
    void sortWanted(LedgerSort sort);
    /// A menu of the columns is wanted at this place of the screen.
    void columnsWanted(QPoint place);

protected:
    void layOut() override;

private:
    explicit LedgerTable(LedgerTableModel* model, QWidget* parent);
    void presentSort();
    [[nodiscard]] int dateWidth() const;
    [[nodiscard]] int amountWidth() const;
    [[nodiscard]] int balanceWidth() const;
    [[nodiscard]] int chosenWidth(int column, int usual) const;

    LedgerTableModel* m_model;
    LedgerSort m_sort;
    std::map<int, bool> m_wanted; // what a person has decided, by column
    std::map<int, int> m_widths;
    bool m_isLayingOut = false;
};
