#pragma once

#include <string>
#include <vector>

#include <QTableView>

#include "LedgerUI/Components/Table/RowDelegate.h"
#include "LedgerUI/Presentation/Table/RowModel.h"

class RowHeads;

/// A table of rows that are chosen whole. Selection, current row and scroll follow the rows, not their places, through
/// every change of the model. What the ring frames is chosen too; while nothing is chosen it goes around the table.
class RowTable : public QTableView {
    Q_OBJECT
public:
    RowTable(RowModel& model, RowDelegate::CellAt cellAt, QWidget* parent = nullptr);

    /// The chosen rows from the top.
    [[nodiscard]] std::vector<int> selectedRows() const;
    [[nodiscard]] std::vector<std::string> selectedIDs() const;
    /// Chooses the row of this identity and brings it into sight; false when it is not shown.
    bool choose(std::string_view id);
    /// Chooses the uppermost row, if there is any.
    void chooseFirst();
    /// Takes the focus, with a row chosen if there is any.
    void enter();
    /// Brings the row into sight, with its head where it is the first below one.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& place) const override;

Q_SIGNALS:
    /// A row was pressed twice, or Return pressed on it.
    void opened();
    void selectionMoved();
    /// A context menu is wanted at this place of the screen, by mouse or by keys.
    void menuWanted(QPoint place);

protected:
    /// Widths of the columns and density, for the width that there is.
    virtual void layOut() = 0;
    [[nodiscard]] RowHeads& heads() const { return *m_heads; }
    void setDensity(RowDelegate::Density density);
    /// Selects these rows, in ascending order, and nothing else.
    void selectRows(const std::vector<int>& rows);
    /// The first column stays at its place while the others scroll sideways.
    void freezeFirstColumn();
    /// Frames the current cell rather than its row, where cells can be opened.
    void frameCells() { m_delegate->setRing(RowDelegate::Ring::cell); }

    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

    /// The row under the pointer; -1 for none.
    [[nodiscard]] int hoveredRow() const;

private:
    /// What a person had chosen and seen before a change, as rows of before.
    struct Kept {
        std::vector<int> selected;
        int current = -1;
        int top = -1;      // the uppermost visible row, unless the table stands at its beginning
        int topOffset = 0; // how far it is from the upper edge
    };
    void keep();
    void restore(const RowChange& change);
    void hover(int row);
    [[nodiscard]] int firstChoosable() const;
    [[nodiscard]] int choosableFrom(int row, int step) const;
    [[nodiscard]] int frozenWidth() const;
    void paintFrozen(const QRect& area);
    [[nodiscard]] QPoint menuPlace() const;

    RowModel* m_model;
    RowDelegate* m_delegate = nullptr;
    RowHeads* m_heads = nullptr;
    Kept m_kept;
    bool m_isChanging = false;
    bool m_isFrozen = false;
};
