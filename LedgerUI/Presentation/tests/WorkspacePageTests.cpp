#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

struct PageCase {
    std::string name;
    PageAccess access;
    std::string pages;
};

void PrintTo(const PageCase& each, std::ostream* out)
{
    *out << each.name;
}

class VisiblePages : public testing::TestWithParam<PageCase> {};

}

TEST_P(VisiblePages, FollowTheMembersRights)
{
    std::string pages;
    for (const auto page : WorkspacePages::visible(GetParam().access))
        pages += (pages.empty() ? "" : " ") + std::string{WorkspacePages::name(page)};
    EXPECT_EQ(pages, GetParam().pages);
}

INSTANTIATE_TEST_SUITE_P(
    Members, VisiblePages,
    testing::Values(
        PageCase{"EmployeeWithoutRights", {.role = "employee"}, "summary ledger company"},
        PageCase{
            "EmployeeWithDividends", {.showsDividends = true, .role = "employee"}, "summary ledger dividends company"},
        PageCase{"FinanceWithoutCompanyView", {.role = "finance"}, "summary ledger accounts company"},
        PageCase{"PartnerWithoutCompanyView", {.role = "partner"}, "summary ledger accounts company"},
        PageCase{"ManagerWithoutCompanyView", {.canManage = true, .role = "admin"}, "summary ledger accounts company"},
        PageCase{"AdminWithoutRights", {.role = "admin"}, "summary ledger company"},
        PageCase{"CompanyViewAlone", {.canViewCompany = true, .role = "employee"}, "ledger reports accounts company"},
        PageCase{"Owner",
                 {.canViewCompany = true, .canManage = true, .showsDividends = true, .role = "owner"},
                 "ledger reports accounts dividends company"}),
    [](const auto& each) { return std::string{each.param.name}; });
