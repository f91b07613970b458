#include "LedgerCore/Client/Snapshots/AccessReply.h"

#include <string>
#include <utility>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Company.h"

namespace AccessReply {

/// The one member that tells the two replies apart.
struct StatusProbe {
    std::optional<std::string> status;
};
BOOST_DESCRIBE_STRUCT(StatusProbe, (), (status))

}

std::optional<CompanyRegistrationResponse> AccessReply::decode(SplitReply reply)
{
    const auto probe = Json::decode<StatusProbe>(reply.rest);
    if (probe && probe->status == ApprovalStatus::pending) {
        auto pending = Json::decode<PendingCompanyRegistration>(reply.rest);
        if (!pending || pending->applicationID.empty() || pending->companyName.empty() || pending->email.empty())
            return std::nullopt;
        return CompanyRegistrationResponse{std::move(*pending)};
    }
    auto session = Json::decode<AuthResponse>(reply.rest);
    if (!session || !reply.complete(session->snapshot))
        return std::nullopt;
    return CompanyRegistrationResponse{std::move(*session)};
}

std::optional<AuthResponse> AccessReply::decodeOpened(SplitReply reply, std::string token)
{
    if (auto session = Json::decode<AuthResponse>(reply.rest))
        return reply.complete(session->snapshot) ? std::optional{std::move(*session)} : std::nullopt;
    auto snapshot = Json::decode<LedgerSnapshot>(reply.rest);
    if (!snapshot || !reply.complete(*snapshot))
        return std::nullopt;
    return AuthResponse{.token = std::move(token), .snapshot = std::move(*snapshot)};
}
