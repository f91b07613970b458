#pragma once

#include <functional>
#include <string>
#include <vector>

#include "LedgerUI/Components/Page/Action.h"

class LedgerStore;

namespace LedgerActions {

/// "newEntry", which records the first kind that the member may record, and one action for each kind:
/// "newEntry.expense" and so on. Not offered to members who may not record at all.
std::vector<Action> recording(const LedgerStore& store, const std::function<void(const std::string& kind)>& record);

/// What the menu of the new entries lists, in groups.
QList<QString> recordingMenu();

}
