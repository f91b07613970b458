#pragma once

#include <QPageLayout>
#include <QStringList>

#include "LedgerUI/Presentation/Exports/DigitalReceipt.h"
#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// A digital receipt laid out, for the screen, pictures, files and printers alike. It is always light.
namespace DigitalReceiptPage {

/// Units of a page for each pixel at 96 dpi.
inline constexpr double unitsPerPixel = printUnitsPerInch / 96.0;
/// The pixels of a saved picture for each of those.
inline constexpr double pictureRatio = 3;

/// One page, as high as its content.
PrintedPages alone(const DigitalReceipt& receipt, const QStringList& families);

/// The same at the top of a sheet of paper, in its middle.
PrintedPages onPaper(const DigitalReceipt& receipt, const QStringList& families, const QPageLayout& sheet);

}
