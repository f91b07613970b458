#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

bool hasRecords(const std::optional<CapitalState>& capital)
{
    return capital &&
           (!capital->contributions.empty() || !capital->baselines.empty() || !capital->ownershipVersions.empty());
}

bool hasRecords(const std::optional<DividendState>& dividends)
{
    return dividends && (!dividends->batches.empty() || !dividends->movements.empty());
}

}

bool FinancialFeaturePolicy::contributionsEnabled(const LedgerSnapshot& snapshot)
{
    return !snapshot.financialSettings || snapshot.financialSettings->contributionsEnabled;
}

bool FinancialFeaturePolicy::dividendsEnabled(const LedgerSnapshot& snapshot)
{
    return !snapshot.financialSettings || snapshot.financialSettings->dividendsEnabled;
}

std::vector<CapitalModuleTab> FinancialFeaturePolicy::activeTabs(const LedgerSnapshot& snapshot)
{
    const auto& member = snapshot.currentMember;
    const bool contributions =
        MemberRights::canOpenContributions(member) && (contributionsEnabled(snapshot) || hasRecords(snapshot.capital));
    const bool dividends =
        MemberRights::canOpenDividends(member) && (dividendsEnabled(snapshot) || hasRecords(snapshot.dividends));

    std::vector<CapitalModuleTab> tabs;
    if (contributions || dividends)
        tabs.push_back(CapitalModuleTab::overview);
    if (contributions)
        tabs.push_back(CapitalModuleTab::contributions);
    if (dividends)
        tabs.push_back(CapitalModuleTab::dividends);
    return tabs;
}

bool FinancialFeaturePolicy::showsCapitalNavigation(const LedgerSnapshot& snapshot)
{
    return !activeTabs(snapshot).empty();
}

bool FinancialFeaturePolicy::isListedInSidebar(const LedgerSnapshot& snapshot)
{
    return std::ranges::any_of(activeTabs(snapshot), [&](CapitalModuleTab tab) {
        return (tab == CapitalModuleTab::contributions && isSectionListed(snapshot.capital)) ||
               (tab == CapitalModuleTab::dividends && isSectionListed(snapshot.dividends));
    });
}
