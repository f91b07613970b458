#include "LedgerCore/Domain/Records/Member.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Texts = std::optional<std::vector<std::string>>;
using Grants = std::optional<std::vector<AccountGrant>>;

struct AccessCase {
    const char* name;
    const char* role;
    Texts permissions;
    Grants grants;
    std::vector<std::string> accountIDs;
    bool views;        // account "a"
    bool recordsMoney; // income on account "a"
    bool records;      // at all
};

class MemberAccess : public testing::TestWithParam<AccessCase> {
protected:
    static Member member()
    {
        auto member = SnapshotBuilder::person("m", "Mira", GetParam().role);
        member.permissions = GetParam().permissions;
        member.accountGrants = GetParam().grants;
        member.accountIDs = GetParam().accountIDs;
        return member;
    }
};

TEST_P(MemberAccess, FollowsPermissionsThenGrantsThenTheOldList)
{
    EXPECT_EQ(member().can("view", "a"), GetParam().views);
    EXPECT_EQ(member().can("income", "a"), GetParam().recordsMoney);
    EXPECT_EQ(member().canRecord(), GetParam().records);
}

TEST_P(MemberAccess, EndsWithDeactivation)
{
    auto former = member();
    former.active = false;
    EXPECT_FALSE(former.can("view", "a") || former.can("income", "a") || former.canRecord());
}

TEST_P(MemberAccess, NeverCoversUnknownActionsOrNamelessAccounts)
{
    EXPECT_FALSE(member().can("approve", "a"));
    EXPECT_FALSE(member().can("", "a"));
    EXPECT_FALSE(member().can("View", "a"));
    EXPECT_FALSE(member().can("view", ""));
    EXPECT_FALSE(member().can("income", ""));
}

INSTANTIATE_TEST_SUITE_P(
    Members, MemberAccess,
    testing::Values(
        AccessCase{"OwnerOfOld", "owner", {}, {}, {}, true, false, false},
        AccessCase{"AdministratorOfOld", "admin", {}, {}, {}, true, false, false},
        AccessCase{"EmployeeOfOld", "employee", {}, {}, {"a"}, true, false, false},
        AccessCase{"EmployeeOfOldElsewhere", "employee", {}, {}, {"b"}, false, false, false},
        AccessCase{"OwnerWithOtherPermissions", "owner", {{"exportData"}}, {}, {}, false, false, false},
        AccessCase{"OwnerWithOtherPermissionsAndList", "owner", {{"exportData"}}, {}, {"a"}, true, false, false},
        AccessCase{"ViewsCompany", "employee", {{"viewCompany"}}, {{}}, {}, true, false, false},
        AccessCase{"GrantsReplaceTheList", "employee", {}, {{}}, {"a"}, false, false, false},
        AccessCase{"GrantsReplaceTheListUnderPermissions", "employee", {{}}, {{}}, {"a"}, false, false, false},
        AccessCase{"OwnerOfOldWithGrants", "owner", {}, {{{"b", {"income"}}}}, {}, true, false, true},
        AccessCase{
            "TwoGrantsForOneAccount", "employee", {}, {{{"a", {"view"}}, {"a", {"income"}}}}, {}, true, true, true},
        AccessCase{"RecordsUnseen", "employee", {}, {{{"a", {"income"}}}}, {}, false, true, true},
        AccessCase{"OnlyReceives",
                   "employee",
                   {},
                   {{{"a", {"view", "transferIn", "correct", "distribution", "capitalContribution"}}}},
                   {},
                   true,
                   false,
                   false},
        AccessCase{"GrantOnNothing", "employee", {}, {{{"", {"view", "income"}}}}, {}, false, false, false}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Member, HasOnlyThePermissionsThatAreListed)
{
    auto owner = SnapshotBuilder::person("m", "Mira", "owner");
    EXPECT_FALSE(owner.hasPermission("viewCompany"));
    owner.permissions = {{"exportData"}};
    EXPECT_TRUE(owner.hasPermission("exportData"));
    EXPECT_FALSE(owner.hasPermission("export"));
}

}
