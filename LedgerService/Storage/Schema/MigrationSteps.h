#pragma once

#include <span>

namespace LedgerService {

/// The statements of every step, step 1 first. They use only what SQLite and PostgreSQL share.
namespace MigrationSteps {

using Step = std::span<const char* const>;

std::span<const Step> all();

}

}
