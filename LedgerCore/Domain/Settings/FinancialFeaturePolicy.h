#pragma once

#include <optional>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The tabs of the capital screen, in the order in which they stand.
enum class CapitalModuleTab { overview, contributions, dividends };

/// Which of the owners'-capital features a company has switched on, and which of them a member is shown. Books
/// without financial settings have both on.
namespace FinancialFeaturePolicy {

bool contributionsEnabled(const LedgerSnapshot& snapshot);
bool dividendsEnabled(const LedgerSnapshot& snapshot);

/// The tabs shown to the current member, in their order. A feature that is off stays readable while it has records;
/// the overview is shown beside any other tab.
std::vector<CapitalModuleTab> activeTabs(const LedgerSnapshot& snapshot);

/// Whether there is any tab to show.
bool showsCapitalNavigation(const LedgerSnapshot& snapshot);

/// Whether a section of the books is not kept out of the side bar. One that nobody has changed yet is listed, since its
/// first record has to be entered somewhere.
template <class State>
bool isSectionListed(const std::optional<State>& section)
{
    return !section || section->revision == 0 || section->showInSidebar;
}
/// Whether the side bar lists the capital screen: there is a tab whose section is listed.
bool isListedInSidebar(const LedgerSnapshot& snapshot);

}
