#include "LedgerUI/Components/Buttons/RowButton.h"

#include <QPainter>

#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

RowButton::RowButton(QWidget* parent) : QAbstractButton{parent}
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // what can be elided gives way
    setCursor(Qt::PointingHandCursor);
}

void RowButton::paintEvent(QPaintEvent* /*event*/)
{
    const auto& theme = Theme::current();
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse() && isEnabled() && !isChecked()) { // what is chosen lies on a ground of its own
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.color(Token::accentSoft2));
        painter.drawRoundedRect(QRectF{rect()}, Space::radiusSmall, Space::radiusSmall);
    }
    if (hasFocus()) {
        painter.setPen({theme.color(Token::focus), 2.0});
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF{rect()}.adjusted(1, 1, -1, -1), Space::radiusSmall, Space::radiusSmall);
    }
}

void RowButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void RowButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}
