#include "LedgerUI/Presentation/Records/RecordModel.h"

#include <algorithm>
#include <utility>

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
    std::vector<int> moved;
    for (const auto& before : m_shown.rows) {
        const auto now = std::ranges::find(m_next, before.id, &RecordRow::id);
        moved.push_back(now == m_next.end() ? -1 : static_cast<int>(now - m_next.begin()));
    }
    follow(rowChange(std::move(moved), static_cast<int>(m_next.size())));
    m_next.clear();
    if (!m_shown.rows.empty() && !m_shown.columns.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void RecordModel::drop(const RowChange::Range& rows)
{
    m_shown.rows.erase(m_shown.rows.begin() + rows.first, m_shown.rows.begin() + rows.last + 1);
}

void RecordModel::adopt(const RowChange& change)
{
    std::vector<RecordRow> kept;
    int row = 0;
    for (const auto& fresh : change.fresh) { // they follow one by one
        kept.insert(kept.end(), m_next.begin() + row, m_next.begin() + fresh.first);
        row = fresh.last + 1;
    }
    kept.insert(kept.end(), m_next.begin() + row, m_next.end());
    m_shown.rows = std::move(kept);
}

void RecordModel::insert(const RowChange::Range& rows)
{
    m_shown.rows.insert(m_shown.rows.begin() + rows.first, m_next.begin() + rows.first, m_next.begin() + rows.last + 1);
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
    const auto found = std::ranges::find(m_shown.rows, id, &RecordRow::id);
    return found == m_shown.rows.end() ? -1 : static_cast<int>(found - m_shown.rows.begin());
}

int RecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.rows.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.columns.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& shown = cell(index.row(), index.column());
    if (role == Qt::DisplayRole)
        return shown.text;
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
