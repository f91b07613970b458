#include "LedgerService/Storage/Rows/People/MemberRepository.h"

#include "LedgerService/ArrivingCompany.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("m.id", &Member::id),
                          column("m.user_id", &Member::userID),
                          column("m.name", &Member::name),
                          foreignColumn("u.email", &Member::email),
                          column("m.role", &Member::role),
                          column("m.account_ids", &Member::accountIDs),
                          column("m.locale", &Member::locale),
                          column("m.active", &Member::active),
                          column("m.permissions", &Member::permissions),
                          column("m.account_grants", &Member::accountGrants),
                          column("m.selected_category_ids", &Member::selectedCategoryIDs),
                          column("m.transaction_colors", &Member::transactionColors)};

const auto selectMember =
    columns.select("FROM members m JOIN users u ON u.id = m.user_id WHERE m.company_id = :company AND m.id = :member");
const auto selectByEmail = columns.select(
    "FROM members m JOIN users u ON u.id = m.user_id WHERE m.company_id = :company AND u.email = :email");
const auto selectMembers =
    columns.select("FROM members m JOIN users u ON u.id = m.user_id WHERE m.company_id = :company ORDER BY m.position");
const auto insertMember =
    columns.insert("members", {{"company_id", ":company"},
                               {"position", "(SELECT COUNT(*) FROM members WHERE company_id = :company)"},
                               {"demo_profile", ":profile"},
                               {"created_at", ":created"}});
const auto updateMember = columns.update("members", "company_id = :company AND id = :id");

const auto selectHolder = columns.select(R"sql(,
           c.id, c.approval_status, CASE WHEN c.demo_locale IS NULL THEN 0 ELSE 1 END, c.time_zone, c.last_sequence
    FROM sessions s JOIN members m ON m.company_id = s.company_id AND m.id = s.member_id
        JOIN users u ON u.id = m.user_id JOIN companies c ON c.id = s.company_id
    WHERE s.token_hash = :hash AND s.revoked_at IS NULL AND s.expires_at > :now)sql");

constexpr auto selectMemberships = R"sql(
    SELECT m.company_id, m.id, m.active, c.approval_status, CASE WHEN c.demo_locale IS NULL THEN 0 ELSE 1 END
    FROM members m JOIN companies c ON c.id = m.company_id
    WHERE m.user_id = :user
    ORDER BY m.created_at, m.company_id
)sql";

constexpr auto selectDemoMember = R"sql(
    SELECT id FROM members WHERE company_id = :company AND demo_profile = :profile
)sql";

}

std::optional<Member> MemberRepository::find(Connection& connection, std::string_view companyID,
                                             std::string_view memberID)
{
    Query query{connection, selectMember};
    query.bind("company", companyID).bind("member", memberID);
    return recordOf<Member>(query, columns);
}

std::optional<Member> MemberRepository::findByEmail(Connection& connection, std::string_view companyID,
                                                    std::string_view email)
{
    Query query{connection, selectByEmail};
    query.bind("company", companyID).bind("email", email);
    return recordOf<Member>(query, columns);
}

std::optional<TokenHolder> MemberRepository::byToken(Connection& connection, std::string_view tokenHash,
                                                     std::string_view now, const TokenHolder* known)
{
    TokenHolder holder;
    Query query{connection, selectHolder};
    RowReader<Member, decltype(columns)> member{query, columns};
    query.into(holder.companyID).into(holder.approvalStatus).into(holder.demonstration).into(holder.timeZone);
    if (!query.into(holder.lastChange).bind("hash", tokenHash).bind("now", now).next())
        return std::nullopt;
    holder.storedMember = member.stored();
    const bool same = known && known->storedMember == holder.storedMember;
    holder.member = same ? known->member : std::make_shared<const Member>(std::move(member.record()));
    return holder;
}

std::vector<Member> MemberRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectMembers};
    query.bind("company", companyID);
    return recordsOf<Member>(query, columns);
}

std::vector<Membership> MemberRepository::memberships(Connection& connection, std::string_view userID)
{
    std::vector<Membership> all;
    Membership each;
    Query query{connection, selectMemberships};
    query.bind("user", userID).into(each.companyID).into(each.memberID).into(each.active);
    query.into(each.approvalStatus).into(each.demonstration);
    while (query.next()) {
        if (!ArrivingCompany::is(each.approvalStatus))
            all.push_back(each);
    }
    return all;
}

std::optional<std::string> MemberRepository::demoMemberID(Connection& connection, std::string_view companyID,
                                                          std::string_view profile)
{
    std::string id;
    Query query{connection, selectDemoMember};
    query.bind("company", companyID).bind("profile", profile).into(id);
    return query.next() ? std::optional{id} : std::nullopt;
}

void MemberRepository::insert(Connection& connection, std::string_view companyID, const Member& member,
                              const std::optional<std::string>& demoProfile, std::string_view createdAt)
{
    Query query{connection, insertMember};
    columns.bind(query.bind("company", companyID), member);
    query.bind("profile", demoProfile).bind("created", createdAt).run();
}

void MemberRepository::write(Connection& connection, std::string_view companyID, const Member& member)
{
    Query query{connection, updateMember};
    columns.bind(query.bind("company", companyID), member);
    query.run();
}
}
