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
        pages += (pages.empty() ? "" : " ") + std::string{WorkspacePages::of(page).name};
    EXPECT_EQ(pages, GetParam().pages);
}

INSTANTIATE_TEST_SUITE_P(
    Members, VisiblePages,
    testing::Values(
        PageCase{"WithoutRights", {}, "summary ledger company"},
        PageCase{"WithDividends", {.showsDividends = true}, "summary ledger dividends company"},
        PageCase{"WithAccounts", {.canOpenAccounts = true}, "summary ledger accounts company"},
        PageCase{"CompanyView", {.canViewCompany = true, .canOpenAccounts = true}, "ledger reports accounts company"},
        PageCase{"Everything",
                 {.canViewCompany = true, .canOpenAccounts = true, .showsDividends = true},
                 "ledger reports accounts dividends company"}),
    [](const auto& each) { return std::string{each.param.name}; });
