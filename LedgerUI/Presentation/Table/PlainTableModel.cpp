#include "LedgerUI/Presentation/Table/PlainTableModel.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Contract.h"

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
    std::unordered_map<std::string_view, int> places;
    for (const auto& row : rows)
        places.emplace(row.id, static_cast<int>(places.size()));
    std::vector<int> moved;
    std::ranges::transform(m_rows, std::back_inserter(moved), [&](const PlainRow& row) {
        const auto found = places.find(row.id);
        return found == places.end() ? -1 : found->second;
    });
    const auto change = rowChange(std::move(moved), static_cast<int>(rows.size()));
    m_next = std::move(rows);
    follow(change);
    m_next.clear();
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
    const auto found = std::ranges::find(m_rows, id, &PlainRow::id);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
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
    m_rows.erase(m_rows.begin() + rows.first, m_rows.begin() + rows.last + 1);
}

void PlainTableModel::adopt(const RowChange& change)
{
    m_rows.clear();
    int row = 0;
    for (const auto& fresh : change.fresh) { // they follow one by one
        m_rows.insert(m_rows.end(), m_next.begin() + row, m_next.begin() + fresh.first);
        row = fresh.last + 1;
    }
    m_rows.insert(m_rows.end(), m_next.begin() + row, m_next.end());
}

void PlainTableModel::insert(const RowChange::Range& rows)
{
    m_rows.insert(m_rows.begin() + rows.first, m_next.begin() + rows.first, m_next.begin() + rows.last + 1);
}
