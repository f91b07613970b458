#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Ledger/LedgerRefund.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSort.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"

class LedgerStore;
class LedgerTable;

/// What can be done on the ledger page, and in which order its menus list it.
namespace LedgerActions {

/// "newEntry", which records the first kind that the member may record, and one action for each kind:
/// "newEntry.expense" and so on; and "newEntry.draft", which opens the form on the entry that was begun last, while
/// there is one. Not offered to members who may not record at all.
/// "newEntry.templates" opens the templates by `showTemplates`, where the service keeps them.
std::vector<Action> recording(LedgerStore& store, const std::function<void(const EntryForm::Opening& opening)>& record,
                              const std::function<void()>& showTemplates);
QList<QString> recordingMenu();

/// The entries that are chosen, and what does the things that can be done with them.
struct Chosen {
    LedgerBookPointer book;
    std::span<const std::uint32_t> entries;
    const std::optional<LedgerEntryDetail>& detail; // of a single one
    bool isBusy = false;
    std::function<void()> open;
    std::function<void()> copy;
    std::function<void(const std::string& entryID)> reverse;
    std::function<void()> reverseSeveral; // all of them
    std::function<void(const std::string& entryID)> duplicate;
    std::function<void(const std::string& entryID)> keepTemplate; // empty where the service keeps none
    std::function<void(const LedgerRefund& refund)> refund;
    std::function<void(const std::string& entryID)> share;
    std::function<void(const std::string& accountID)> showOnly;
};
std::vector<Action> onEntries(const Chosen& chosen);
QList<QString> entryMenu();

/// Which columns stand in the table; `changed` after each change.
std::vector<Action> columns(LedgerTable& table, const std::function<void()>& changed);
QList<QString> columnsMenu();

/// Sorting by each column; by the one in force turns the order around. And whether each day has a head.
struct Order {
    LedgerSort sort;
    bool isByDay = false;
    std::function<void(LedgerSort::Key key)> sortBy;
    std::function<void()> turnGrouping;
};
std::vector<Action> sorting(const Order& now);
QList<QString> sortingMenu();

}
