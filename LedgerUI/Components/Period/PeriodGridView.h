#pragma once

#include <optional>

#include <QWidget>

#include "LedgerUI/Presentation/Period/PeriodGrid.h"

/// A grid of periods with the number of entries in each. Arrow keys move, Return or a click chooses, Page Up and Page
/// Down and the edges turn the page.
class PeriodGridView final : public QWidget {
    Q_OBJECT
public:
    explicit PeriodGridView(QWidget* parent = nullptr);

    /// Shows the page; `chosen` is filled, and the cell of `current` takes the keys.
    void present(PeriodGrid grid, const std::optional<Period>& chosen, std::chrono::year_month_day current);

    [[nodiscard]] QSize sizeHint() const override;

    // What readers are told of.
    [[nodiscard]] int cellCount() const { return static_cast<int>(m_grid.cells.size()); }
    [[nodiscard]] const PeriodCell& cell(int at) const { return m_grid.cells[static_cast<std::size_t>(at)]; }
    [[nodiscard]] QRect cellRect(int at) const;
    /// The cell at this place, or -1.
    [[nodiscard]] int cellAt(QPoint point) const;
    [[nodiscard]] int currentCell() const { return m_current; }
    [[nodiscard]] bool isChosen(int at) const { return m_chosen && *m_chosen == cell(at).period; }

Q_SIGNALS:
    void periodChosen(const Period& period);
    /// The keys left the page for the one before (-1) or after (1), towards this day.
    void pageWanted(int by);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int headHeight() const;
    void paintCell(class QPainter& painter, int at) const;
    void moveBy(int cells);
    void setCurrent(int at);
    void choose(int at);

    PeriodGrid m_grid; // without cells until a page is shown
    std::optional<Period> m_chosen;
    int m_current = 0;
    int m_hovered = -1;
};

/// Has readers see every grid of periods as a list with an item for each cell. Once is enough.
void offerPeriodGridToReaders();
