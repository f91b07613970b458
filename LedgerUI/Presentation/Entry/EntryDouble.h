#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// An earlier entry that the one being recorded seems to repeat, as the form tells of it.
namespace EntryDouble {

QString warning(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale);

/// What is known of it, a line for each fact: enough to tell it from the one being recorded.
QString facts(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale);

}
