#include "LedgerUI/Presentation/Print/PrintChart.h"

#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Charts/ChartLegend.h"

namespace {

constexpr double unitsPerPixel = printUnitsPerInch / 96.0;
constexpr double height = 190;     // pixels of a screen, as everything below
constexpr double besideLegend = 3; // above and below it
constexpr double capitals = 0.72;  // the height of a capital letter, of its font's size
constexpr PrintFont titleFont{.size = 105, .isBold = true};
constexpr PrintFont labelFont{.size = 75, .isBold = false};

/// Takes the words of a chart to the page and leaves its marks in the drawing.
class ChartOnPaper {
public:
    ChartOnPaper(const PrintedChart& chart, PrintMetrics& metrics, PrintPen& pen)
        : m_chart{chart}, m_metrics{metrics}, m_pen{pen}
    {
    }

    void write(std::string_view locale)
    {
        PrintedDrawing drawing{.scale = unitsPerPixel, .layout = {}, .samples = {}, .books = m_chart.books};
        const auto placed = m_pen.beginDrawing();
        drawing.left = placed.x();
        drawing.top = placed.y();
        m_origin = placed;
        const auto top = addLegend(drawing, locale) + besideLegend;
        auto data = m_chart.data;
        data.chosen.reset(); // paper shows all places alike
        drawing.layout = ChartLayouts::layout(data, room(top), locale);
        for (auto& tick : drawing.layout.ticks)
            addText(std::exchange(tick.text, {}), tick.label, Qt::AlignRight);
        for (auto& label : drawing.layout.labels)
            addText(std::exchange(label.text, {}), label.rect, Qt::AlignHCenter);
        m_pen.draw(std::move(drawing), height * unitsPerPixel);
    }

private:
    /// What is left of the chart's height below this.
    [[nodiscard]] ChartLayouts::Room room(double top)
    {
        return {.rect = {0, top, m_pen.width() / unitsPerPixel, height - top},
                .lineHeight = labelFont.size * 1.4 / unitsPerPixel,
                .widthOf = [this](const QString& text) { return m_metrics.width(text, labelFont) / unitsPerPixel; }};
    }

    /// Returns where it ends.
    double addLegend(PrintedDrawing& drawing, std::string_view locale)
    {
        auto bottom = besideLegend;
        for (const auto& part : ChartLegends::parts(m_chart.data, room(besideLegend), std::nullopt, locale)) {
            const auto& series = m_chart.data.series[promised(part.series, "only a slot is named without a sample")];
            drawing.samples.push_back(
                {.rect = part.sample, .series = {.name = {}, .mark = series.mark, .role = series.role, .values = {}}});
            addText(part.text, part.rect, Qt::AlignLeft);
            bottom = part.rect.bottom();
        }
        return bottom;
    }

    void addText(const QString& text, const QRectF& room, Qt::Alignment side)
    {
        if (text.isEmpty())
            return;
        const double width = m_metrics.width(text, labelFont);
        const double spare = room.width() * unitsPerPixel - width;
        const double shift = side == Qt::AlignRight ? spare : side == Qt::AlignHCenter ? spare / 2 : 0;
        m_pen.put({.place = {m_origin.x() + room.left() * unitsPerPixel + shift,
                             m_origin.y() + room.center().y() * unitsPerPixel + capitals * labelFont.size / 2},
                   .text = text,
                   .font = labelFont,
                   .ink = PrintInk::quiet,
                   .width = width});
    }

    const PrintedChart& m_chart;
    PrintMetrics& m_metrics;
    PrintPen& m_pen;
    QPointF m_origin;
};

}

void PrintChart::write(const PrintedChart& chart, std::string_view locale, PrintMetrics& metrics, PrintPen& pen)
{
    constexpr double lineHeight = titleFont.size * 1.4;
    if (pen.room() < lineHeight + height * unitsPerPixel)
        pen.breakPage();
    PrintedBlock title{.lines = {}, .width = pen.width()};
    for (const auto& line : metrics.lines(chart.title, titleFont, pen.width()))
        title.lines.push_back({line, titleFont, PrintInk::text});
    pen.write({title}, lineHeight);
    ChartOnPaper{chart, metrics, pen}.write(locale);
}
