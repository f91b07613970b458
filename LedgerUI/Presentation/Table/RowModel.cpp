#include "LedgerUI/Presentation/Table/RowModel.h"

#include <ranges>

Qt::ItemFlags RowModel::flags(const QModelIndex& index) const
{
    return index.isValid() && isHeadAt(index.row()) ? Qt::ItemNeverHasChildren : QAbstractTableModel::flags(index);
}

void RowModel::follow(const RowChange& change)
{
    Q_EMIT aboutToChange();
    switch (change.kind) {
    case RowChange::Kind::patch:
        patch(change);
        break;
    case RowChange::Kind::reorder:
        reorder(change);
        break;
    case RowChange::Kind::replacement:
        beginResetModel();
        adopt(change);
        endResetModel();
        break;
    }
    if (change.kind != RowChange::Kind::replacement && rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT changed(change);
}

void RowModel::patch(const RowChange& change)
{
    for (const auto& rows : std::views::reverse(change.gone)) {
        beginRemoveRows({}, rows.first, rows.last);
        drop(rows);
        endRemoveRows();
    }
    adopt(change);
    for (const auto& rows : change.fresh) {
        beginInsertRows({}, rows.first, rows.last);
        insert(rows);
        endInsertRows();
    }
}

void RowModel::reorder(const RowChange& change)
{
    Q_EMIT layoutAboutToBeChanged();
    const auto before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const auto& each : before)
        after.append(index(change.moved[static_cast<std::size_t>(each.row())], each.column()));
    adopt(change);
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}
