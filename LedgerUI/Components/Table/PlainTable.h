#pragma once

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// A table of plain cells of which one row is chosen. Columns are as wide as what stands in them, and the chosen column
/// takes the rest; where that is not enough, the parts go first, and then what a person wrote is cut.
class PlainTable final : public RowTable {
    Q_OBJECT
public:
    /// `stretched` is the column that takes the rest.
    explicit PlainTable(int stretched, QWidget* parent = nullptr);

    /// Presents rows and columns; what was chosen stays chosen while it is there.
    void present(std::vector<PlainColumn> columns, std::vector<PlainRow> rows);
    [[nodiscard]] const PlainTableModel& rows() const { return *m_model; }
    /// The height at which every row is in sight.
    [[nodiscard]] int wholeHeight() const;
    /// The identity of the chosen row; empty when there is none.
    [[nodiscard]] std::string chosenID() const;

Q_SIGNALS:
    void chosen(const QString& id);
    /// A cell that looks like a link was pressed in this row.
    void linkPressed(const QString& id);

protected:
    void layOut() override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    explicit PlainTable(PlainTableModel* model, int stretched, QWidget* parent);
    [[nodiscard]] int contentWidth(int column) const;

    PlainTableModel* m_model;
    int m_stretched;
};
