#include "LedgerUI/Components/Table/CellPainter.h"

#include <algorithm>
#include <cmath>
#include <span>

#include <QPainter>

#include "LedgerUI/Components/Table/CellDrawing.h"
#include "LedgerUI/Components/Text/TextLines.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

int heightOf(TypeStep step)
{
    return QFontMetrics{TypeScale::font(step)}.height();
}

QRect centred(const QRect& line, int left, int extent)
{
    return {left, line.top() + (line.height() - extent) / 2, extent, extent};
}

QFont fontOf(const CellText& text)
{
    auto font = text.isBold ? TypeScale::bold(text.step) : TypeScale::font(text.step);
    font.setStrikeOut(text.isStruck);
    return font;
}

/// In whole pixels, as a text that is one short loses its end.
int widthOfText(const CellText& text)
{
    return static_cast<int>(std::ceil(QFontMetricsF{fontOf(text)}.horizontalAdvance(text.text)));
}

}

void CellPainter::paint(const Cell& cell, const QRect& area) const
{
    auto rest = area;
    if (!cell.fold.isEmpty())
        paintGlyph(cell.fold, Token::text2, centred(area, area.left(), Space::chevron));
    rest.setLeft(rest.left() + cell.indent);
    if (!cell.glyph.isEmpty()) {
        paintGlyph(cell.glyph, cell.glyphInk, centred(rest, rest.left(), Space::icon));
        rest.setLeft(rest.left() + glyphIndent);
    }
    if (!cell.values.empty())
        CellDrawing::paintValues(m_painter, cell.values, rest);
    else if (!cell.amounts.empty())
        paintAmounts(cell.amounts, rest);
    else if (cell.bar)
        paintWithBar(cell, *cell.bar, rest);
    else if (cell.lines.size() == 1)
        paintOnlyLine(cell, rest);
    else
        paintLines(cell, rest);
}

void CellPainter::paintText(const CellText& text, QRect line, Qt::Alignment alignment) const
{
    if (!text.glyph.isEmpty()) {
        paintGlyph(text.glyph, text.ink, centred(line, line.left(), Space::chevron));
        line.setLeft(line.left() + Space::chevron + Space::step1);
    }
    const auto font = fontOf(text);
    m_painter.setFont(font);
    m_painter.setPen(Theme::current().color(text.ink));
    const QFontMetrics metrics{font};
    const auto shown = metrics.elidedText(text.text, Qt::ElideRight, line.width());
    const bool isAtRight = alignment.testFlag(Qt::AlignRight);
    const int left = isAtRight ? line.right() + 1 - metrics.horizontalAdvance(shown) : line.left();
    // By the font alone: a sign that another one has to lend, such as the minus, is higher and would lower the line.
    const int top = line.top() + (line.height() - metrics.height()) / 2;
    m_painter.drawText(QPoint{left, top + metrics.ascent()}, shown);
}

void CellPainter::paintGlyph(const QString& name, const ThemeColor& ink, const QRect& box) const
{
    const auto ratio = m_painter.device()->devicePixelRatioF();
    m_painter.drawPixmap(box.topLeft(), Icon::pixmap(name, Theme::current().color(ink), box.width(), ratio));
}

int CellPainter::paintMarks(const std::vector<CellMark>& marks, const QRect& line) const
{
    int left = line.right() + 1;
    for (const auto& mark : marks) {
        if (mark.glyph.isEmpty()) {
            left = paintChip(mark.word, line, left) - Space::step2;
            continue;
        }
        if (!mark.word.isEmpty()) {
            const int width = QFontMetrics{TypeScale::font(TypeStep::micro)}.horizontalAdvance(mark.word);
            left -= width;
            paintText({.text = mark.word, .step = TypeStep::micro, .ink = Token::text2},
                      {left, line.top(), width, line.height()});
            left -= Space::step1;
        }
        left -= Space::chevron;
        paintGlyph(mark.glyph, Token::text2, centred(line, left, Space::chevron));
        left -= Space::step2;
    }
    return left;
}

