#include "LedgerUI/Components/Dialogs/Popover.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int gap = 5; // between the anchor and the panel

bool isReturn(const QEvent* event)
{
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}

Popover::Popover(QWidget* anchor, Edge edge) : QFrame{anchor->window()}, m_anchor{anchor}, m_edge{edge}
{
    setProperty("popover", true);
    setAutoFillBackground(true);
    hide();
    // The anchor may go before its window does.
    connect(anchor, &QObject::destroyed, this, &QObject::deleteLater);
}

void Popover::open(QWidget* first)
{
    if (m_anchor && parentWidget() != m_anchor->window())
        setParent(m_anchor->window());
    if (!isVisible())
        m_opener = QApplication::focusWidget();
    if (m_edge == Edge::over && m_anchor)
        setFixedWidth(m_anchor->width());
    adjustSize();
    place();
    show();
    raise();
    qApp->installEventFilter(this);
    first->setFocus(Qt::PopupFocusReason);
}

bool Popover::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && isReturn(event)) {
        // While the panel is open, the keys that confirm the form below belong to what is chosen here.
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && (widget == this || isAncestorOf(widget))) {
            event->accept();
            return true;
        }
    } else if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        // Menus and calendars that the panel opens are windows of their own.
        const bool isInside = widget && (widget == this || isAncestorOf(widget) || widget->window() != window());
        const bool isAnchor = widget && m_anchor && (widget == m_anchor || m_anchor->isAncestorOf(widget));
        if (widget && !isInside && !isAnchor)
            hide();
    } else if (event->type() == QEvent::Resize && watched == parentWidget()) {
        hide();
    }
    return QFrame::eventFilter(watched, event);
}

void Popover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || (isReturn(event) && event->modifiers().testFlag(Qt::ControlModifier)))
        hide();
    else if (!isReturn(event)) // a dialog would press its default button
        QFrame::keyPressEvent(event);
}

void Popover::hideEvent(QHideEvent* event)
{
    qApp->removeEventFilter(this);
    const auto* focus = QApplication::focusWidget();
    const bool heldFocus = !focus || focus == this || isAncestorOf(focus);
    if (auto* next = heldFocus ? focusAfterwards() : nullptr; next && next->isVisible())
        next->setFocus(Qt::PopupFocusReason);
    QFrame::hideEvent(event);
}

QWidget* Popover::focusAfterwards() const
{
    return m_anchor && m_anchor->focusPolicy() != Qt::NoFocus ? m_anchor : m_opener;
}

void Popover::place()
{
    const auto* frame = parentWidget();
    if (!m_anchor || !frame)
        return;
    const auto anchor = m_anchor->mapTo(frame, QPoint{0, 0});
    // The edges that are nearer to the middle of the window stay in line with the anchor.
    const bool isAtRight = anchor.x() + m_anchor->width() / 2 > frame->width() / 2;
    const int wanted = isAtRight ? anchor.x() + m_anchor->width() - width() : anchor.x();
    const int left = std::clamp(wanted, Space::step2, std::max(Space::step2, frame->width() - width() - Space::step2));
    const int above = anchor.y() - height() - gap;
    const int below = anchor.y() + m_anchor->height() + gap;
    const int beside = m_edge == Edge::above && above > 0 ? above : below;
    const int wantedTop = m_edge == Edge::over ? anchor.y() : beside;
    const int top =
        std::clamp(wantedTop, Space::step2, std::max(Space::step2, frame->height() - height() - Space::step2));
    move(left, top);
}
