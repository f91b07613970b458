#include "LedgerUI/Presentation/Company/GrantMatrixModel.h"

#include <algorithm>

void GrantMatrixModel::present(std::vector<QString> heads, std::vector<GrantRow> rows)
{
    const bool isSameShape = heads.size() == m_heads.size() &&
                             std::ranges::equal(rows, m_rows, {}, &GrantRow::accountID, &GrantRow::accountID);
    if (!isSameShape) {
        beginResetModel();
        m_heads = std::move(heads);
        m_rows = std::move(rows);
        endResetModel();
        return;
    }
    if (heads != m_heads) {
        m_heads = std::move(heads);
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
    if (rows == m_rows)
        return;
    m_rows = std::move(rows);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

const GrantCell& GrantMatrixModel::cell(const QModelIndex& index) const
{
    return m_rows[static_cast<std::size_t>(index.row())].cells[static_cast<std::size_t>(index.column())];
}

int GrantMatrixModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int GrantMatrixModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_heads.size());
}

QVariant GrantMatrixModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::AccessibleTextRole || role == Qt::ToolTipRole)
        return cell(index).spoken;
    if (role == Qt::CheckStateRole)
        return cell(index).isGranted ? Qt::Checked : Qt::Unchecked;
    return {};
}

QVariant GrantMatrixModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isAccount = orientation == Qt::Vertical;
    if (section < 0 || section >= (isAccount ? rowCount() : columnCount()))
        return {};
    const auto at = static_cast<std::size_t>(section);
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return isAccount ? m_rows[at].account : m_heads[at];
    return {};
}
