#pragma once

#include <cstdint>
#include <vector>

#include <QRect>

#include "LedgerUI/Components/Table/Cell.h"

class QPainter;

/// What cells show besides texts.
namespace CellDrawing {

/// A bar on its track.
void paintBar(QPainter& painter, const CellBar& bar, const QRect& track);

/// The values as a line from left to right over the whole area, the lowest at its bottom, with a dot on the last one.
void paintValues(QPainter& painter, const std::vector<std::int64_t>& values, const QRect& area);

}
