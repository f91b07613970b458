#include <array>

#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

namespace {

/// The process runs and takes requests; nothing is said of the database.
Outcome live(const OpenCall&)
{
    return okReply();
}

constexpr std::array routes{
    Route{"GET", "/health/live", live, Lane::immediate},
};

}

std::span<const Route> RouteFamilies::health()
{
    return routes;
}

}
