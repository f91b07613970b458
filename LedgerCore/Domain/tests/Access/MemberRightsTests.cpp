#include "LedgerCore/Domain/Access/MemberRights.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Texts = std::optional<std::vector<std::string>>;

struct Right {
    std::string_view name;
    bool (*asked)(const Member&);
};

/// Every right under the name by which the cases below list it.
constexpr std::array rights{
    Right{"viewCompany", MemberRights::canViewCompany},
    Right{"manage", MemberRights::canManage},
    Right{"export", MemberRights::canExport},
    Right{"accounts", MemberRights::canOpenAccounts},
    Right{"viewCapital", MemberRights::canViewCapital},
    Right{"postCapital", MemberRights::canPostCapital},
    Right{"correctCapital", MemberRights::canCorrectCapital},
    Right{"exportCapital", MemberRights::canExportCapital},
    Right{"manageCapital", MemberRights::canManageCapital},
    Right{"seeCapital", MemberRights::canSeeCapital},
    Right{"seeDividends", MemberRights::canSeeDividends},
    Right{"manageDividends", MemberRights::canManageDividends},
    Right{"settle", MemberRights::canSettleDividends},
    Right{"correctDividends", MemberRights::canCorrectDividends},
    Right{"moveDividends", MemberRights::canMoveDividendMoney},
    Right{"exportDividends", MemberRights::canExportDividends},
    Right{"copyOwnership", MemberRights::canCopyOwnershipToDividends},
    Right{"contributionsTab", MemberRights::canOpenContributions},
    Right{"dividendsTab", MemberRights::canOpenDividends},
    Right{"receipts", MemberRights::canListReceipts},
    Right{"auditTrail", MemberRights::canReadAuditTrail},
};

std::string rightsOf(const Member& member)
{
    std::string held;
    for (const auto& right : rights) {
        if (right.asked(member))
            held += (held.empty() ? "" : " ") + std::string{right.name};
    }
    return held;
}

struct RightsCase {
    const char* name;
    const char* role;
    Texts permissions;
    std::string held;
};

class Rights : public testing::TestWithParam<RightsCase> {};

TEST_P(Rights, AreThoseOfThePermissionsOrElseOfTheRole)
{
    auto member = SnapshotBuilder::person("m", "Mira", GetParam().role);
    member.permissions = GetParam().permissions;
    EXPECT_EQ(rightsOf(member), GetParam().held);
    member.active = false;
    EXPECT_EQ(rightsOf(member), "");
}

INSTANTIATE_TEST_SUITE_P(
    Members, Rights,
    testing::Values(
        RightsCase{"OwnerOfOld",
                   "owner",
                   {},
                   "manage accounts manageCapital seeCapital seeDividends manageDividends settle correctDividends "
                   "contributionsTab dividendsTab receipts auditTrail"},
        RightsCase{"AdministratorOfOld", "admin", {}, "contributionsTab dividendsTab receipts"},
        RightsCase{"EmployeeOfOld", "employee", {}, ""},
        // An owner manages the company whatever is listed, but dividends go by the list.
        RightsCase{"OwnerWithAnEmptyList", "owner", {{}}, "manage accounts manageCapital seeCapital auditTrail"},
        RightsCase{"AdministratorWithAnEmptyList", "admin", {{}}, ""},
        RightsCase{"FinanceWithAnEmptyList", "finance", {{}}, "accounts"},
        RightsCase{"PartnerWithAnEmptyList", "partner", {{}}, "accounts"},
        RightsCase{"ViewsTheCompany", "employee", {{"viewCompany"}}, "viewCompany accounts receipts"},
        RightsCase{"Manages",
                   "employee",
                   {{"manageCompany"}},
                   "manage accounts manageCapital seeCapital seeDividends manageDividends contributionsTab "
                   "dividendsTab receipts"},
        RightsCase{"Exports", "employee", {{"exportData"}}, "export"},
        RightsCase{"Capital",
                   "employee",
                   {{"viewCapital", "postCapital", "correctCapital", "exportCapital"}},
                   "viewCapital postCapital correctCapital exportCapital seeCapital contributionsTab"},
        RightsCase{"SeesDividends", "employee", {{"viewDividends"}}, "seeDividends dividendsTab"},
        RightsCase{"PostsDividendsUnseen", "employee", {{"postDividends"}}, ""},
        RightsCase{"PostsDividends",
                   "employee",
                   {{"viewDividends", "postDividends"}},
                   "seeDividends settle correctDividends moveDividends dividendsTab"},
        RightsCase{"ExportsDividends",
                   "employee",
                   {{"viewDividends", "exportData"}},
                   "export seeDividends exportDividends dividendsTab"},
        RightsCase{"CopiesOwnership",
                   "employee",
                   {{"viewCapital", "manageCompany", "viewDividends"}},
                   "manage accounts viewCapital manageCapital seeCapital seeDividends manageDividends copyOwnership "
                   "contributionsTab dividendsTab receipts"}),
    [](const auto& each) { return std::string{each.param.name}; });

}
