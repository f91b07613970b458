#include "LedgerUI/Components/Chart/SparklineView.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int sparklineHeight = 40;
constexpr double stroke = 1.5;
constexpr double dot = 2.5;

}

SparklineView::SparklineView(QWidget* parent) : QWidget{parent}
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void SparklineView::present(std::vector<std::int64_t> values, const QString& spoken)
{
    m_values = std::move(values);
    setAccessibleName(spoken);
    setToolTip(spoken);
    update();
}

QSize SparklineView::sizeHint() const
{
    return {0, sparklineHeight};
}

void SparklineView::paintEvent(QPaintEvent* /*event*/)
{
    const auto points = sparklinePoints(m_values, QRectF{rect()}.adjusted(dot, dot + 1, -dot - 1, -dot - 1));
    if (points.empty())
        return;
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const auto ink = Theme::current().color(Token::accent);
    QPainterPath line{points.front()};
    for (const auto& point : points)
        line.lineTo(point);
    painter.setPen(QPen{ink, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.drawPath(line);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(points.back(), dot, dot);
}

std::vector<QPointF> sparklinePoints(const std::vector<std::int64_t>& values, const QRectF& rect)
{
    if (values.empty())
        return {};
    const auto [least, most] = std::ranges::minmax(values);
    const auto range = static_cast<double>(most) - static_cast<double>(least);
    const auto steps = static_cast<double>(std::max<std::size_t>(values.size() - 1, 1));
    std::vector<QPointF> points;
    for (std::size_t at = 0; at < values.size(); ++at) {
        const auto share = range > 0 ? (static_cast<double>(values[at]) - static_cast<double>(least)) / range : 0.5;
        points.emplace_back(rect.left() + rect.width() * static_cast<double>(at) / steps,
                            rect.bottom() - rect.height() * share);
    }
    return points;
}
