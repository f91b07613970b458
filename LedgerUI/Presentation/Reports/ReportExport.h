#pragma once

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/Reports/ReportPart.h"

class LedgerStore;

/// What leaves the reports page on paper or as a file.
namespace ReportExport {

/// Whether the books still say what the report was worked out from, for the person who sees it: asked of the service
/// for each currency of the report.
QCoro::Task<Result<void>> permission(LedgerStore* store, ReportSheetPointer sheet, ReportPart part);

}
