#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Presentation/Table/RowModel.h"

/// A cell that says one thing.
struct PlainCell {
    enum class Look {
        normal,
        quiet, // beside what the row is about
        bold,
        warning,
        chip, // a state, on a ground of its own
        link, // does something when it is pressed
    };

    QString text;
    Look look = Look::normal;
    QString glyph = {};  // before the text
    QString spoken = {}; // where it is more than the text
    int depth = -1;      // in a tree: 0 for the top level; -1 outside of trees
    QString fold = {};   // in a tree: the glyph that says whether what is below is shown
    QString mark = {};   // a glyph at the right end

    bool operator==(const PlainCell&) const = default;
};

/// A row of as many cells as the table has columns.
struct PlainRow {
    std::string id;
    std::vector<PlainCell> cells;

    bool operator==(const PlainRow&) const = default;
};

/// A column of plain cells.
struct PlainColumn {
    enum class Align { left, right };

    QString head;
    Align align = Align::left;
    bool isPart = false; // one of those that go first where the table is narrow

    bool operator==(const PlainColumn&) const = default;
};

/// A table of rows that are made whole by a pure function, such as a list of members. The rows keep their identity from
/// one presentation to the next.
class PlainTableModel final : public RowModel {
    Q_OBJECT
public:
    using RowModel::RowModel;

    void present(std::vector<PlainColumn> columns, std::vector<PlainRow> rows);

    /// Puts a row in the place of the one of the same identity, where there is one; the others are not looked at.
    void amend(PlainRow row);

    [[nodiscard]] const std::vector<PlainColumn>& columns() const { return m_columns; }
    [[nodiscard]] const PlainCell& cell(const QModelIndex& index) const;
    /// The row's cells as tab-separated text.
    [[nodiscard]] QString copyText(int row) const;

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
    std::vector<PlainColumn> m_columns;
    std::vector<PlainRow> m_rows;
    std::vector<PlainRow> m_next; // while a change is announced
};
