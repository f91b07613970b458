#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"

#include <utility>

#include <QStringList>

#include "LedgerUI/Presentation/Table/RowPatch.h"

void ReportGridModel::present(ReportGrid grid)
{
    if (grid == m_grid)
        return;
    m_next = std::move(grid);
    // Heads and figures change together with the rows, and reports are short: all is told as one change.
    follow({.kind = RowChange::Kind::replacement, .moved = RowPatch::moved(m_grid.rows, m_next.rows)});
    m_next = {};
}

void ReportGridModel::drop(const RowChange::Range& /*rows*/)
{
    // `adopt` lets go of all of them.
}

void ReportGridModel::adopt(const RowChange& /*change*/)
{
    m_grid = std::move(m_next);
}

void ReportGridModel::insert(const RowChange::Range& /*rows*/)
{
    // `adopt` has taken all of them.
}

const ReportGridCell* ReportGridModel::cell(const QModelIndex& index) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return nullptr;
    return &row(index.row()).cells[static_cast<std::size_t>(index.column())];
}

int ReportGridModel::rowOf(std::string_view id) const
{
    return RowPatch::placeOf(id, m_grid.rows);
}

int ReportGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_grid.rows.size());
}

int ReportGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_grid.columns.size());
}

/// The cell with whatever its row has in columns that a narrow table leaves out.
QString ReportGridModel::told(const QModelIndex& index) const
{
    QStringList lines{data(index, Qt::AccessibleTextRole).toString()};
    for (int column = 0; column < columnCount(); ++column) {
        const auto place = index.siblingAtColumn(column);
        const auto& head = m_grid.columns[static_cast<std::size_t>(column)];
        const auto text = data(place, Qt::AccessibleTextRole).toString();
        if (head.isSpare && column != index.column() && !text.isEmpty())
            lines << QStringLiteral("%1: %2").arg(head.head, text);
    }
    return lines.join(QLatin1Char('\n'));
}

QVariant ReportGridModel::data(const QModelIndex& index, int role) const
{
    const auto* shown = cell(index);
    if (!shown)
        return {};
    if (role == Qt::DisplayRole)
        return shown->text;
    if (role == Qt::ToolTipRole)
        return told(index);
    if (role == Qt::AccessibleTextRole) {
        const auto& said = shown->spoken.isEmpty() ? shown->text : shown->spoken;
        return shown->beside.isEmpty() ? said : QStringLiteral("%1, %2").arg(said, shown->beside);
    }
    return {};
}

QVariant ReportGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount())
        return {};
    const auto& column = m_grid.columns[static_cast<std::size_t>(section)];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment{
            Qt::AlignVCenter | (column.kind == ReportGridColumn::Kind::figure ? Qt::AlignRight : Qt::AlignLeft)});
    if (role == Qt::AccessibleTextRole && m_grid.sort && m_grid.sort->column == column.id)
        return m_grid.sorted;
    return role == Qt::DisplayRole ? QVariant{column.head} : QVariant{};
}
