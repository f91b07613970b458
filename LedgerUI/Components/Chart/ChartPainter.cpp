#include "LedgerUI/Components/Chart/ChartPainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

namespace {

constexpr double lineWidth = 2;
constexpr double dotRadius = 3.5;

Token tokenOf(ChartRole role)
{
    switch (role) {
    case ChartRole::income:
    case ChartRole::expense:
    case ChartRole::net:
        return Token::text;
    case ChartRole::category1:
        return Token::chart1;
    case ChartRole::category2:
        return Token::chart2;
    case ChartRole::category3:
        return Token::chart3;
    case ChartRole::category4:
        return Token::chart4;
    case ChartRole::category5:
        return Token::chart5;
    case ChartRole::category6:
        return Token::chart6;
    case ChartRole::other:
        return Token::chartOther;
    }
    return Token::chartOther;
}

void paintGrid(QPainter& painter, const ChartLayout& layout, const ChartColors& colors)
{
    for (const auto& tick : layout.ticks) {
        painter.setPen(QPen{colors.of(tick.isZero ? Token::control : Token::hairline), 1});
        painter.drawLine(QPointF{layout.plot.left(), tick.y}, QPointF{layout.plot.right(), tick.y});
    }
}

void paintTexts(QPainter& painter, const ChartLayout& layout, const ChartColors& colors, const QFont& font)
{
    painter.setFont(font);
    painter.setPen(colors.of(Token::text2));
    for (const auto& tick : layout.ticks)
        ChartPainter::drawText(painter, tick.label, Qt::AlignRight, tick.text);
    for (const auto& label : layout.labels) {
        auto shown = font;
        shown.setBold(label.isChosen);
        painter.setFont(shown);
        painter.setPen(colors.of(label.isChosen ? Token::text : Token::text2));
        ChartPainter::drawText(painter, label.rect, Qt::AlignHCenter, label.text);
    }
}

/// A line with a hollow dot at each value, so that it can be told from others without its colour.
void paintLine(QPainter& painter, const ChartLayout::Line& line, const ChartColors& colors)
{
    painter.setPen(QPen{colors.of(line.role), lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(line.points);
    const bool areApart = line.points.size() < 2 || line.points.at(1).x() - line.points.at(0).x() > 4 * dotRadius;
    if (!areApart)
        return;
    painter.setBrush(colors.of(Token::surface));
    for (const auto& point : line.points)
        painter.drawEllipse(point, dotRadius, dotRadius);
}

}

QColor ChartColors::of(ChartRole role) const
{
    if (role == ChartRole::income)
        return QColor::fromRgb(income.in(scheme));
    if (role == ChartRole::expense)
        return QColor::fromRgb(expense.in(scheme));
    return of(tokenOf(role));
}

QColor ChartColors::of(Token token) const
{
    return QColor::fromRgb(ThemeColor{token}.in(scheme));
}

ChartLayouts::Room ChartPainter::room(const QRectF& rect, const QFont& font)
{
    const QFontMetricsF metrics{font};
    return {.rect = rect, .lineHeight = metrics.height(), .widthOf = [metrics](const QString& text) {
                return metrics.horizontalAdvance(text);
            }};
}

ChartLayout ChartPainter::layout(const ChartData& data, const QRectF& rect, const QFont& font, std::string_view locale)
{
    auto bold = font;
    bold.setBold(true); // the chosen label is bold: room is kept as if each were
    return ChartLayouts::layout(data, room(rect, bold), locale);
}

void ChartPainter::paint(QPainter& painter, const ChartLayout& layout, const ChartColors& colors, const QFont& font)
{
    painter.save();
    if (layout.band)
        painter.fillRect(*layout.band, colors.of(Token::accentSoft2));
    paintGrid(painter, layout, colors);
    for (const auto& bar : layout.bars)
        painter.fillRect(bar.rect, colors.of(bar.role));
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& line : layout.lines)
        paintLine(painter, line, colors);
    paintTexts(painter, layout, colors, font);
    painter.restore();
}

void ChartPainter::drawText(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text)
{
    const QFontMetricsF metrics{painter.font()};
    const auto spare = rect.width() - metrics.horizontalAdvance(text);
    const auto left = alignment.testFlag(Qt::AlignRight)     ? rect.left() + spare
                      : alignment.testFlag(Qt::AlignHCenter) ? rect.left() + spare / 2
                                                             : rect.left();
    painter.drawText(QPointF{left, rect.center().y() + (metrics.ascent() - metrics.descent()) / 2}, text);
}

void ChartPainter::paintSample(QPainter& painter, const QRectF& rect, const ChartSeries& series,
                               const ChartColors& colors)
{
    const auto side = rect.height() * 0.6;
    if (series.mark == ChartMark::bar) {
        painter.fillRect(QRectF{rect.left(), rect.center().y() - side / 2, side, side}, colors.of(series.role));
        return;
    }
    painter.setPen(QPen{colors.of(series.role), lineWidth});
    painter.drawLine(QPointF{rect.left(), rect.center().y()}, QPointF{rect.right(), rect.center().y()});
}
