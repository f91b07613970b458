#pragma once

#include <string>
#include <string_view>

#include "LedgerService/Books/Books.h"
#include "LedgerService/Books/Demonstration/DemoIds.h"

namespace LedgerService {

/// Two years of a trading company's everyday entries, and of what its owners put in and take out.
namespace DemoHistory {

/// The first day of the books that end on `lastDay`: the first of its month, two years earlier.
std::string firstDay(std::string_view lastDay);

/// Records everything up to `lastDay` in books that hold members, accounts and categories but no entry yet. Each entry
/// is decided by the rules of the books, on its own day, by the member who would record it.
void write(Books& books, const DemoIds& ids, std::string_view locale, std::string_view lastDay);

}

}
