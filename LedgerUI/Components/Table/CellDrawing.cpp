#include "LedgerUI/Components/Table/CellDrawing.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPolygonF>

#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr double lineWidth = 1.5;
constexpr double dotRadius = 2;
constexpr double mostHeight = 18; // a line that uses the whole of a high row looks wilder than it is

}

void CellDrawing::paintBar(QPainter& painter, const CellBar& bar, const QRect& track)
{
    const auto& theme = Theme::current();
    painter.fillRect(track, theme.color(Token::sunken));
    const auto fraction = std::clamp(bar.fraction, 0.0, 1.0);
    const int length = static_cast<int>(std::lround(fraction * track.width()));
    // What is there at all can be seen.
    const int shown = fraction > 0 ? std::max(1, length) : 0;
    painter.fillRect(QRect{track.left(), track.top(), shown, track.height()}, theme.color(bar.ink));
}

void CellDrawing::paintValues(QPainter& painter, const std::vector<std::int64_t>& values, const QRect& area)
{
    const auto [lowest, highest] = std::ranges::minmax_element(values);
    const auto low = static_cast<double>(*lowest);
    const auto span = static_cast<double>(*highest) - low;
    const auto height = std::min(mostHeight, area.height() - 2 * dotRadius);
    const auto bottom = area.center().y() + height / 2;
    const auto step = (area.width() - 2 * dotRadius) / std::max<double>(1, static_cast<double>(values.size()) - 1);
    QPolygonF points;
    for (std::size_t at = 0; at < values.size(); ++at) {
        const auto part = span > 0 ? (static_cast<double>(values[at]) - low) / span : 0.5;
        points << QPointF{area.left() + dotRadius + static_cast<double>(at) * step, bottom - part * height};
    }
    const auto ink = Theme::current().color(Token::accent);
    painter.setPen(QPen{ink, lineWidth});
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(points.last(), dotRadius, dotRadius);
}
