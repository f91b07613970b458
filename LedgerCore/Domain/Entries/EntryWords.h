#pragma once

#include <string_view>

#include "LedgerCore/Domain/Text/WordTable.h"

/// The entry form's own labels, hints and notices, and the names of the currencies.
namespace EntryWords {

const WordTable& words();

/// The text of a key by the locale's plain prefix; the key itself when the table does not hold it.
std::string_view text(std::string_view key, std::string_view locale);

/// The localised name of a currency; the code itself for one that has none.
std::string_view currency(std::string_view code, std::string_view locale);

}
