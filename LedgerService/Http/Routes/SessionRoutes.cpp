#include <array>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/Sessions/DemoSignIn.h"
#include "LedgerService/Identity/Sessions/SignIn.h"
#include "LedgerService/Identity/Sessions/SignOut.h"

namespace LedgerService {

namespace {

Outcome authResponse(std::expected<IssuedSession, Refusal> session)
{
    if (!session)
        return std::unexpected(std::move(session.error()));
    return sessionReply(*session);
}

Outcome login(const OpenCall& call, const Login& body)
{
    return authResponse(SignIn::withPassword(call.service, body.email, body.password, call.request.remote));
}

Outcome demo(const OpenCall& call, const DemoRequest& body)
{
    const auto locale = AppLanguage::locale(body.locale.value_or(""));
    return authResponse(DemoSignIn::as(call.service, locale, body.profile, call.request.remote));
}

Outcome logout(const OpenCall& call)
{
    if (auto refusal = SignOut::end(call.service, call.request.token, call.now))
        return std::unexpected(*std::move(refusal));
    return okReply();
}

constexpr std::array routes{
    Route{"POST", "/v1/auth/login", open<&login>, Lane::signIn},
    Route{"POST", "/v1/auth/logout", logout},
    Route{"POST", "/v1/demo", open<&demo>, Lane::signIn},
};

}

std::span<const Route> RouteFamilies::session()
{
    return routes;
}

}
