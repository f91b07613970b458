#pragma once

#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Charts/ChartLayout.h"

/// A chart of a document. Its colours are those of the books that it was made of.
struct PrintedChart {
    QString title;
    ChartData data;
    SnapshotPointer books;

    bool operator==(const PrintedChart&) const = default;
};

/// What is drawn of a chart on a page; its words stand among the page's texts. Everything is measured in the pixels of
/// a screen, `scale` of the page's units each.
struct PrintedDrawing {
    /// The mark of a series in the legend.
    struct Sample {
        QRectF rect;
        ChartSeries series;
    };

    double left = 0; // on the page
    double top = 0;
    double scale = 1;
    ChartLayout layout; // without texts
    std::vector<Sample> samples;
    SnapshotPointer books;
};
