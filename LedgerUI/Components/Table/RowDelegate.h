#pragma once

#include <functional>

#include <QStyledItemDelegate>

#include "LedgerUI/Components/Table/Cell.h"

/// Paints the rows of a table: ground, selection, one ring around the whole current row, and the cells.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    enum class Density {
        oneLine,
        twoLines,
        list // two lines, the second in micro, and nothing between the rows
    };
    enum class Ring { row, cell }; // what the keys are on
    using CellAt = std::function<Cell(const QModelIndex& index, Density density)>;

    explicit RowDelegate(CellAt cellAt, QObject* parent = nullptr);

    /// The room between the paddings of a cell, which are wider at the table's edges.
    [[nodiscard]] static QRect contentsOf(const QRect& cell, int column, int columns);

    void setDensity(Density density) { m_density = density; }
    [[nodiscard]] Density density() const { return m_density; }
    void setRing(Ring ring) { m_ring = ring; }
    [[nodiscard]] int rowHeight() const;
    /// The row under the pointer; -1 for none.
    void setHoveredRow(int row) { m_hovered = row; }
    [[nodiscard]] int hoveredRow() const { return m_hovered; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                     const Cell& cell) const;

    CellAt m_cellAt;
    Density m_density = Density::twoLines;
    Ring m_ring = Ring::row;
    int m_hovered = -1;
};
