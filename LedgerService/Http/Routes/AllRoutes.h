#pragma once

#include <span>

#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// Everything that the service can be asked, one source file for each family.
std::span<const Route> allRoutes();

}