/// Paints the first ones that fit into the room, and how many follow; answers where they begin.
int CellPainter::paintSums(const std::vector<CellAmount>& sums, const QRect& line, int room) const
{
    const auto codeOf = [](const CellAmount& sum) {
        return CellText{.text = sum.code, .step = TypeStep::micro, .ink = Token::text3};
    };
    const auto more = [&](std::size_t shown) {
        const auto left = sums.size() - shown;
        return CellText{.text = left > 0 ? QStringLiteral("+%1").arg(left) : QString{},
                        .step = TypeStep::small,
                        .ink = Token::text2};
    };
    const auto widthOf = [&](std::size_t shown) {
        int width = shown < sums.size() ? widthOfText(more(shown)) : -Space::step4;
        for (const auto& sum : std::span{sums}.first(shown))
            width += widthOfText(codeOf(sum)) + Space::step1 + widthOfText(sum.figure) + Space::step4;
        return width;
    };
    std::size_t shown = sums.size();
    while (shown > 0 && widthOf(shown) > room)
        --shown;
    const int left = line.right() + 1 - widthOf(shown);
    int at = left;
    const auto write = [&](const CellText& text, int gap) {
        const int width = widthOfText(text);
        paintText(text, {at, line.top(), width, line.height()});
        at += width + gap;
    };
    for (const auto& sum : std::span{sums}.first(shown)) {
        write(codeOf(sum), Space::step1);
        write(sum.figure, Space::step4);
    }
    write(more(shown), 0);
    return left;
}

int CellPainter::paintChip(const QString& word, const QRect& line, int right) const
{
    const auto font = TypeScale::font(TypeStep::micro);
    const QFontMetrics metrics{font};
    const int width = metrics.horizontalAdvance(word) + 2 * Space::step2;
    const int height = metrics.height() + 3;
    const QRect chip{right - width, line.top() + (line.height() - height) / 2, width, height};
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(Theme::current().color(Token::sunken));
    m_painter.drawRoundedRect(chip, Space::radiusSmall, Space::radiusSmall);
    m_painter.setFont(font);
    m_painter.setPen(Theme::current().color(Token::text2));
    m_painter.drawText(chip, Qt::AlignCenter, word);
    return chip.left();
}

void CellPainter::paintOnlyLine(const Cell& cell, QRect line) const
{
    const auto& text = cell.lines.front();
    if (!cell.marks.empty())
        line.setRight(paintMarks(cell.marks, line));
    const int width = QFontMetrics{fontOf(text)}.horizontalAdvance(text.text);
    if (!cell.sums.empty())
        line.setRight(paintSums(cell.sums, line, line.width() - width - Space::step4) - Space::step4);
    if (cell.wraps && width > line.width()) {
        m_painter.setFont(fontOf(text));
        m_painter.setPen(Theme::current().color(text.ink));
        drawTwoLines(m_painter, line, text.text);
        return;
    }
    paintText(text, line);
    line.setLeft(line.left() + width + Space::step2);
    if (cell.beside && line.width() > Space::step8)
        paintText(*cell.beside, line);
}

/// In a high cell the bar lies under the text; in a low one it stands before it.
void CellPainter::paintWithBar(const Cell& cell, const CellBar& bar, const QRect& area) const
{
    constexpr int thickness = 4;
    const auto text = cell.lines.empty() ? CellText{} : cell.lines.front();
    const int height = heightOf(text.step);
    if (area.height() >= height + thickness + Space::step2) {
        const int top = area.top() + (area.height() - height - thickness - Space::step1) / 2;
        paintText(text, {area.left(), top, area.width(), height});
        CellDrawing::paintBar(m_painter, bar, {area.left(), top + height + Space::step1, area.width(), thickness});
        return;
    }
    const int words = QFontMetrics{fontOf(text)}.horizontalAdvance(text.text);
    const QRect before{area.left(), area.top() + (area.height() - thickness) / 2, area.width() - words - Space::step2,
                       thickness};
    CellDrawing::paintBar(m_painter, bar, before);
    paintText(text, area, Qt::AlignRight);
}

void CellPainter::paintLines(const Cell& cell, const QRect& area) const
{
    int height = 0;
    for (const auto& text : cell.lines)
        height += heightOf(text.step);
    int top = area.top() + (area.height() - height) / 2;
    for (const auto& text : cell.lines) {
        QRect line{area.left(), top, area.width(), heightOf(text.step)};
        if (&text == &cell.lines.front() && !cell.marks.empty())
            line.setRight(paintMarks(cell.marks, line));
        paintText(text, line);
        top += heightOf(text.step);
    }
}

void CellPainter::paintAmounts(const std::vector<CellAmount>& amounts, const QRect& area) const
{
    int height = 0;
    for (const auto& amount : amounts)
        height += heightOf(amount.figure.step);
    // Figures have no descenders: where the cell is low, lines may stand closer than those of words.
    const int lines = static_cast<int>(amounts.size());
    const int step = std::min(height, area.height()) / lines;
    int top = area.top() + (area.height() - step * lines) / 2;
    for (const auto& amount : amounts) {
        const QRect line{area.left(), top, area.width(), step};
        paintText({.text = amount.code, .step = TypeStep::micro, .ink = Token::text3}, line);
        paintText(amount.figure, line, Qt::AlignRight);
        top += step;
    }
}
