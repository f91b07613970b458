#pragma once

#include <span>

namespace LedgerService {

class Connection;

/// What every step does, step 1 first. Foreign keys are not enforced meanwhile, so that tables can be made anew.
namespace MigrationSteps {

struct Step {
    std::span<const char* const> statements;
    void (*then)(Connection&) = nullptr; // once the statements have run
};

std::span<const Step> all();

}

}
