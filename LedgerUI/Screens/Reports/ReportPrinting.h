#pragma once

#include <functional>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

class LedgerStore;
class PrintDialog;
class QWidget;
class ReportBrowser;

/// The way of a report to paper, for the pages that show one.
namespace ReportPrinting {

/// Offered to who may export, and enabled while the page shows its answer.
Action action(const LedgerStore& store, bool isReady, std::function<void()> run);

/// Opens the preview of the report that the browser holds; null where there is none.
PrintDialog* open(LedgerStore& store, const ReportBrowser& browser, ReportPart part, QWidget* window);

}
