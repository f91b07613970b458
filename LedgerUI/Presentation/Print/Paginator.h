#pragma once

#include "LedgerUI/Presentation/Print/PrintedDocument.h"
#include "LedgerUI/Presentation/Print/PrintedPages.h"

namespace Paginator {

/// Lays a document out on paper in these font families. Column heads are repeated on every page; a row stays whole
/// unless it is higher than a page; a head, of the table or of a group, stands with what follows it.
PrintedPages pages(const PrintedDocument& document, const PaperChoice& paper, const QStringList& families);

}
