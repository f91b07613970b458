#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

#include <algorithm>
#include <iterator>

namespace {

bool isVisible(WorkspacePage page, const PageAccess& access)
{
    switch (page) {
    case WorkspacePage::summary:
        return !access.canViewCompany;
    case WorkspacePage::reports:
        return access.canViewCompany;
    case WorkspacePage::accounts:
        return access.canOpenAccounts;
    case WorkspacePage::dividends:
        return access.showsDividends;
    case WorkspacePage::ledger:
    case WorkspacePage::company:
        return true;
    }
    return false;
}

}

std::string_view WorkspacePages::name(WorkspacePage page)
{
    constexpr std::array<std::string_view, all.size()> names{"summary",  "ledger",    "reports",
                                                             "accounts", "dividends", "company"};
    return names[static_cast<std::size_t>(page)];
}

std::vector<WorkspacePage> WorkspacePages::visible(const PageAccess& access)
{
    std::vector<WorkspacePage> pages;
    std::ranges::copy_if(all, std::back_inserter(pages), [&](WorkspacePage page) { return isVisible(page, access); });
    return pages;
}
