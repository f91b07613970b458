#pragma once

#include <string_view>

#include "LedgerUI/Theme/ThemeColor.h"

struct LedgerSnapshot;
struct TransactionColorOption;

/// The colour of a kind of entry in these books, as the member or the company chose it.
ThemeColor entryKindColor(std::string_view kind, const LedgerSnapshot& snapshot);

/// A colour of the palette.
ThemeColor paletteColor(const TransactionColorOption& option);
