#include "LedgerUI/Components/Text/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

ElidedLabel::ElidedLabel(TypeStep step, Token tone, Qt::TextElideMode mode, QWidget* parent)
    : TextLabel{step, tone, parent}, m_mode{mode}
{
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("MM…")), TextLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(), shownText(),
                          foregroundRole());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return TextLabel::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (shownText() == text())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), text(), this);
    return true;
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), m_mode, contentsRect().width());
}
