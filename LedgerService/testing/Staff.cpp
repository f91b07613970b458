#include "LedgerService/testing/Staff.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

namespace {

Member find(Connection& connection, const std::string& memberID)
{
    auto member = MemberRepository::find(connection, "sample", memberID);
    require(member.has_value(), "the sample has this member");
    return *std::move(member);
}

}

void Staff::set(TestService& service, const std::string& memberID, const std::string& role,
                std::vector<std::string> permissions, std::vector<AccountGrant> grants)
{
    service.write([&](Connection& connection) {
        auto member = find(connection, memberID);
        member.role = role;
        member.active = true;
        member.permissions = std::move(permissions);
        member.accountGrants = std::move(grants);
        MemberRepository::write(connection, "sample", member);
    });
}

void Staff::joinTo(TestService& service, const std::string& memberID, const std::string& companyID,
                   const std::string& role)
{
    service.write([&](Connection& connection) {
        auto member = find(connection, memberID);
        member.id = memberID + "-too";
        member.role = role;
        member.permissions.emplace();
        member.accountGrants.emplace();
        MemberRepository::insert(connection, companyID, member, std::nullopt, "2026-02-01T08:00:00.000Z");
    });
}

AccountGrant Staff::every(const std::string& accountID)
{
    return {accountID, {AccountGrant::knownActions.begin(), AccountGrant::knownActions.end()}};
}

void Staff::appoint(TestService& service)
{
    auto permissions = std::vector<std::string>{Permission::all.begin(), Permission::all.end()};
    std::erase(permissions, std::string{Permission::viewCompany});
    std::vector<AccountGrant> grants;
    for (const auto* account : {"bank", "branch", "refunds", "vault", "closed", "float"})
        grants.push_back(every(account));
    set(service, "mira", "owner", std::move(permissions), std::move(grants));
    set(service, "guest", "admin", {"manageCompany"}, {{"bank", {"view", "income"}}});
}

}
