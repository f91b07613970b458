#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// An entry in one line.
namespace EntryText {

/// "18 Nov 2026 · Expense · IDR −4,385,200"; empty for one that is not in the snapshot.
QString brief(std::string_view entryID, const LedgerSnapshot& snapshot, std::string_view locale);

}
