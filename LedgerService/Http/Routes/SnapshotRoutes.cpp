#include <array>

#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

namespace {

Outcome snapshot(const MemberCall& call)
{
    return SnapshotReply{.reader = call.owner(), .beside = {}};
}

constexpr std::array routes{
    Route{"GET", "/v1/snapshot", Reading{snapshot}},
};

}

std::span<const Route> RouteFamilies::snapshot()
{
    return routes;
}

}
