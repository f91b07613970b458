#pragma once

#include <utility>
#include <vector>

#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Presentation/Table/RowModel.h"

/// The model of a table of records. Rows keep their identity through every change.
class RecordModel final : public RowModel {
    Q_OBJECT
public:
    using RowModel::RowModel;

    void present(RecordRows rows);

    [[nodiscard]] const RecordRows& shown() const { return m_shown; }
    /// What these columns would show of a row stands in its tool tip: they have no room.
    void tellInToolTips(std::vector<int> columns) { m_told = std::move(columns); }
    /// The cell at this place; an empty one where the row has none.
    [[nodiscard]] const RecordCell& cell(int row, int column) const;

    [[nodiscard]] std::string_view idAt(int row) const override;
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
    [[nodiscard]] QString toolTipOf(int row) const;

    RecordRows m_shown;
    std::vector<int> m_told;
    std::vector<RecordRow> m_next; // the rows of now, while a change is announced
};
