#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

#include <string_view>

namespace {

bool maySee(const Member& member, std::string_view permission)
{
    if (!member.active)
        return false;
    if (member.permissions)
        return member.hasPermission("manageCompany") || member.hasPermission(permission);
    return member.role == "owner" || member.role == "admin";
}

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
        maySee(member, "viewCapital") && (contributionsEnabled(snapshot) || hasRecords(snapshot.capital));
    const bool dividends =
        maySee(member, "viewDividends") && (dividendsEnabled(snapshot) || hasRecords(snapshot.dividends));

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
