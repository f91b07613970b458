#include <array>

#include "LedgerService/Http/Conditions.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

std::expected<SnapshotReply, Refusal> snapshot(const MemberCall& call)
{
    return SnapshotReply{.reader = call.owner(), .asked = Conditions::snapshotAsked(call.request), .beside = {}};
}

constexpr std::array routes{
    Route{"GET", "/v1/snapshot", reading<&snapshot>},
};

}

std::span<const Route> RouteFamilies::snapshot()
{
    return routes;
}

}
