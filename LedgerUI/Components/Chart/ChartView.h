#pragma once

#include <optional>

#include <QWidget>

#include "LedgerUI/Components/Chart/ChartPainter.h"

/// A chart with its legend above it, on as many lines as its width takes, the first of them beside its heading. Left,
/// Right, Home and End move to a slot, as the pointer does; the legend then shows that slot's figures, and readers hear
/// them, also when other figures come to stand there. A click or Return chooses it; its figures can be asked for by
/// menu and copied.
class ChartView final : public QWidget {
    Q_OBJECT
public:
    explicit ChartView(QWidget* parent = nullptr);

    void present(ChartData data, ChartColors colors);
    /// What somebody else shows at the top left takes this much.
    void setHeading(QSizeF size);

    [[nodiscard]] const ChartData& data() const { return m_data; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void slotChosen(std::size_t slot);
    /// A menu for the figures of this slot is wanted at this place of the screen.
    void menuWanted(std::size_t slot, QPoint place);
    void copyWanted(std::size_t slot);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void arrange();
    void followCurrent(const std::vector<ChartSlot>& places);
    void moveTo(std::size_t slot);
    void enter();
    void tellCurrent();
    void paintLegend(class QPainter& painter) const;
    [[nodiscard]] ChartLayouts::Room legendRoom() const;
    [[nodiscard]] std::optional<std::size_t> shownSlot() const;
    [[nodiscard]] QPointF middleOf(std::size_t slot) const;

    ChartData m_data;
    ChartColors m_colors{.income = Token::ok, .expense = Token::danger};
    ChartLayout m_layout;
    QSizeF m_heading{0, 0};
    std::optional<std::size_t> m_pointed; // under the pointer
    std::optional<std::size_t> m_current; // where the keys are
};
