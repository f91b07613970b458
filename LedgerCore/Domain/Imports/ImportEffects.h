#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"

class VisibleBooks;

/// What a plan does to one account in one currency, in minor units.
struct ImportEffect {
    std::string accountID;
    std::string currency;
    std::int64_t before = 0;
    std::int64_t after = 0;

    bool operator==(const ImportEffect&) const = default;
};

namespace ImportEffects {

/// How many entries of the plan the books hold already: a visible entry bears their identifier.
std::size_t recordedBefore(const LedgerImportPlan& plan, const VisibleBooks& books);

/// The balances that change, in the order of the accounts and of their currencies. What is recorded already changes
/// nothing. A balance that would leave the range of 64 bits stays as it was before the entry that takes it there:
/// such a plan is refused by its trial.
std::vector<ImportEffect> of(const LedgerImportPlan& plan, const VisibleBooks& books);

}
