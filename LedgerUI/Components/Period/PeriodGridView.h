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
    [[nodiscard]] QRect cellRect(int at) const;
    [[nodiscard]] int cellAt(QPoint point) const;
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
