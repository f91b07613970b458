#include <array>

#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/Members/Members.h"

namespace LedgerService {

namespace {

std::expected<NewSnapshot, Refusal> change(const MemberCall& call, const MemberUpdate& body)
{
    return snapshotUnless(Members::change(actOf(call), call.parameters.front(), body));
}

std::expected<NewSnapshot, Refusal> rename(const MemberCall& call, const ProfileUpdate& body)
{
    return snapshotUnless(Members::rename(actOf(call), body));
}

std::expected<NewSnapshot, Refusal> select(const MemberCall& call, const CategorySelection& body)
{
    return snapshotUnless(Members::select(actOf(call), body));
}

constexpr std::array routes{
    Route{"PATCH", "/v1/members/{id}", writing<&change>},
    Route{"PATCH", "/v1/me/profile", writing<&rename>},
    Route{"PATCH", "/v1/me/category-preferences", writing<&select>},
};

}

std::span<const Route> RouteFamilies::members()
{
    return routes;
}

}
