#include "LedgerUI/Presentation/Print/PrintPen.h"

#include <algorithm>

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr double unitsPerPoint = printUnitsPerInch / 72.0;
constexpr double besideMargin = 42 * unitsPerPoint;
constexpr double aboveMargin = 42 * unitsPerPoint;
constexpr double belowMargin = 54 * unitsPerPoint; // with the foot in it
constexpr double footRule = 14 * unitsPerPoint;    // below the body
constexpr double footLine = 110;
constexpr PrintFont footFont{.size = 72, .isBold = false};
constexpr double capitals = 0.72; // the height of a capital letter, of its font's size

QSizeF pageSize(const QPageSize& paper, QPageLayout::Orientation orientation)
{
    const auto upright = paper.size(QPageSize::Point) * unitsPerPoint;
    return orientation == QPageLayout::Landscape ? upright.transposed() : upright;
}

double baseLine(double top, double lineHeight, PrintFont font)
{
    return top + (lineHeight + capitals * font.size) / 2;
}

}

PrintPen::PrintPen(const PrintedDocument& document, const QPageSize& paper, QPageLayout::Orientation orientation,
                   PrintMetrics& metrics)
    : m_document{document}, m_metrics{metrics}
{
    m_made = {.title = document.title,
              .fileName = document.fileName,
              .families = metrics.families(),
              .paper = paper,
              .orientation = orientation,
              .size = pageSize(paper, orientation),
              .pages = {}};
    m_left = besideMargin;
    m_right = m_made.size.width() - besideMargin;
    m_top = aboveMargin;
    m_bottom = m_made.size.height() - belowMargin;
    breakPage();
}

double PrintPen::bodyWidth(const QPageSize& paper, QPageLayout::Orientation orientation)
{
    return pageSize(paper, orientation).width() - 2 * besideMargin;
}

void PrintPen::breakPage()
{
    m_made.pages.emplace_back();
    m_y = m_top;
}

void PrintPen::skip(double height)
{
    if (m_y > m_top)
        m_y += height;
}

void PrintPen::rule(double thickness, PrintInk ink)
{
    m_made.pages.back().rules.push_back(
        {.left = m_left, .right = m_right, .y = m_y, .thickness = thickness, .ink = ink});
}

void PrintPen::write(const std::vector<PrintedBlock>& blocks, double lineHeight,
                     const std::function<void()>& onNextPage)
{
    std::size_t count = 0;
    for (const auto& block : blocks)
        count = std::max(count, block.lines.size());
    for (std::size_t at = 0; at < count; ++at) {
        if (room() < lineHeight) {
            breakPage();
            if (onNextPage)
                onNextPage();
        }
        for (const auto& block : blocks) {
            if (at < block.lines.size())
                writeLine(block, block.lines[at], lineHeight);
        }
        m_y += lineHeight;
    }
}

void PrintPen::draw(PrintedDrawing drawing, double height)
{
    m_made.pages.back().drawings.push_back(std::move(drawing));
    m_y += height;
}

void PrintPen::writeLine(const PrintedBlock& block, const PrintedLine& line, double lineHeight)
{
    if (line.text.isEmpty())
        return;
    const double width = m_metrics.width(line.text, line.font);
    const double spare = block.side == PrintedColumn::Side::end ? block.width - width : 0;
    m_made.pages.back().texts.push_back({.place = {m_left + block.left + spare, baseLine(m_y, lineHeight, line.font)},
                                         .text = line.text,
                                         .font = line.font,
                                         .ink = line.ink,
                                         .width = width});
}

void PrintPen::addFoot(std::size_t at)
{
    auto& page = m_made.pages[at];
    const auto number = wordIn(m_document.locale, printWords(), "pageOf",
                               {std::to_string(at + 1), std::to_string(m_made.pages.size())});
    const double numberWidth = m_metrics.width(number, footFont);
    const double y = baseLine(m_bottom + footRule, footLine, footFont);
    const auto whose = m_document.company.isEmpty()
                           ? m_document.title
                           : QStringLiteral("%1  ·  %2").arg(m_document.company, m_document.title);
    // Both are said in full above the tables: a foot has one line for them.
    const auto shown = m_metrics.lines(whose, footFont, width() - 2 * numberWidth - besideMargin).front();
    page.rules.push_back(
        {.left = m_left, .right = m_right, .y = m_bottom + footRule, .thickness = 5, .ink = PrintInk::line});
    const auto add = [&](const QString& text, double left, double textWidth) {
        page.texts.push_back(
            {.place = {left, y}, .text = text, .font = footFont, .ink = PrintInk::quiet, .width = textWidth});
    };
    add(shown, m_left, m_metrics.width(shown, footFont));
    add(number, m_right - numberWidth, numberWidth);
}

PrintedPages PrintPen::finished()
{
    for (std::size_t at = 0; at < m_made.pages.size(); ++at)
        addFoot(at);
    return std::move(m_made);
}
