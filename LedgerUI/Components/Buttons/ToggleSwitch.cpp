#include "LedgerUI/Components/Buttons/ToggleSwitch.h"

#include <algorithm>

#include <QPainter>

#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int trackWidth = 32;
constexpr int trackHeight = 18;
constexpr int knobExtent = 12;
constexpr int ringWidth = 2;
constexpr int ringRoom = 3;

}

ToggleSwitch::ToggleSwitch(QWidget* parent) : QCheckBox{parent}
{
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
    connect(this, &QAbstractButton::toggled, this, [this](bool isOn) { setText(isOn ? m_on : m_off); });
}

void ToggleSwitch::setWords(const QString& on, const QString& off)
{
    m_on = on;
    m_off = off;
    setText(isChecked() ? on : off);
    updateGeometry();
}

QSize ToggleSwitch::sizeHint() const
{
    const auto on = fontMetrics().size(Qt::TextSingleLine, m_on);
    const auto text = on.expandedTo(fontMetrics().size(Qt::TextSingleLine, m_off));
    return {trackWidth + 2 * ringRoom + Space::step2 + text.width() + 2,
            std::max(trackHeight + 2 * ringRoom, text.height())};
}

void ToggleSwitch::paintEvent(QPaintEvent* /*event*/)
{
    const auto color = [](Token token) { return Theme::current().color(token); };
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track{ringRoom, (height() - trackHeight) / 2.0, trackWidth, trackHeight};
    const auto ground = !isEnabled() ? Token::divider : isChecked() ? Token::accent : Token::control;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(ground));
    painter.drawRoundedRect(track, trackHeight / 2.0, trackHeight / 2.0);
    const double inset = (trackHeight - knobExtent) / 2.0;
    const double left = isChecked() ? track.right() - inset - knobExtent : track.left() + inset;
    painter.setBrush(color(isChecked() ? Token::onAccent : Token::surface));
    painter.drawEllipse(QRectF{left, track.top() + inset, knobExtent, knobExtent});
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen{color(Token::focus), ringWidth});
        painter.drawRoundedRect(track.adjusted(-2, -2, 2, 2), trackHeight / 2.0 + 2, trackHeight / 2.0 + 2);
    }
    painter.setPen(color(isEnabled() ? Token::text : Token::disabled));
    const QRect words{trackWidth + 2 * ringRoom + Space::step2, 0, width(), height()};
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft, text());
}

bool ToggleSwitch::hitButton(const QPoint& place) const
{
    return rect().contains(place);
}
