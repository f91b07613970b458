#pragma once

#include <functional>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

class LedgerBrowser;
class LedgerStore;
class QWidget;

/// Printing from the ledger's page. `done` hears what became of it.
namespace LedgerPrinting {

using Done = std::function<void(const QString& what)>;

/// "printLedger": the ledger as it is narrowed, or the statement of the one account that it is narrowed to. For those
/// who may export.
Action list(LedgerStore& store, LedgerBrowser& browser, QWidget* over, Done done);

/// "printEntry": one entry, for whoever sees it.
Action entry(LedgerStore& store, LedgerBookPointer book, std::uint32_t at, QWidget* over, Done done);

}
