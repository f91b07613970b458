#pragma once

#include <string>
#include <vector>

#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// What always holds in a company's books, whichever commands made them.
namespace BookInvariants {

/// Everything that is wrong with these books, in words; empty when they are whole. Takes time in proportion to the
/// number of entries.
std::vector<std::string> broken(const Books& books);

}

}
