#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

struct PageCase {
    std::string name;
    std::string role;
    std::vector<std::string> permissions;
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
    auto member = SnapshotBuilder::person("m1", "Mira", GetParam().role);
    member.permissions = GetParam().permissions;
    std::string pages;
    for (const auto page : WorkspacePages::visible(snapshot().currentMember(member).build()))
        pages += (pages.empty() ? "" : " ") + std::string{WorkspacePages::of(page).name};
    EXPECT_EQ(pages, GetParam().pages);
}

INSTANTIATE_TEST_SUITE_P(
    Members, VisiblePages,
    testing::Values(
        PageCase{"WithoutRights", "employee", {}, "summary ledger company"},
        PageCase{"WithDividends", "employee", {"viewDividends"}, "summary ledger dividends company"},
        PageCase{"Finance", "finance", {}, "summary ledger accounts company"},
        PageCase{"Partner", "partner", {}, "summary ledger accounts company"},
        PageCase{"CompanyView", "employee", {"viewCompany"}, "ledger reports accounts company"},
        PageCase{"Management", "employee", {"manageCompany"}, "summary ledger accounts dividends company"},
        PageCase{"Everything", "admin", {"viewCompany", "manageCompany"}, "ledger reports accounts dividends company"}),
    [](const auto& each) { return std::string{each.param.name}; });
