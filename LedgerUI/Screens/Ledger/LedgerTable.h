#pragma once

#include <string>

#include <QTableView>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"
#include "LedgerUI/Presentation/Ledger/LedgerSort.h"

class LedgerBrowser;
class LedgerDelegate;
class LedgerTableModel;

/// The ledger's entries. Selection, current row and scroll follow the entries, not the rows, through every change.
class LedgerTable final : public QTableView {
    Q_OBJECT
public:
    explicit LedgerTable(QWidget* parent = nullptr);

    void present(const LedgerBrowser& browser);
    void retranslate(std::string_view locale);

    /// The identifiers of the selected entries, in the order of the table.
    [[nodiscard]] std::vector<std::string> selectedIDs() const;
    /// The selected entries' places in the book.
    [[nodiscard]] std::vector<std::uint32_t> selectedEntries() const;
    /// Selects the entry and scrolls to it, if it is shown.
    bool select(std::string_view id);
    void copySelection() const;
    [[nodiscard]] const LedgerTableModel& entries() const { return *m_model; }

Q_SIGNALS:
    void opened();
    void selectionMoved();
    void sortWanted(LedgerSort sort);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// Entries by their places in `book`, which may be an earlier one.
    struct Kept {
        LedgerBookPointer book;
        std::vector<std::uint32_t> selected;
        std::uint32_t current = LedgerBook::none;
        std::uint32_t top = LedgerBook::none; // the uppermost visible entry
    };
    [[nodiscard]] Kept keep() const;
    void restore(const Kept& kept);
    [[nodiscard]] std::vector<int> selectedRows() const;
    void selectRows(const std::vector<int>& rows);
    void layOut();
    [[nodiscard]] int dateWidth() const;
    [[nodiscard]] int amountWidth() const;
    void hover(int row);
    void sortBy(int column);

    LedgerTableModel* m_model = nullptr;
    LedgerDelegate* m_delegate = nullptr;
    LedgerSort m_sort;
    int m_dateWidth = 0;
    int m_amountWidth = 0;
};
