#include "LedgerUI/Presentation/Print/PrintChart.h"

#include <utility>

namespace {

constexpr double unitsPerPixel = printUnitsPerInch / 96.0;
constexpr double height = 190; // pixels of a screen, as everything below
constexpr double legendHeight = 20;
constexpr double sampleExtent = 12;
constexpr double afterSample = 4;
constexpr double afterName = 16;
constexpr double capitals = 0.72; // the height of a capital letter, of its font's size
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
        PrintedDrawing drawing{
            .scale = unitsPerPixel, .layout = layoutIn(locale), .samples = {}, .books = m_chart.books};
        const auto placed = m_pen.beginDrawing();
        drawing.left = placed.x();
        drawing.top = placed.y();
        m_origin = placed;
        addLegend(drawing);
        for (auto& tick : drawing.layout.ticks)
            addText(std::exchange(tick.text, {}), tick.label, Qt::AlignRight);
        for (auto& label : drawing.layout.labels)
            addText(std::exchange(label.text, {}), label.rect, Qt::AlignHCenter);
        m_pen.draw(std::move(drawing), height * unitsPerPixel);
    }

private:
    [[nodiscard]] double widthOf(const QString& text) { return m_metrics.width(text, labelFont) / unitsPerPixel; }

    ChartLayout layoutIn(std::string_view locale)
    {
        const QRectF room{0, legendHeight, m_pen.width() / unitsPerPixel, height - legendHeight};
        auto data = m_chart.data;
        data.chosen.reset(); // paper shows all places alike
        return ChartLayouts::layout(data,
                                    {.rect = room,
                                     .lineHeight = labelFont.size * 1.4 / unitsPerPixel,
                                     .widthOf = [this](const QString& text) { return widthOf(text); }},
                                    locale);
    }

    void addLegend(PrintedDrawing& drawing)
    {
        double left = 0;
        for (const auto& series : m_chart.data.series) {
            const QRectF sample{left, (legendHeight - sampleExtent) / 2, sampleExtent, sampleExtent};
            drawing.samples.push_back(
                {.rect = sample, .series = {.name = {}, .mark = series.mark, .role = series.role, .values = {}}});
            left += sampleExtent + afterSample;
            const double width = widthOf(series.name);
            addText(series.name, {left, 0, width, legendHeight}, Qt::AlignLeft);
            left += width + afterName;
        }
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
