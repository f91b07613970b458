#include "LedgerUI/Presentation/Records/RecordModel.h"

#include <utility>

#include "LedgerUI/Presentation/Table/RowPatch.h"

void RecordModel::present(RecordRows rows)
{
    if (rows == m_shown)
        return;
    const bool isSameShape = rows.columns == m_shown.columns;
    m_shown.total = std::move(rows.total);
    m_next = std::move(rows.rows);
    if (!isSameShape) {
        beginResetModel();
        m_shown.columns = std::move(rows.columns);
        endResetModel();
    }
    follow(rowChange(RowPatch::moved(m_shown.rows, m_next), static_cast<int>(m_next.size())));
    m_next.clear();
    if (!m_shown.rows.empty() && !m_shown.columns.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void RecordModel::drop(const RowChange::Range& rows)
{
    RowPatch::drop(rows, m_shown.rows);
}

void RecordModel::adopt(const RowChange& change)
{
    m_shown.rows = RowPatch::known(change, m_next);
}

void RecordModel::insert(const RowChange::Range& rows)
{
    RowPatch::insert(rows, m_shown.rows, m_next);
}

const RecordCell& RecordModel::cell(int row, int column) const
{
    static const RecordCell none;
    const auto& cells = m_shown.rows[static_cast<std::size_t>(row)].cells;
    return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : none;
}

std::string_view RecordModel::idAt(int row) const
{
    return m_shown.rows[static_cast<std::size_t>(row)].id;
}

int RecordModel::rowOf(std::string_view id) const
{
    return RowPatch::placeOf(id, m_shown.rows);
}

int RecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.rows.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.columns.size());
}

QString RecordModel::toolTipOf(int row) const
{
    QStringList lines;
    for (const int each : m_told) {
        if (const auto& text = cell(row, each).text; !text.isEmpty())
            lines << m_shown.columns[static_cast<std::size_t>(each)].head + QStringLiteral(": ") + text;
    }
    return lines.join(QLatin1Char{'\n'});
}

QVariant RecordModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& shown = cell(index.row(), index.column());
    if (role == Qt::DisplayRole)
        return shown.text;
    if (role == Qt::ToolTipRole)
        return toolTipOf(index.row());
    if (role != Qt::AccessibleTextRole)
        return {};
    QStringList parts{shown.spoken.isEmpty() ? shown.text : shown.spoken, shown.chip, shown.second};
    parts.removeAll(QString{});
    return parts.join(QStringLiteral(", "));
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount())
        return {};
    const auto& column = m_shown.columns[static_cast<std::size_t>(section)];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment{Qt::AlignVCenter | (column.isAtRight ? Qt::AlignRight : Qt::AlignLeft)});
    return role == Qt::DisplayRole ? QVariant{column.head} : QVariant{};
}
