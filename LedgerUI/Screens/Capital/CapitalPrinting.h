#pragma once

#include <functional>
#include <vector>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Capital/CapitalPlace.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"

class LedgerStore;
class QWidget;

/// Printing from the page of capital and dividends.
namespace CapitalPrinting {

/// What the page shows.
struct Shown {
    CapitalModuleTab tab = CapitalModuleTab::overview;
    CapitalQuestion question = {};
    bool isWhole = false;           // else there is nothing that may be given out
    std::string participantID = {}; // whose settlement is in sight; empty for none
};

/// "printCapital", the tab in sight, and "printStatement", how the chosen participant stands; for those who may export
/// what is on them. Nothing that has changed since it was looked at is given out. `done` hears what became of it.
std::vector<Action> actions(LedgerStore& store, const Shown& shown, QWidget& over,
                            const std::function<void(const QString& what)>& done);

}
