#pragma once

#include <vector>

#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerService/Books/Demonstration/DemoIds.h"

namespace LedgerService {

/// The categories of the demonstration: a trading company's income and expenses on two levels, named in all languages.
namespace DemoCategories {

/// Keys such as "sales" and "sales.export" make the ids.
std::vector<Category> make(const DemoIds& ids);

}

}
