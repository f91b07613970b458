#pragma once

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

class QPainter;

/// A table of plain cells of which one row is chosen. Columns are as wide as what stands in them, and the chosen column
/// takes the rest; where that is not enough, the parts go first, and then what a person wrote is cut.
class PlainTable final : public RowTable {
    Q_OBJECT
public:
    /// `stretched` is the column that takes the rest.
    explicit PlainTable(int stretched, QWidget* parent = nullptr);

    /// Lets rows be moved by drawing them and by Alt+Up and Alt+Down.
    void setMovable(bool isMovable) { m_isMovable = isMovable; }
    /// Presents rows and columns; what was chosen stays chosen while it is there.
    void present(std::vector<PlainColumn> columns, std::vector<PlainRow> rows);
    /// Presents one row anew and leaves the columns as wide as they are.
    void amend(PlainRow row) { m_model->amend(std::move(row)); }
    [[nodiscard]] const PlainTableModel& rows() const { return *m_model; }
    /// The height at which every row is in sight.
    [[nodiscard]] int wholeHeight() const;
    /// The identity of the chosen row; empty when there is none.
    [[nodiscard]] std::string chosenID() const;

Q_SIGNALS:
    void chosen(const QString& id);
    /// A cell that looks like a link was pressed in this row.
    void linkPressed(const QString& id);
    /// What is below the row in the tree is to be hidden or shown.
    void foldWanted(const QString& id, bool folds);
    /// The chosen row is to go so many rows further. Only where rows can be moved.
    void moveWanted(int by);
    /// A row was drawn to the place of another one. Only where rows can be moved.
    void dropWanted(const QString& id, const QString& place);

protected:
    void layOut() override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    explicit PlainTable(PlainTableModel* model, int stretched, QWidget* parent);
    [[nodiscard]] int contentWidth(int column) const;
    int cutWidest(std::vector<int>& widths, int missing) const;

    [[nodiscard]] bool takeTreeKey(const QKeyEvent& key);
    void release(const QModelIndex& index, const QPoint& place);
    void paintGrip(QPainter& painter) const;

    PlainTableModel* m_model;
    int m_stretched;
    bool m_isMovable = false;
    QPoint m_pressed;
    std::string m_drawn; // the row that is being drawn to another place
    int m_dropRow = -1;  // where it would stand
};
