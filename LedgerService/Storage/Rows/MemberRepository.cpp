#include "LedgerService/Storage/Rows/MemberRepository.h"

#include "LedgerService/Storage/Sql/JsonColumn.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectMember = R"sql(
    SELECT m.id, m.user_id, m.name, u.email, m.role, m.account_ids, m.locale, m.active, m.permissions,
           m.account_grants, m.selected_category_ids, m.transaction_colors
    FROM members m JOIN users u ON u.id = m.user_id
    WHERE m.company_id = :company AND m.id = :member
)sql";

constexpr auto selectMembers = R"sql(
    SELECT m.id, m.user_id, m.name, u.email, m.role, m.account_ids, m.locale, m.active, m.permissions,
           m.account_grants, m.selected_category_ids, m.transaction_colors
    FROM members m JOIN users u ON u.id = m.user_id
    WHERE m.company_id = :company
    ORDER BY m.position
)sql";

constexpr auto selectMemberships = R"sql(
    SELECT m.company_id, m.id, m.active, c.approval_status, CASE WHEN c.demo_locale IS NULL THEN 0 ELSE 1 END
    FROM members m JOIN companies c ON c.id = m.company_id
    WHERE m.user_id = :user
    ORDER BY m.created_at, m.company_id
)sql";

constexpr auto selectDemoMember = R"sql(
    SELECT id FROM members WHERE company_id = :company AND demo_profile = :profile
)sql";

constexpr auto insertMember = R"sql(
    INSERT INTO members (company_id, id, user_id, position, name, role, account_ids, locale, active, permissions,
                         account_grants, selected_category_ids, transaction_colors, demo_profile, created_at)
    VALUES (:company, :id, :user, (SELECT COUNT(*) FROM members WHERE company_id = :company), :name, :role,
            :account_ids, :locale, :active, :permissions, :grants, :categories, :colors, :profile, :created)
)sql";

/// Takes members out of a query with the columns of `selectMember`.
class MemberRow {
public:
    explicit MemberRow(Query& query) : m_query(query)
    {
        query.into(m_member.id).into(m_member.userID).into(m_member.name).into(m_member.email).into(m_member.role);
        query.into(m_accountIDs).into(m_member.locale).into(m_member.active).into(m_permissions).into(m_grants);
        query.into(m_categories).into(m_colors);
    }

    std::optional<Member> next()
    {
        if (!m_query.next())
            return std::nullopt;
        m_member.accountIDs = JsonColumn::read<std::vector<std::string>>(m_accountIDs);
        m_member.permissions = JsonColumn::read<std::vector<std::string>>(m_permissions);
        m_member.accountGrants = JsonColumn::read<std::vector<AccountGrant>>(m_grants);
        m_member.selectedCategoryIDs = JsonColumn::read<std::vector<std::string>>(m_categories);
        m_member.transactionColors = JsonColumn::read<TextMap>(m_colors);
        return m_member;
    }

private:
    Query& m_query;
    Member m_member;
    std::string m_accountIDs;
    std::optional<std::string> m_permissions;
    std::optional<std::string> m_grants;
    std::optional<std::string> m_categories;
    std::optional<std::string> m_colors;
};

}

std::optional<Member> MemberRepository::find(Connection& connection, std::string_view companyID,
                                             std::string_view memberID)
{
    Query query{connection, selectMember};
    query.bind("company", companyID).bind("member", memberID);
    return MemberRow{query}.next();
}

std::vector<Member> MemberRepository::all(Connection& connection, std::string_view companyID)
{
    std::vector<Member> members;
    Query query{connection, selectMembers};
    query.bind("company", companyID);
    MemberRow row{query};
    while (auto member = row.next())
        members.push_back(*std::move(member));
    return members;
}

std::vector<Membership> MemberRepository::memberships(Connection& connection, std::string_view userID)
{
    std::vector<Membership> all;
    Membership each;
    Query query{connection, selectMemberships};
    query.bind("user", userID).into(each.companyID).into(each.memberID).into(each.active);
    query.into(each.approvalStatus).into(each.demonstration);
    while (query.next())
        all.push_back(each);
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
    Query{connection, insertMember}
        .bind("company", companyID)
        .bind("id", member.id)
        .bind("user", member.userID)
        .bind("name", member.name)
        .bind("role", member.role)
        .bind("account_ids", Json::encode(member.accountIDs))
        .bind("locale", member.locale)
        .bind("active", member.active)
        .bind("permissions", JsonColumn::write(member.permissions))
        .bind("grants", JsonColumn::write(member.accountGrants))
        .bind("categories", JsonColumn::write(member.selectedCategoryIDs))
        .bind("colors", JsonColumn::write(member.transactionColors))
        .bind("profile", demoProfile)
        .bind("created", createdAt)
        .run();
}

}
