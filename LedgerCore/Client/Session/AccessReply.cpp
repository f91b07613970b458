#include "LedgerCore/Client/Session/AccessReply.h"

#include <string>
#include <utility>

#include "LedgerCore/Domain/Json/Json.h"

namespace AccessReply {

/// The one member that tells the two replies apart.
struct StatusProbe {
    std::optional<std::string> status;
};
BOOST_DESCRIBE_STRUCT(StatusProbe, (), (status))

}

std::optional<CompanyRegistrationResponse> AccessReply::decode(std::string_view text)
{
    const auto probe = Json::decode<StatusProbe>(text);
    if (probe && probe->status == "pending") {
        auto pending = Json::decode<PendingCompanyRegistration>(text);
        if (!pending || pending->applicationID.empty() || pending->companyName.empty() || pending->email.empty())
            return std::nullopt;
        return CompanyRegistrationResponse{std::move(*pending)};
    }
    auto session = Json::decode<AuthResponse>(text);
    if (!session)
        return std::nullopt;
    return CompanyRegistrationResponse{std::move(*session)};
}

std::optional<AuthResponse> AccessReply::decodeOpened(std::string_view text, std::string token)
{
    if (auto session = Json::decode<AuthResponse>(text))
        return std::move(*session);
    auto snapshot = Json::decode<LedgerSnapshot>(text);
    if (!snapshot)
        return std::nullopt;
    return AuthResponse{.token = std::move(token), .snapshot = std::move(*snapshot)};
}
