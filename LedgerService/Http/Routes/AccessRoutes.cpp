#include <array>

#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/AccessFlow/AccessChallenges.h"
#include "LedgerService/Identity/AccessFlow/AccessCompletions.h"
#include "LedgerService/Identity/AccessFlow/PasswordChanging.h"

namespace LedgerService {

namespace {

Outcome start(const OpenCall& call, const AccessStart& body)
{
    const auto challenge = AccessChallenges::start(call.service, body, call.request.remote);
    if (!challenge)
        return std::unexpected(challenge.error());
    return Reply{.body = Json::encode(*challenge)};
}

Outcome verify(const OpenCall& call, const AccessCode& body)
{
    const auto verification = AccessChallenges::verify(call.service, body, call.request.remote);
    if (!verification)
        return std::unexpected(verification.error());
    return Reply{.body = Json::encode(*verification)};
}

Outcome complete(const OpenCall& call, const AccessCompletion& body)
{
    const auto session = AccessCompletions::complete(call.service, body, call.request.remote);
    if (!session)
        return std::unexpected(session.error());
    return sessionReply(*session);
}

Outcome changePassword(const OpenCall& call, const PasswordChange& body)
{
    if (auto refusal = PasswordChanging::change(call.service, call.request.token, body, call.request.remote))
        return std::unexpected(*std::move(refusal));
    return okReply();
}

constexpr std::array routes{
    Route{"POST", "/v1/auth/access/start", open<&start>, Lane::mail},
    Route{"POST", "/v1/auth/access/verify", open<&verify>},
    Route{"POST", "/v1/auth/access/complete", open<&complete>, Lane::signIn},
    Route{"POST", "/v1/me/password", open<&changePassword>, Lane::signIn},
};

}

std::span<const Route> RouteFamilies::access()
{
    return routes;
}

}
