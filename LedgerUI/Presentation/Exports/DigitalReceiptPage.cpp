#include "LedgerUI/Presentation/Exports/DigitalReceiptPage.h"

#include <algorithm>

#include "LedgerUI/Presentation/Print/PrintMetrics.h"

namespace {

constexpr double units(double pixels)
{
    return pixels * DigitalReceiptPage::unitsPerPixel;
}

constexpr PrintFont fontOf(double pixels, bool isBold = false)
{
    return {.size = static_cast<int>(units(pixels)), .isBold = isBold};
}

constexpr double width = units(388);
constexpr double margin = units(24);
constexpr double mark = units(24);
constexpr double glyph = units(16);
constexpr double labels = units(120);
constexpr double valuesAt = units(132); // from the margin
constexpr auto sectionFont = fontOf(14, true);
constexpr auto kindFont = fontOf(13, true);
constexpr auto bodyFont = fontOf(13);
constexpr auto labelFont = fontOf(12);
constexpr auto smallFont = fontOf(11);
constexpr double baseOfLine = 0.76; // of a line's height, where its letters stand
constexpr double lineOfFont = 1.4;  // of a font's size
constexpr double paperMargin = units(72);

struct Style {
    PrintFont font;
    PrintInk ink = PrintInk::text;

    [[nodiscard]] double line() const { return font.size * lineOfFont; }
};

/// Writes the receipt down from its top.
class Writer {
public:
    Writer(const DigitalReceipt& receipt, const QStringList& families) : m_receipt{receipt}, m_metrics{families} {}

    /// The page's height.
    double write()
    {
        writeHead();
        writeAmounts();
        writeRule(units(1), PrintInk::line);
        writeLines();
        writeRule(units(1), PrintInk::line);
        writeText(m_receipt.foot, {smallFont, PrintInk::quiet}, margin, width - 2 * margin);
        return m_y + margin;
    }

    PrintedPage page;

private:
    void writeHead();
    void writeAmounts();
    void writeAmount(const MoneyText& amount);
    void writeLines();

    /// A paragraph from here down.
    void writeText(const QString& text, const Style& style, double left, double room)
    {
        for (const auto& line : m_metrics.lines(text, style.font, room)) {
            writeLine(line, style, left, m_y + style.line() * baseOfLine);
            m_y += style.line();
        }
    }

    void writeLine(const QString& text, const Style& style, double left, double base)
    {
        page.texts.push_back({.place = {left, base},
                              .text = text,
                              .font = style.font,
                              .ink = style.ink,
                              .width = m_metrics.width(text, style.font)});
    }

    void writeRule(double thickness, PrintInk ink)
    {
        m_y += units(12);
        page.rules.push_back(
            {.left = margin, .right = width - margin, .y = m_y + thickness / 2, .thickness = thickness, .ink = ink});
        m_y += thickness + units(12);
    }

    const DigitalReceipt& m_receipt;
    PrintMetrics m_metrics;
    double m_y = margin;
};

/// Whose it is at the left, what it is at the right.
void Writer::writeHead()
{
    page.glyphs.push_back({.place = {margin, m_y, mark, mark}, .name = {}});
    const Style said{smallFont, PrintInk::quiet};
    const double right = m_metrics.width(m_receipt.title, said.font);
    const double top = m_y;
    const double left = margin + mark + units(10);
    const Style company{sectionFont};
    m_y += (mark - company.line()) / 2;
    writeLine(m_receipt.title, said, width - margin - right, m_y + company.line() * baseOfLine);
    writeText(m_receipt.company, company, left, width - margin - right - units(10) - left);
    m_y = std::max(m_y, top + mark);
    writeRule(units(2), PrintInk::text);
}

void Writer::writeAmounts()
{
    const Style kind{kindFont, PrintInk::accent};
    page.glyphs.push_back({.place = {margin, m_y + (kind.line() - glyph) / 2, glyph, glyph},
                           .name = m_receipt.glyph,
                           .ink = PrintInk::accent});
    writeText(m_receipt.kindTitle, kind, margin + units(24), width - 2 * margin - units(24));
    m_y += units(2);
    for (const auto& amount : m_receipt.amounts)
        writeAmount(amount);
    if (m_receipt.category.isEmpty())
        return;
    m_y += units(4);
    writeText(m_receipt.category, {bodyFont, PrintInk::quiet}, margin, width - 2 * margin);
}

/// As large as it fits; never broken.
void Writer::writeAmount(const MoneyText& amount)
{
    const Style code{fontOf(16), PrintInk::quiet};
    const double left = margin + m_metrics.width(amount.currency, code.font) + units(8);
    double pixels = 28;
    while (pixels > 12 && left + m_metrics.width(amount.figure(), fontOf(pixels)) > width - margin)
        --pixels;
    const Style digits{fontOf(pixels)};
    const double base = m_y + digits.line() * baseOfLine;
    writeLine(amount.currency, code, margin, base);
    writeLine(amount.figure(), digits, left, base);
    if (m_receipt.isReversed)
        page.rules.push_back({.left = left,
                              .right = left + page.texts.back().width,
                              .y = base - digits.font.size * 0.3,
                              .thickness = units(1.5),
                              .ink = PrintInk::text});
    m_y += digits.line();
}

void Writer::writeLines()
{
    for (const auto& line : m_receipt.lines) {
        const double top = m_y;
        writeText(line.label, {labelFont, PrintInk::quiet}, margin, labels);
        const double labelEnd = m_y;
        m_y = top;
        writeText(line.value, {bodyFont}, margin + valuesAt, width - 2 * margin - valuesAt);
        m_y = std::max(m_y, labelEnd) + units(6);
    }
    m_y -= units(6);
}

PrintedPages pagesOf(const DigitalReceipt& receipt, const QStringList& families)
{
    Writer writer{receipt, families};
    const double height = writer.write();
    PrintedPages pages;
    pages.title = receipt.title;
    pages.fileName = receipt.fileName;
    pages.families = families;
    pages.accent = receipt.kindColor;
    pages.size = {width, height};
    pages.pages = {std::move(writer.page)};
    return pages;
}

}

PrintedPages DigitalReceiptPage::alone(const DigitalReceipt& receipt, const QStringList& families)
{
    auto pages = pagesOf(receipt, families);
    constexpr double unitsPerPoint = printUnitsPerInch / 72.0;
    pages.paper = QPageSize{pages.size / unitsPerPoint, QPageSize::Point, receipt.title, QPageSize::ExactMatch};
    return pages;
}

PrintedPages DigitalReceiptPage::onPaper(const DigitalReceipt& receipt, const QStringList& families,
                                         const QPageLayout& sheet)
{
    auto pages = pagesOf(receipt, families);
    pages.paper = sheet.pageSize();
    pages.orientation = sheet.orientation();
    pages.size = sheet.fullRectPixels(printUnitsPerInch).size();
    const QPointF move{(pages.size.width() - width) / 2, paperMargin};
    auto& page = pages.pages.front();
    for (auto& text : page.texts)
        text.place += move;
    for (auto& rule : page.rules) {
        rule.left += move.x();
        rule.right += move.x();
        rule.y += move.y();
    }
    for (auto& each : page.glyphs)
        each.place.translate(move);
    return pages;
}
