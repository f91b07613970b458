#pragma once

#include <vector>

#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPointF>
#include <QRectF>
#include <QRgb>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include "LedgerUI/Presentation/Print/PrintedChart.h"

/// Everything on a page is measured in tenths of a point, on whatever it is painted.
inline constexpr int printUnitsPerInch = 720;

enum class PrintInk {
    text,
    quiet,
    line,
    accent // the colour of what the document is about
};

struct PrintFont {
    int size = 0; // of an em
    bool isBold = false;

    bool operator==(const PrintFont&) const = default;
};

/// One line of text, at the left end of its base line.
struct PrintedText {
    QPointF place;
    QString text;
    PrintFont font;
    PrintInk ink = PrintInk::text;
    double width = 0;

    bool operator==(const PrintedText&) const = default;
};

/// A line across.
struct PrintedRule {
    double left = 0;
    double right = 0;
    double y = 0;
    double thickness = 5;
    PrintInk ink = PrintInk::line;

    bool operator==(const PrintedRule&) const = default;
};

/// A glyph of the icon set by its name, or the program's mark, which keeps its own colours.
struct PrintedGlyph {
    QRectF place;
    QString name; // empty for the mark
    PrintInk ink = PrintInk::text;
};

struct PrintedPage {
    std::vector<PrintedText> texts;
    std::vector<PrintedRule> rules;
    std::vector<PrintedDrawing> drawings = {};
    std::vector<PrintedGlyph> glyphs = {};
};

/// The paper that a person chose.
struct PaperChoice {
    enum class Orientation {
        automatic, // lies on its side where the document is too wide to stand
        portrait,
        landscape
    };

    QPageSize size{QPageSize::A4};
    Orientation orientation = Orientation::automatic;

    bool operator==(const PaperChoice&) const = default;
};

/// A document laid out on pages: every text at its place, ready to be painted. Immutable, shared with workers.
struct PrintedPages {
    QString title;
    QString fileName;
    QStringList families; // of the fonts that it was measured with
    QPageSize paper{QPageSize::A4};
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QSizeF size; // of a page, as it is read
    QRgb accent = 0xff000000;
    std::vector<PrintedPage> pages;
};

/// The font of a text on paper. It has no hints, so that it is as wide on every device.
QFont printFont(const QStringList& families, PrintFont font);
