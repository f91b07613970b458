#pragma once

#include <QColor>

#include "LedgerUI/Presentation/Charts/ChartLayout.h"
#include "LedgerUI/Theme/ThemeColor.h"

class QFont;
class QPainter;

/// The colours of a chart: those of income and expense are a choice of the member or the company.
struct ChartColors {
    ThemeColor income;
    ThemeColor expense;
    ColorScheme scheme = ColorScheme::light; // paper is always light

    [[nodiscard]] QColor of(ChartRole role) const;
    [[nodiscard]] QColor of(Token token) const;
};

/// One painter for screen, paper and picture.
namespace ChartPainter {

/// The room of a text in this font.
ChartLayouts::Room room(const QRectF& rect, const QFont& font);

/// Lays a chart out for `rect` in the metrics of `font`.
ChartLayout layout(const ChartData& data, const QRectF& rect, const QFont& font, std::string_view locale);

/// Paints what `layout` arranged, texts in `font`. There is no background.
void paint(QPainter& painter, const ChartLayout& layout, const ChartColors& colors, const QFont& font);

/// Writes a line of text in the middle of `rect`'s height by the painter's own font: a sign from another font, such as
/// "−", does not move it.
void drawText(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text);

/// A small sample of a series, for a legend: a square for bars, a stroke for lines.
void paintSample(QPainter& painter, const QRectF& rect, const ChartSeries& series, const ChartColors& colors);

}
