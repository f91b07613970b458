#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The categories that a member has pinned for quick entry.
namespace CategoryPins {

inline constexpr std::size_t maximum = 8; // of one kind

/// Those of this kind that may still be used, in the order in which they were pinned.
std::vector<const Category*> of(const LedgerSnapshot& snapshot, std::string_view kind);

bool contains(const LedgerSnapshot& snapshot, std::string_view categoryID);

/// What keeps another category of the kind from being pinned, in words; empty when it can be.
QString whyNotMore(const LedgerSnapshot& snapshot, std::string_view kind, std::string_view locale);

}
