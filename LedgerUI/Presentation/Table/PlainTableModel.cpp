#include "LedgerUI/Presentation/Table/PlainTableModel.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Table/RowPatch.h"

void PlainTableModel::present(std::vector<PlainColumn> columns, std::vector<PlainRow> rows)
{
    const auto fits = [&](const PlainRow& row) { return row.cells.size() == columns.size(); };
    require(std::ranges::all_of(rows, fits), "a row has a cell for each column");
    if (columns.size() != m_columns.size()) {
        beginResetModel();
        m_columns = std::move(columns);
        m_rows.clear();
        endResetModel();
    } else if (columns != m_columns) {
        m_columns = std::move(columns);
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
    if (rows == m_rows)
        return;
    m_next = std::move(rows);
    follow(rowChange(RowPatch::moved(m_rows, m_next), static_cast<int>(m_next.size())));
    m_next.clear();
}

void PlainTableModel::amend(PlainRow row)
{
    require(row.cells.size() == m_columns.size(), "a row has a cell for each column");
    const int at = rowOf(row.id);
    if (at < 0 || m_rows[static_cast<std::size_t>(at)] == row)
        return;
    m_rows[static_cast<std::size_t>(at)] = std::move(row);
    Q_EMIT dataChanged(index(at, 0), index(at, columnCount() - 1));
}

const PlainCell& PlainTableModel::cell(const QModelIndex& index) const
{
    return m_rows[static_cast<std::size_t>(index.row())].cells[static_cast<std::size_t>(index.column())];
}

QString PlainTableModel::copyText(int row) const
{
    QStringList texts;
    for (const auto& cell : m_rows[static_cast<std::size_t>(row)].cells)
        texts << cell.text;
    return texts.join(QLatin1Char{'\t'});
}

std::string_view PlainTableModel::idAt(int row) const
{
    return m_rows[static_cast<std::size_t>(row)].id;
}

int PlainTableModel::rowOf(std::string_view id) const
{
    return RowPatch::placeOf(id, m_rows);
}

int PlainTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PlainTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant PlainTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& shown = cell(index);
    if (role == Qt::DisplayRole)
        return shown.text;
    if (role == Qt::AccessibleTextRole)
        return shown.spoken.isEmpty() ? shown.text : shown.spoken;
    return {};
}

QVariant PlainTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const auto& column = m_columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return column.head;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment{column.align == PlainColumn::Align::right ? Qt::AlignRight : Qt::AlignLeft});
    return {};
}

void PlainTableModel::drop(const RowChange::Range& rows)
{
    RowPatch::drop(rows, m_rows);
}

void PlainTableModel::adopt(const RowChange& change)
{
    m_rows = RowPatch::known(change, m_next);
}

void PlainTableModel::insert(const RowChange::Range& rows)
{
    RowPatch::insert(rows, m_rows, m_next);
}
