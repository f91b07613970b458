#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

/// Where on the page of capital and dividends a record stands.
struct CapitalPlace {
    CapitalModuleTab tab = CapitalModuleTab::overview;
    std::string currency = {};
    std::string date = {};      // empty where no period is to be looked for
    DividendChoice choice = {}; // on the tab of dividends
};

namespace CapitalPlaces {

/// Where what a link leads to stands; nothing while it is not in the books.
std::optional<CapitalPlace> placeOf(const PageLink& link, const LedgerSnapshot& snapshot);

/// Where a participant's settlement stands: among what the period lists, else the newest of all; nothing for who has
/// neither an allocation nor an advance in the currency.
std::optional<CapitalPlace> settlementOf(std::string_view participantID, const LedgerSnapshot& snapshot,
                                         const CapitalQuestion& question, std::string_view locale);

/// The days on which something was recorded of capital and dividends, for the grid of periods.
PeriodCounts countsOf(const LedgerSnapshot& snapshot);

}
