#include "LedgerUI/Components/Print/PagePainter.h"

#include <algorithm>
#include <map>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Chart/ChartPainter.h"
#include "LedgerUI/Components/Print/PdfText.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Token.h"

namespace {

QColor colorOf(PrintInk ink, const PrintedPages& pages)
{
    switch (ink) {
    case PrintInk::text:
        return Qt::black;
    case PrintInk::quiet:
        return QColor::fromRgb(tokenColor(Token::text2, ColorScheme::light)); // paper is always light
    case PrintInk::line:
        return QColor::fromRgb(tokenColor(Token::divider, ColorScheme::light));
    case PrintInk::accent:
        return QColor::fromRgb(pages.accent);
    }
    return {};
}

/// By the painter of the screen, in its pixels.
void paintDrawing(QPainter& painter, const PrintedDrawing& drawing)
{
    const ChartColors colors{.income = entryKindColor(EntryKind::income, *drawing.books),
                             .expense = entryKindColor(EntryKind::expense, *drawing.books)};
    painter.save();
    painter.translate(drawing.left, drawing.top);
    painter.scale(drawing.scale, drawing.scale);
    ChartPainter::paint(painter, drawing.layout, colors, painter.font());
    for (const auto& sample : drawing.samples)
        ChartPainter::paintSample(painter, sample.rect, sample.series, colors);
    painter.restore();
}

QPageLayout layoutOf(const PrintedPages& pages)
{
    return {pages.paper, pages.orientation, {}, QPageLayout::Point};
}

}

void PagePainter::paint(QPainter& painter, const PrintedPages& pages, std::size_t page)
{
    const auto& shown = pages.pages[page];
    for (const auto& rule : shown.rules)
        painter.fillRect(QRectF{rule.left, rule.y - rule.thickness / 2, rule.right - rule.left, rule.thickness},
                         colorOf(rule.ink, pages));
    for (const auto& glyph : shown.glyphs) {
        if (glyph.name.isEmpty())
            Icon::paintMark(painter, glyph.place);
        else
            Icon::paint(painter, glyph.name, colorOf(glyph.ink, pages), glyph.place);
    }
    for (const auto& drawing : shown.drawings)
        paintDrawing(painter, drawing);
    PrintFont inUse;
    auto ink = PrintInk::line;
    for (const auto& text : shown.texts) {
        if (text.font != inUse)
            painter.setFont(printFont(pages.families, text.font));
        if (text.ink != ink)
            painter.setPen(colorOf(text.ink, pages));
        inUse = text.font;
        ink = text.ink;
        painter.drawText(text.place, text.text);
    }
}

std::string PagePainter::pdf(const PrintedPages& pages)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer{&buffer};
        writer.setTitle(pages.title);
        writer.setCreator(QStringLiteral("Tallyfold"));
        writer.setPageLayout(layoutOf(pages));
        writer.setResolution(printUnitsPerInch);
        QPainter painter{&writer};
        for (std::size_t page = 0; page < pages.pages.size(); ++page) {
            if (page > 0)
                writer.newPage();
            paint(painter, pages, page);
        }
    }
    return PdfText::corrected(buffer.data().toStdString(), PdfText::readingOf(pages));
}

QImage PagePainter::image(const PrintedPages& pages, std::size_t page, double scale)
{
    constexpr double metresPerInch = 0.0254;
    QImage image{(pages.size * scale).toSize(), QImage::Format_RGB32};
    image.fill(Qt::white);
    const auto dots = qRound(printUnitsPerInch * scale / metresPerInch);
    image.setDotsPerMeterX(dots);
    image.setDotsPerMeterY(dots);
    QPainter painter{&image};
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(scale, scale);
    paint(painter, pages, page);
    return image;
}

std::string PagePainter::png(const PrintedPages& pages, std::size_t page, double scale)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image(pages, page, scale).save(&buffer, "PNG");
    return buffer.data().toStdString();
}

bool PagePainter::print(QPrinter& printer, const PrintedPages& pages)
{
    printer.setDocName(pages.title);
    printer.setFullPage(true);
    printer.setPageLayout(layoutOf(pages));
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const double scale = static_cast<double>(printer.resolution()) / printUnitsPerInch;
    painter.scale(scale, scale);
    const auto count = static_cast<int>(pages.pages.size());
    const int first = std::max(1, printer.fromPage());
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), count) : count;
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage())
            return false;
        paint(painter, pages, static_cast<std::size_t>(page - 1));
    }
    return painter.end();
}
