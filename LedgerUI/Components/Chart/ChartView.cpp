#include "LedgerUI/Components/Chart/ChartView.h"

#include <algorithm>
#include <utility>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Charts/ChartLegend.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr QSize preferred{480, 220};
constexpr QSize least{240, 120};
constexpr int ringWidth = 2;

}

ChartView::ChartView(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("chart"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    speakAsGroup(*this);
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void ChartView::present(ChartData data, ChartColors colors)
{
    followCurrent(data.places);
    m_data = std::move(data);
    m_colors = colors;
    m_pointed.reset();
    arrange();
    if (hasFocus())
        enter();
    tellCurrent();
}

void ChartView::setHeading(QSizeF size)
{
    if (std::exchange(m_heading, size) != size)
        arrange();
}

/// The keys stay on the month that they were on, wherever it stands now; where it is gone, at their place.
void ChartView::followCurrent(const std::vector<ChartSlot>& places)
{
    if (!m_current)
        return;
    const auto found = std::ranges::find(places, m_data.places[*m_current].name, &ChartSlot::name);
    if (found != places.end())
        m_current = static_cast<std::size_t>(found - places.begin());
    else if (*m_current >= places.size())
        m_current.reset();
}

QSize ChartView::sizeHint() const
{
    return preferred;
}

QSize ChartView::minimumSizeHint() const
{
    return least;
}

ChartLayouts::Room ChartView::legendRoom() const
{
    return ChartPainter::room(rect().adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth),
                              TypeScale::font(TypeStep::small));
}

void ChartView::arrange()
{
    auto room = legendRoom().rect;
    room.setTop(ChartLegends::height(m_data, legendRoom(), InterfaceLanguage::tag(), m_heading) + Space::step2);
    m_layout = ChartPainter::layout(m_data, room, TypeScale::font(TypeStep::micro), InterfaceLanguage::tag());
    update();
}

std::optional<std::size_t> ChartView::shownSlot() const
{
    if (m_pointed)
        return m_pointed;
    return hasFocus() ? m_current : std::nullopt;
}

void ChartView::paintLegend(QPainter& painter) const
{
    painter.setFont(TypeScale::font(TypeStep::small));
    const auto slot = shownSlot();
    for (const auto& part : ChartLegends::parts(m_data, legendRoom(), slot, InterfaceLanguage::tag(), m_heading)) {
        if (part.series)
            ChartPainter::paintSample(painter, part.sample, m_data.series[*part.series], m_colors);
        painter.setPen(m_colors.of(slot ? Token::text : Token::text2));
        ChartPainter::drawText(painter, part.rect, Qt::AlignLeft, part.text);
    }
}

void ChartView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    m_colors.scheme = Theme::current().scheme();
    paintLegend(painter);
    ChartPainter::paint(painter, m_layout, m_colors, TypeScale::font(TypeStep::micro));
    if (!hasFocus() || m_data.places.empty())
        return;
    const auto slotWidth = m_layout.plot.width() / static_cast<double>(m_data.places.size());
    const auto ring = m_current ? QRectF{m_layout.plot.left() + static_cast<double>(*m_current) * slotWidth,
                                         m_layout.plot.top(), slotWidth, m_layout.plot.height()}
                                : m_layout.plot;
    painter.setPen(QPen{m_colors.of(Token::focus), ringWidth});
    painter.drawRect(ring);
}

void ChartView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void ChartView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LanguageChange)
        arrange();
    QWidget::changeEvent(event);
}

/// The pointer may rest on another one.
void ChartView::moveTo(std::size_t slot)
{
    m_current = slot;
    m_pointed.reset();
    tellCurrent();
    update();
}

void ChartView::enter()
{
    if (!m_current && !m_data.places.empty())
        moveTo(m_data.chosen.value_or(m_data.places.size() - 1));
}

void ChartView::tellCurrent()
{
    const auto said = m_current ? ChartLayouts::reading(m_data, *m_current, InterfaceLanguage::tag()) : QString{};
    if (said == accessibleDescription())
        return;
    setAccessibleDescription(said);
    QAccessibleEvent changed{this, QAccessible::DescriptionChanged};
    QAccessible::updateAccessibility(&changed);
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    const auto count = m_data.places.size();
    if (count == 0)
        return QWidget::keyPressEvent(event);
    const auto current = m_current.value_or(m_data.chosen.value_or(count - 1));
    if (event->matches(QKeySequence::Copy)) {
        Q_EMIT copyWanted(current);
        return;
    }
    if (KeyBindings::keys(Command::contextMenu).contains(QKeySequence{event->keyCombination()})) {
        Q_EMIT menuWanted(current, mapToGlobal(middleOf(current).toPoint()));
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(current == 0 ? 0 : current - 1);
    case Qt::Key_Right:
        return moveTo(std::min(current + 1, count - 1));
    case Qt::Key_Home:
        return moveTo(0);
    case Qt::Key_End:
        return moveTo(count - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT slotChosen(current);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    const auto pointed = ChartLayouts::slotAt(m_layout, m_data, event->position().x());
    if (std::exchange(m_pointed, pointed) != pointed)
        update();
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    const auto slot = ChartLayouts::slotAt(m_layout, m_data, event->position().x());
    if (event->button() != Qt::LeftButton || !slot)
        return QWidget::mousePressEvent(event);
    moveTo(*slot);
    Q_EMIT slotChosen(*slot);
}

void ChartView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isPointed = event->reason() == QContextMenuEvent::Mouse;
    const auto slot = isPointed ? ChartLayouts::slotAt(m_layout, m_data, event->pos().x()) : m_current;
    if (slot)
        Q_EMIT menuWanted(*slot, isPointed ? event->globalPos() : mapToGlobal(middleOf(*slot).toPoint()));
}

QPointF ChartView::middleOf(std::size_t slot) const
{
    const auto slotWidth = m_layout.plot.width() / static_cast<double>(m_data.places.size());
    return {m_layout.plot.left() + (static_cast<double>(slot) + 0.5) * slotWidth, m_layout.plot.center().y()};
}

void ChartView::leaveEvent(QEvent* event)
{
    m_pointed.reset();
    update();
    QWidget::leaveEvent(event);
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    enter();
    QWidget::focusInEvent(event);
    update();
}

void ChartView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}
