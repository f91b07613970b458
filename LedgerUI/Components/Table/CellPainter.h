#pragma once

#include <QRect>

#include "LedgerUI/Components/Table/Cell.h"

class QPainter;

/// Paints cells in the theme in force.
class CellPainter {
public:
    /// How far into its cell a text begins that has a glyph before it.
    static constexpr int glyphIndent = 24;

    explicit CellPainter(QPainter& painter) : m_painter(painter) {}

    /// `area` is the room between the paddings of the cell.
    void paint(const Cell& cell, const QRect& area) const;

private:
    void paintText(const CellText& text, QRect line, Qt::Alignment alignment = Qt::AlignLeft) const;
    void paintGlyph(const QString& name, const ThemeColor& ink, const QRect& box) const;
    /// Answers where the marks begin.
    [[nodiscard]] int paintSums(const std::vector<CellAmount>& sums, const QRect& line, int room) const;
    [[nodiscard]] int paintMarks(const std::vector<CellMark>& marks, const QRect& line) const;
    [[nodiscard]] int paintChip(const QString& word, const QRect& line, int right) const;
    void paintWithBar(const Cell& cell, const CellBar& bar, const QRect& area) const;
    void paintLines(const Cell& cell, const QRect& area) const;
    void paintOnlyLine(const Cell& cell, QRect line) const;
    void paintAmounts(const std::vector<CellAmount>& amounts, const QRect& area) const;

    QPainter& m_painter;
};
