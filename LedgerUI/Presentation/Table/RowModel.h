#pragma once

#include <string_view>

#include <QAbstractTableModel>

#include "LedgerUI/Presentation/Table/RowChange.h"

/// A flat table whose rows have identities, so that selection, current row and scroll can follow them through every
/// change. A model of one kind of rows says how they are taken out and put in; what views are told of it is done here.
class RowModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// What the row stands for.
    [[nodiscard]] virtual std::string_view idAt(int row) const = 0;
    /// The row of this identity, or -1.
    [[nodiscard]] virtual int rowOf(std::string_view id) const = 0;
    /// Whether the row is the head of those below it: read, but never chosen.
    [[nodiscard]] virtual bool isHeadAt(int /*row*/) const { return false; }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void aboutToChange();
    void changed(const RowChange& change);

protected:
    /// Makes the change and announces it: a patch row by row, a new order as a layout, the rest as a reset.
    void follow(const RowChange& change);

    /// Takes these rows of before out.
    virtual void drop(const RowChange::Range& rows) = 0;
    /// From here on the rows are those of now without the fresh ones.
    virtual void adopt(const RowChange& change) = 0;
    /// Puts these rows of now in.
    virtual void insert(const RowChange::Range& rows) = 0;

private:
    void patch(const RowChange& change);
    void reorder(const RowChange& change);
};
