#pragma once

#include <array>
#include <string_view>
#include <vector>

/// The pages of the workspace, in the order of the side bar.
enum class WorkspacePage { summary, ledger, reports, accounts, dividends, company };

/// What decides which pages a member sees.
struct PageAccess {
    bool canViewCompany = false;
    bool canOpenAccounts = false;
    bool showsDividends = false;
};

namespace WorkspacePages {

inline constexpr std::array<WorkspacePage, 6> all{WorkspacePage::summary,   WorkspacePage::ledger,
                                                  WorkspacePage::reports,   WorkspacePage::accounts,
                                                  WorkspacePage::dividends, WorkspacePage::company};

/// "summary", "ledger", ...
std::string_view name(WorkspacePage page);

/// The pages of a member, in the order of `all`. Exactly one of summary and reports is among them.
std::vector<WorkspacePage> visible(const PageAccess& access);

}
