#include "LedgerUI/Components/Period/PeriodGridView.h"

#include <algorithm>
#include <utility>

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int gridWidth = 264;
constexpr int gridHeight = 172;
constexpr int gap = 2;

QColor color(Token token)
{
    return Theme::current().color(token);
}

}

PeriodGridView::PeriodGridView(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("periodGrid"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    offerPeriodGridToReaders();
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void PeriodGridView::present(PeriodGrid grid, const std::optional<Period>& chosen, std::chrono::year_month_day current)
{
    m_grid = std::move(grid);
    m_chosen = chosen;
    m_hovered = -1;
    const auto& cells = m_grid.cells;
    const auto held = std::ranges::find_if(cells, [&](const PeriodCell& cell) {
        return cell.period.firstDay() <= current && current <= cell.period.lastDay();
    });
    int at = held == cells.end() ? 0 : static_cast<int>(held - cells.begin());
    while (at > 0 && !cells[static_cast<std::size_t>(at)].isOffered)
        --at;
    setCurrent(at);
    updateGeometry();
}

QSize PeriodGridView::sizeHint() const
{
    return {gridWidth, gridHeight};
}

int PeriodGridView::headHeight() const
{
    return !m_grid.heads.empty() ? 20 : 0;
}

QRect PeriodGridView::cellRect(int at) const
{
    const int columns = m_grid.columns;
    const int rows = (static_cast<int>(m_grid.cells.size()) + columns - 1) / columns;
    const int row = at / columns;
    const int column = at % columns;
    const int top = headHeight();
    const int left = column * width() / columns;
    const int right = (column + 1) * width() / columns;
    const int room = height() - top;
    const int upper = top + row * room / rows;
    const int lower = top + (row + 1) * room / rows;
    return QRect{left, upper, right - left, lower - upper}.adjusted(gap / 2, gap / 2, -gap / 2, -gap / 2);
}

int PeriodGridView::cellAt(QPoint point) const
{
    for (int at = 0; at < static_cast<int>(m_grid.cells.size()); ++at) {
        if (cellRect(at).contains(point))
            return at;
    }
    return -1;
}

void PeriodGridView::paintEvent(QPaintEvent* /*event*/)
{
    if (m_grid.cells.empty())
        return;
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(TypeScale::font(TypeStep::micro));
    painter.setPen(color(Token::text2));
    const int columns = m_grid.columns;
    for (int column = 0; column < static_cast<int>(m_grid.heads.size()); ++column) {
        const QRect head{column * width() / columns, 0, width() / columns, headHeight()};
        painter.drawText(head, Qt::AlignCenter, m_grid.heads[static_cast<std::size_t>(column)]);
    }
    for (int at = 0; at < static_cast<int>(m_grid.cells.size()); ++at)
        paintCell(painter, at);
}

void PeriodGridView::paintCell(QPainter& painter, int at) const
{
    const auto& cell = m_grid.cells[static_cast<std::size_t>(at)];
    const auto rect = cellRect(at);
    const bool isChosen = m_chosen && *m_chosen == cell.period;
    painter.setPen(Qt::NoPen);
    if (isChosen || (at == m_hovered && cell.isOffered)) {
        painter.setBrush(color(isChosen ? Token::accent : Token::accentSoft2));
        painter.drawRoundedRect(rect, Space::radiusSmall, Space::radiusSmall);
    }
    if (at == m_current && hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen{color(isChosen ? Token::onAccent : Token::focus), 2});
        const qreal inset = isChosen ? 3 : 1;
        painter.drawRoundedRect(QRectF{rect}.adjusted(inset, inset, -inset, -inset), Space::radiusSmall,
                                Space::radiusSmall);
    }
    auto ink = !cell.isOffered ? Token::disabled : cell.isMuted ? Token::text3 : Token::text;
    auto quiet = cell.isOffered ? Token::text2 : Token::disabled;
    if (isChosen)
        ink = quiet = Token::onAccent;
    else if (cell.isToday)
        ink = Token::accent;
    const bool isBold = isChosen || cell.isToday;
    const auto body = isBold ? TypeScale::bold(TypeStep::body) : TypeScale::font(TypeStep::body);
    const auto micro = TypeScale::font(TypeStep::micro);
    painter.setPen(color(ink));
    painter.setFont(body);
    if (m_grid.columns == 1) {
        const auto row = rect.adjusted(Space::step2, 0, -Space::step2, 0);
        painter.drawText(row, Qt::AlignVCenter | Qt::AlignLeft, cell.label);
        painter.setFont(micro);
        painter.setPen(color(quiet));
        painter.drawText(row, Qt::AlignVCenter | Qt::AlignRight, cell.count);
        return;
    }
    const int upper = QFontMetrics{body}.height();
    const int lower = cell.count.isEmpty() ? 0 : QFontMetrics{micro}.height() - 2;
    const int top = rect.top() + (rect.height() - upper - lower) / 2;
    painter.drawText(QRect{rect.left(), top, rect.width(), upper}, Qt::AlignCenter, cell.label);
    painter.setFont(micro);
    painter.setPen(color(quiet));
    painter.drawText(QRect{rect.left(), top + upper - 1, rect.width(), lower}, Qt::AlignCenter, cell.count);
}

void PeriodGridView::keyPressEvent(QKeyEvent* event)
{
    if (m_grid.cells.empty() || event->modifiers().testFlag(Qt::AltModifier)) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy(-1);
        break;
    case Qt::Key_Right:
        moveBy(1);
        break;
    case Qt::Key_Up:
        moveBy(-m_grid.columns);
        break;
    case Qt::Key_Down:
        moveBy(m_grid.columns);
        break;
    case Qt::Key_PageUp:
        Q_EMIT pageWanted(-1);
        break;
    case Qt::Key_PageDown:
        Q_EMIT pageWanted(1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choose(m_current);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PeriodGridView::moveBy(int cells)
{
    const int next = m_current + cells;
    if (next < 0)
        Q_EMIT pageWanted(-1);
    else if (next >= static_cast<int>(m_grid.cells.size()))
        Q_EMIT pageWanted(1);
    else if (m_grid.cells[static_cast<std::size_t>(next)].isOffered)
        setCurrent(next);
}

void PeriodGridView::setCurrent(int at)
{
    m_current = at;
    setAccessibleName(m_grid.title);
    QAccessibleEvent event{this, QAccessible::Focus};
    event.setChild(at);
    QAccessible::updateAccessibility(&event);
    update();
}

void PeriodGridView::choose(int at)
{
    if (at >= 0 && m_grid.cells[static_cast<std::size_t>(at)].isOffered)
        Q_EMIT periodChosen(Period{m_grid.cells[static_cast<std::size_t>(at)].period});
}

void PeriodGridView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        choose(cellAt(event->position().toPoint()));
}

void PeriodGridView::mouseMoveEvent(QMouseEvent* event)
{
    m_hovered = cellAt(event->position().toPoint());
    update();
}

void PeriodGridView::leaveEvent(QEvent* event)
{
    m_hovered = -1;
    update();
    QWidget::leaveEvent(event);
}

void PeriodGridView::focusInEvent(QFocusEvent* event)
{
    update();
    QWidget::focusInEvent(event);
}

void PeriodGridView::focusOutEvent(QFocusEvent* event)
{
    update();
    QWidget::focusOutEvent(event);
}
