#include <array>

#include "LedgerService/Http/Conditions.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

namespace {

Outcome snapshot(const MemberCall& call)
{
    return SnapshotReply{.reader = call.owner(), .asked = Conditions::snapshotAsked(call.request), .beside = {}};
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
