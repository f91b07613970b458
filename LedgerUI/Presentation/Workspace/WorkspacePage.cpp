#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

#include <algorithm>
#include <array>

namespace {

bool toEverybody(const PageAccess& /*access*/)
{
    return true;
}

bool toWhoSeesOnlyTheirOwn(const PageAccess& access)
{
    return !access.canViewCompany;
}

bool toWhoSeesTheCompany(const PageAccess& access)
{
    return access.canViewCompany;
}

bool toWhoLooksAfterAccounts(const PageAccess& access)
{
    return access.canOpenAccounts;
}

bool toWhoIsShownCapital(const PageAccess& access)
{
    return access.showsDividends;
}

constexpr std::array pages{
    PageDescriptor{WorkspacePage::summary, "summary", "person-lines-fill", toWhoSeesOnlyTheirOwn},
    PageDescriptor{WorkspacePage::ledger, "ledger", "journal-text", toEverybody},
    PageDescriptor{WorkspacePage::reports, "reports", "bar-chart", toWhoSeesTheCompany},
    PageDescriptor{WorkspacePage::accounts, "accounts", "bank", toWhoLooksAfterAccounts},
    PageDescriptor{WorkspacePage::dividends, "dividends", "pie-chart", toWhoIsShownCapital},
    PageDescriptor{WorkspacePage::company, "company", "building", toEverybody},
};
static_assert(std::ranges::is_sorted(pages, {}, &PageDescriptor::page) &&
              pages.size() == static_cast<std::size_t>(WorkspacePage::company) + 1);

}

std::span<const PageDescriptor> WorkspacePages::all()
{
    return pages;
}

const PageDescriptor& WorkspacePages::of(WorkspacePage page)
{
    return pages[static_cast<std::size_t>(page)];
}

std::vector<WorkspacePage> WorkspacePages::visible(const PageAccess& access)
{
    std::vector<WorkspacePage> shown;
    for (const auto& each : pages) {
        if (each.isShownTo(access))
            shown.push_back(each.page);
    }
    return shown;
}
