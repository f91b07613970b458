#include <array>

#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/AccessFlow/PersonRegistration.h"

namespace LedgerService {

namespace {

Outcome registerPerson(const OpenCall& call, const Registration& body)
{
    const auto registered = PersonRegistration::carryOut(call.service, body, call.request.remote);
    if (!registered)
        return std::unexpected(registered.error());
    if (const auto* pending = std::get_if<PendingCompanyRegistration>(&*registered))
        return Reply{.body = Json::encode(*pending)};
    return sessionReply(std::get<IssuedSession>(*registered));
}

constexpr std::array routes{
    Route{"POST", "/v1/auth/register", open<&registerPerson>, Lane::signIn},
};

}

std::span<const Route> RouteFamilies::registration()
{
    return routes;
}

}
