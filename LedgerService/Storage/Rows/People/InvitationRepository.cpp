#include "LedgerService/Storage/Rows/People/InvitationRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

/// A field of what the invitation offers.
constexpr auto term(auto Invite::* field)
{
    return [field](auto& invitation) -> auto& { return invitation.terms.*field; };
}

constexpr Columns columns{column("company_id", &Invitation::companyID),
                          column("id", &Invitation::id),
                          column("invited_by", &Invitation::invitedBy),
                          column("name", term(&Invite::name)),
                          column("email", term(&Invite::email)),
                          column("role", term(&Invite::role)),
                          column("account_ids", term(&Invite::accountIDs)),
                          column("permissions", term(&Invite::permissions)),
                          column("account_grants", term(&Invite::accountGrants)),
                          column("created_at", &Invitation::createdAt),
                          column("expires_at", &Invitation::expiresAt),
                          column("accepted_at", &Invitation::acceptedAt),
                          column("revoked_at", &Invitation::revokedAt)};

const auto selectInvitation = columns.select("FROM invitations WHERE company_id = :company AND id = :invitation");
const auto selectByCode = columns.select("FROM invitations WHERE code_hash = :hash");
const auto selectOpen = columns.select("FROM invitations WHERE company_id = :company AND accepted_at IS NULL AND "
                                       "revoked_at IS NULL ORDER BY created_at, id");
const auto insertInvitation = columns.insert("invitations", {{"code_hash", ":hash"}});

constexpr auto countRecent = R"sql(
    SELECT COUNT(*) FROM invitations WHERE company_id = :company AND created_at > :since
)sql";

constexpr auto updateAccepted = R"sql(
    UPDATE invitations SET accepted_at = :now WHERE company_id = :company AND id = :invitation
)sql";

constexpr auto updateRevoked = R"sql(
    UPDATE invitations SET revoked_at = :now WHERE company_id = :company AND id = :invitation
)sql";

constexpr auto revokeOpen = R"sql(
    UPDATE invitations SET revoked_at = :now
    WHERE company_id = :company AND email = :email AND accepted_at IS NULL AND revoked_at IS NULL
)sql";

}

std::optional<Invitation> InvitationRepository::find(Connection& connection, std::string_view companyID,
                                                     std::string_view id)
{
    Query query{connection, selectInvitation};
    query.bind("company", companyID).bind("invitation", id);
    return recordOf<Invitation>(query, columns);
}

std::optional<Invitation> InvitationRepository::findByCode(Connection& connection, std::string_view codeHash)
{
    Query query{connection, selectByCode};
    query.bind("hash", codeHash);
    return recordOf<Invitation>(query, columns);
}

std::vector<Invitation> InvitationRepository::open(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectOpen};
    query.bind("company", companyID);
    return recordsOf<Invitation>(query, columns);
}

int InvitationRepository::countSince(Connection& connection, std::string_view companyID, std::string_view since)
{
    int count = 0;
    Query query{connection, countRecent};
    query.bind("company", companyID).bind("since", since).into(count).next();
    return count;
}

void InvitationRepository::insert(Connection& connection, const Invitation& invitation, std::string_view codeHash)
{
    Query query{connection, insertInvitation};
    columns.bind(query.bind("hash", codeHash), invitation);
    query.run();
}

void InvitationRepository::writeAccepted(Connection& connection, const Invitation& invitation, std::string_view now)
{
    Query query{connection, updateAccepted};
    query.bind("company", invitation.companyID).bind("invitation", invitation.id).bind("now", now).run();
}

void InvitationRepository::writeRevoked(Connection& connection, const Invitation& invitation, std::string_view now)
{
    Query query{connection, updateRevoked};
    query.bind("company", invitation.companyID).bind("invitation", invitation.id).bind("now", now).run();
}

void InvitationRepository::revokeFor(Connection& connection, std::string_view companyID, std::string_view email,
                                     std::string_view now)
{
    Query query{connection, revokeOpen};
    query.bind("company", companyID).bind("email", email).bind("now", now).run();
}

}
