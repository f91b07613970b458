#pragma once

#include <functional>
#include <string>

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

/// "printSelected": those of the ledger's entries that are selected, where these are several; `ids` is asked for them
/// when it is wanted.
struct Selected {
    std::size_t count = 0;
    std::function<SharedList<std::string>()> ids;
};
Action selection(LedgerStore& store, LedgerBrowser& browser, const Selected& selected, QWidget* over, Done done);

/// Opens the preview of the statement of an account for a period.
void statement(LedgerStore& store, const std::string& accountID, const Period& period, QWidget* over, const Done& done);

/// "printEntry": one entry, for whoever sees it.
Action entry(LedgerStore& store, LedgerBookPointer book, std::uint32_t at, QWidget* over, Done done);

}
