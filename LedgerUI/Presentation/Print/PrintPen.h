#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "LedgerUI/Presentation/Print/PrintMetrics.h"
#include "LedgerUI/Presentation/Print/PrintedDocument.h"
#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// One line of a block, at its side of the block's width.
struct PrintedLine {
    QString text;
    PrintFont font;
    PrintInk ink = PrintInk::text;
};

/// Lines one below the other.
struct PrintedBlock {
    std::vector<PrintedLine> lines;
    double left = 0; // from the left edge of the page's body
    double width = 0;
    PrintedColumn::Side side = PrintedColumn::Side::start;
};

/// Writes down a page and goes on with the next one. Knows the margins, the foot and where on the page it is.
class PrintPen {
public:
    PrintPen(const PrintedDocument& document, const QPageSize& paper, QPageLayout::Orientation orientation,
             PrintMetrics& metrics);

    /// The width between the margins.
    static double bodyWidth(const QPageSize& paper, QPageLayout::Orientation orientation);
    [[nodiscard]] double width() const { return m_right - m_left; }
    /// The height that a page has between head and foot, and what is left of it here.
    [[nodiscard]] double height() const { return m_bottom - m_top; }
    [[nodiscard]] double room() const { return m_bottom - m_y; }

    void breakPage();
    void advance(double height) { m_y += height; }
    /// Leaves a gap; none at the top of a page.
    void skip(double height);
    void rule(double thickness, PrintInk ink);
    /// Writes blocks side by side. Where the page ends before they do, `onNextPage` begins the next one.
    void write(const std::vector<PrintedBlock>& blocks, double lineHeight,
               const std::function<void()>& onNextPage = {});

    /// Where a drawing goes.
    [[nodiscard]] QPointF beginDrawing() const { return {m_left, m_y}; }
    /// Draws there and goes on below it.
    void draw(PrintedDrawing drawing, double height);
    /// A text at its own place on the page.
    void put(PrintedText text) { m_made.pages.back().texts.push_back(std::move(text)); }

    /// The pages with their feet: whose document it is, and "2 / 7".
    PrintedPages finished();

private:
    void writeLine(const PrintedBlock& block, const PrintedLine& line, double lineHeight);
    void addFoot(std::size_t at);

    const PrintedDocument& m_document;
    PrintMetrics& m_metrics;
    PrintedPages m_made;
    double m_left = 0;
    double m_right = 0;
    double m_top = 0;
    double m_bottom = 0;
    double m_y = 0;
};
