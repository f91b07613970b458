#pragma once

#include <string>
#include <vector>

#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// What always holds in the capital and dividend sections and between them and the entries.
namespace SectionInvariants {

/// Everything that is wrong, in words; empty when both sections are whole.
std::vector<std::string> broken(const Books& books);

}

}
