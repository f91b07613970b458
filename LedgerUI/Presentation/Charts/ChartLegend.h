#pragma once

#include "LedgerUI/Presentation/Charts/ChartLayout.h"

/// A text of the legend above a chart: the name of a slot, or a series with its figure there.
struct ChartLegendPart {
    QRectF rect; // of the text alone
    QString text;
    std::optional<std::size_t> series = {}; // unset for the slot's name
    QRectF sample = {};                     // of the series, before the text
};

namespace ChartLegends {

/// The names of the series, with their figures in `slot` where one is told of. From the top of the room, on as many
/// lines as its width takes; the first of them begins beside a heading of this size.
std::vector<ChartLegendPart> parts(const ChartData& data, const ChartLayouts::Room& room,
                                   std::optional<std::size_t> slot, std::string_view locale, QSizeF heading = {0, 0});

/// What heading and legend take of the room for whichever slot needs most, so that the chart below stays where it is.
double height(const ChartData& data, const ChartLayouts::Room& room, std::string_view locale, QSizeF heading = {0, 0});

}
