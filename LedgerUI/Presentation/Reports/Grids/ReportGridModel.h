#pragma once

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Table/RowModel.h"

/// A table of a report. Rows keep their identity from one period to the next.
class ReportGridModel final : public RowModel {
    Q_OBJECT
public:
    using RowModel::RowModel;

    void present(ReportGrid grid);

    [[nodiscard]] const ReportGrid& grid() const { return m_grid; }
    [[nodiscard]] const ReportGridRow& row(int row) const { return m_grid.rows[static_cast<std::size_t>(row)]; }
    /// Null for no cell.
    [[nodiscard]] const ReportGridCell* cell(const QModelIndex& index) const;

    [[nodiscard]] std::string_view idAt(int row) const override { return this->row(row).id; }
    [[nodiscard]] int rowOf(std::string_view id) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    void drop(const RowChange::Range& rows) override;
    void adopt(const RowChange& change) override;
    void insert(const RowChange::Range& rows) override;

private:
    [[nodiscard]] QString told(const QModelIndex& index) const;

    ReportGrid m_grid;
    ReportGrid m_next; // while a change is announced
};
