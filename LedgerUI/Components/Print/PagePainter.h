#pragma once

#include <cstddef>
#include <string>

#include <QImage>

#include "LedgerUI/Presentation/Print/PrintedPages.h"

class QPainter;
class QPrinter;

/// One painter for the preview, the printer and files.
namespace PagePainter {

/// Paints a page at the painter's origin, in the units of pages: scale the painter to what it stands for.
void paint(QPainter& painter, const PrintedPages& pages, std::size_t page);

/// The pages as a PDF whose texts can be selected. May be called on a worker.
std::string pdf(const PrintedPages& pages);

/// A page as a picture, `scale` pixels for each unit. May be called on a worker.
QImage image(const PrintedPages& pages, std::size_t page, double scale);
std::string png(const PrintedPages& pages, std::size_t page, double scale);

/// Sends the pages to a printer, or those of the range that was asked for; false if it does not take them.
bool print(QPrinter& printer, const PrintedPages& pages);

}
