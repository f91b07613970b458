#pragma once

#include <string_view>

#include "LedgerUI/Presentation/Print/PrintPen.h"

/// A chart on its way to a page.
namespace PrintChart {

/// Writes the chart below what is on the page already, whole, with its title and its legend.
void write(const PrintedChart& chart, std::string_view locale, PrintMetrics& metrics, PrintPen& pen);

}
