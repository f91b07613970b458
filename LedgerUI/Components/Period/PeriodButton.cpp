#include "LedgerUI/Components/Period/PeriodButton.h"

#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int padding = 10;

}

PeriodButton::PeriodButton(QWidget* parent) : QToolButton{parent}
{
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(Space::control);
}

QSize PeriodButton::sizeHint() const
{
    const int label = QFontMetrics{TypeScale::bold(TypeStep::body)}.horizontalAdvance(text());
    return {padding + Space::icon + Space::step2 + label + Space::step2 + Space::chevron + padding, Space::control};
}

void PeriodButton::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter{this};
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = {};
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const auto color = [&](Token token) { return Theme::current().color(isEnabled() ? token : Token::disabled); };
    const auto ratio = devicePixelRatioF();
    const auto draw = [&](const char* name, int left, int extent) {
        painter.drawPixmap(left, (height() - extent) / 2,
                           Icon::pixmap(QString::fromLatin1(name), color(Token::text2), extent, ratio));
    };
    draw("calendar3", padding, Space::icon);
    draw("chevron-down", width() - padding - Space::chevron, Space::chevron);
    const int left = padding + Space::icon + Space::step2;
    const QRect label{left, 0, width() - left - padding - Space::chevron - Space::step2, height()};
    painter.setFont(TypeScale::bold(TypeStep::body));
    painter.setPen(color(Token::text));
    painter.drawText(label, Qt::AlignVCenter | Qt::AlignLeft, text());
}
