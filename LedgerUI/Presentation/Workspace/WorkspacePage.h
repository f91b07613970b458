#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The pages of the workspace, in the order of the side bar.
enum class WorkspacePage { summary, ledger, reports, accounts, dividends, company };

/// What the shell knows of a page before it makes it. Its keys follow from its place among those that are shown.
struct PageDescriptor {
    WorkspacePage page;
    std::string_view name; // of its controls, and its row of workspaceWords()
    std::string_view glyph;
    bool (*isShownIn)(const LedgerSnapshot& snapshot); // to its member
};

namespace WorkspacePages {

/// Every page, in the order of the side bar.
std::span<const PageDescriptor> all();
const PageDescriptor& of(WorkspacePage page);

/// The pages of the snapshot's member, in the order of `all`. Exactly one of summary and reports is among them.
std::vector<WorkspacePage> visible(const LedgerSnapshot& snapshot);

}
