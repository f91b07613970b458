#include <array>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/Companies/OwnCompanies.h"
#include "LedgerService/Identity/Members/Invitations.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"

namespace LedgerService {

namespace {

std::expected<InviteResponse, Refusal> invite(const MemberCall& call, const Invite& body)
{
    auto made = Invitations::invite(actOf(call), body);
    if (!made)
        return std::unexpected(std::move(made.error()));
    return InviteResponse{std::move(made->code)};
}

std::expected<InvitationListResponse, Refusal> pending(const MemberCall& call)
{
    return Invitations::pending(actOf(call));
}

std::expected<InvitationListResponse, Refusal> revoke(const MemberCall& call)
{
    return Invitations::revoke(actOf(call), call.parameters.front());
}

std::expected<InvitationPreview, Refusal> preview(const MemberCall& call, const InvitationLookup& body)
{
    auto invitation = Invitations::find(call.connection, body.code, call.member.email, call.now);
    if (!invitation) {
        auto joined = Invitations::joined(call.connection, body.code, call.member);
        if (!joined)
            return std::unexpected(std::move(invitation.error()));
        invitation = *std::move(joined);
    }
    const auto company = CompanyRepository::find(call.connection, invitation->companyID);
    return InvitationPreview{company.value_or(Company{}).name, invitation->terms.email};
}

std::expected<IssuedSession, Refusal> accept(const MemberCall& call, const InvitationAcceptance& body)
{
    return OwnCompanies::join({actOf(call), call.service}, body.code, body.locale);
}

constexpr std::array routes{
    Route{"GET", "/v1/invites", reading<&pending>},        Route{"POST", "/v1/invites", writing<&invite>},
    Route{"POST", "/v1/invites/accept", writing<&accept>}, Route{"POST", "/v1/invites/{id}/revoke", writing<&revoke>},
    Route{"POST", "/v1/me/invitation", reading<&preview>},
};

}

std::span<const Route> RouteFamilies::invitations()
{
    return routes;
}

}
