#pragma once

#include "LedgerUI/Presentation/Print/PrintHead.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"

/// Reports as they go to paper.
namespace ReportPrint {

/// A report's table without its drawings; `note` stands below it.
PrintedTable table(const ReportGrid& grid, const QString& note = {});

PrintedDocument document(const ReportSheet& sheet, ReportPart part, const PrintMoment& moment);

/// The name of a file of a report, without its ending.
QString fileName(const ReportSheet& sheet, ReportPart part, const PrintMoment& moment);

}
