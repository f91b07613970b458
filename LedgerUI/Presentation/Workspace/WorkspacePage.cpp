#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

namespace {

bool toEverybody(const LedgerSnapshot& /*snapshot*/)
{
    return true;
}

bool toWhoSeesOnlyTheirOwn(const LedgerSnapshot& snapshot)
{
    return !MemberRights::canViewCompany(snapshot.currentMember);
}

bool toWhoSeesTheCompany(const LedgerSnapshot& snapshot)
{
    return MemberRights::canViewCompany(snapshot.currentMember);
}

bool toWhoLooksAfterAccounts(const LedgerSnapshot& snapshot)
{
    return MemberRights::canOpenAccounts(snapshot.currentMember);
}

constexpr std::array pages{
    PageDescriptor{WorkspacePage::summary, "summary", "person-lines-fill", toWhoSeesOnlyTheirOwn},
    PageDescriptor{WorkspacePage::ledger, "ledger", "journal-text", toEverybody},
    PageDescriptor{WorkspacePage::reports, "reports", "bar-chart", toWhoSeesTheCompany},
    PageDescriptor{WorkspacePage::accounts, "accounts", "bank", toWhoLooksAfterAccounts},
    PageDescriptor{WorkspacePage::dividends, "dividends", "pie-chart", FinancialFeaturePolicy::isListedInSidebar},
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

std::vector<WorkspacePage> WorkspacePages::visible(const LedgerSnapshot& snapshot)
{
    std::vector<WorkspacePage> shown;
    for (const auto& each : pages) {
        if (each.isShownIn(snapshot))
            shown.push_back(each.page);
    }
    return shown;
}
