#include <array>

#include "LedgerUI/testing/Sweep.h"
#include "LedgerUI/tests/CapitalUnderTest.h"

namespace {

void openOverview(WindowUnderTest& under)
{
    openBooks(under, capitalSample());
}

void openContributions(WindowUnderTest& under)
{
    openOverview(under);
    under.screen.keys("Ctrl+Tab");
    under.screen.waitFor("contributionsTable");
}

void openDividends(WindowUnderTest& under, const CapitalSample& sample = capitalSample())
{
    openBooks(under, sample);
    under.screen.keys("Ctrl+Tab Ctrl+Tab");
    under.screen.waitFor("batchesTable");
}

/// The advances instead of an allocation.
void openAdvances(WindowUnderTest& under)
{
    openDividends(under);
    under.screen.pressRow("batchesTable", "Advances");
    under.screen.waitFor("returnAdvanceButton");
}

void openForm(WindowUnderTest& under, const char* button)
{
    under.screen.press(button);
    under.screen.waitForFocus("recordForm");
}

/// With every message that the form has before anything is sent.
void openInVain(WindowUnderTest& under, const char* button)
{
    openForm(under, button);
    under.screen.keys("Ctrl+Return");
}

void openPayment(WindowUnderTest& under)
{
    openDividends(under);
    under.screen.pressRow("batchesTable", "2026 Q3");
    openForm(under, "payButton");
}

/// Somebody else has changed the shares since the form was opened.
void meetNewerShares(WindowUnderTest& under)
{
    openOverview(under);
    openForm(under, "ownershipButton");
    under.screen.fill("recordRow0", "9");
    auto newer = capitalSample();
    newer.ownership("2026-11-20", {{"c1", "60"}, {"c2", "30"}, {"c3", "10"}});
    serveBooks(under, newer);
    std::ignore = resultOf(under.store.refresh(false));
    under.screen.waitFor("recordReload");
}

void loadNewerShares(WindowUnderTest& under)
{
    meetNewerShares(under);
    under.screen.press("recordReload");
    under.screen.waitForText("Newest: 60");
}

void loseTheReply(WindowUnderTest& under)
{
    openPayment(under);
    under.server.replace("POST v1/dividends/commands", ServerReply::dropped());
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("Retry original request");
}

void beRefused(WindowUnderTest& under)
{
    openPayment(under);
    under.server.replace("POST v1/dividends/commands", ServerReply::error(409, "dividend_date_order"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("earlier than a recorded dividend action");
}

/// As every company begins: no account, no owner, no participant.
void openFreshBooks(WindowUnderTest& under)
{
    openBooks(under, withoutAccounts());
}

void openBrokenBooks(WindowUnderTest& under)
{
    auto sample = capitalSample();
    sample.books().capital->contributions.front().date = "2025-12-31";
    openBooks(under, sample);
    under.screen.waitFor("capitalUnavailable");
}

/// Contributions without the baseline that would make the totals complete.
CapitalSample withoutHistory()
{
    CapitalSample sample{capitalGround()};
    sample.owner("Nguyễn Thị Thanh Hương").contribute("2026-07-28", "c1", "USD", "25,000", "Singapore", "First round");
    sample.participant("Nguyễn Thị Thanh Hương", "100");
    return sample;
}

const std::array pages{
    SweptScreen{"OverviewOfLongNames", capitalPages, [](auto& under) { openBooks(under, withLongNames()); }},
    SweptScreen{"ContributionsOfLongNames", capitalPages,
                [](auto& under) {
                    openBooks(under, withLongNames());
                    under.screen.keys("Ctrl+Tab");
                    under.screen.waitFor("contributionsTable");
                }},
    SweptScreen{"DividendsOfLongNames", capitalPages, [](auto& under) { openDividends(under, withLongNames()); }},
    SweptScreen{"OverviewOfLongWords", capitalPages, [](auto& under) { openBooks(under, withLongNames("")); }},
    SweptScreen{"ContributionsOfLongWords", capitalPages,
                [](auto& under) {
                    openBooks(under, withLongNames(""));
                    under.screen.keys("Ctrl+Tab");
                    under.screen.waitFor("contributionsTable");
                }},
    SweptScreen{"DividendsOfLongWords", capitalPages, [](auto& under) { openDividends(under, withLongNames("")); }},
    SweptScreen{"CapitalOverview", capitalPages, openOverview},
    SweptScreen{"CapitalOverviewFresh", capitalPages, openFreshBooks},
    SweptScreen{"CapitalOverviewHistoryUnknown", capitalPages, [](auto& under) { openBooks(under, withoutHistory()); }},
    SweptScreen{"CapitalUnavailable", capitalPages, openBrokenBooks},
    SweptScreen{"CapitalNotSeen", capitalPages, [](auto& under) { openBooks(under, withoutTheRight()); }},
    SweptScreen{"OverviewOfDividendsAlone", capitalPages,
                [](auto& under) {
                    auto sample = capitalSample();
                    sample.books().currentMember.permissions = {{"viewDividends"}};
                    openBooks(under, sample);
                }},
    SweptScreen{"Contributions", capitalPages, openContributions},
    SweptScreen{"ContributionsHistoryUnknown", capitalPages,
                [](auto& under) {
                    openBooks(under, withoutHistory());
                    under.screen.keys("Ctrl+Tab");
                }},
    SweptScreen{"ContributionsFresh", capitalPages,
                [](auto& under) {
                    openFreshBooks(under);
                    under.screen.keys("Ctrl+Tab");
                }},
    SweptScreen{"ContributionDetail", capitalPages,
                [](auto& under) {
                    openContributions(under);
                    under.screen.pressRow("contributionsTable", "Budi");
                    under.screen.keys("Return");
                    under.screen.waitFor("contributionEntry");
                }},
    SweptScreen{"Dividends", capitalPages, [](auto& under) { openDividends(under); }},
    SweptScreen{"DividendsSettled", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    under.screen.pressRow("batchesTable", "2026 Q2");
                    under.screen.pressRow("linesTable", "陈思远");
                }},
    SweptScreen{"DividendsUnpaid", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    under.screen.pressRow("batchesTable", "2026 Q3");
                    under.screen.waitFor("settlementNone");
                }},
    SweptScreen{"DividendsFresh", capitalPages, [](auto& under) { openDividends(under, withoutAccounts()); }},
    SweptScreen{"Advances", capitalPages, openAdvances},
};

const std::array forms{
    SweptScreen{"BaselineOfLongNames", capitalPages,
                [](auto& under) {
                    openBooks(under, withLongNames());
                    under.screen.keys("Ctrl+Tab");
                    openForm(under, "supersedeButton");
                }},
    SweptScreen{"AllocationOfLongNames", capitalPages,
                [](auto& under) {
                    openDividends(under, withLongNames());
                    openForm(under, "allocateButton");
                    under.screen.fill("recordAmount", "1000000.01");
                }},
    SweptScreen{"PaymentOfLongNames", capitalPages,
                [](auto& under) {
                    openDividends(under, withLongNames());
                    openForm(under, "payButton");
                }},
    SweptScreen{"PaymentOfLongWords", capitalPages,
                [](auto& under) {
                    openDividends(under, withLongNames(""));
                    openForm(under, "payButton");
                    under.screen.pick("recordAccount", "Operating bank");
                }},
    SweptScreen{"OwnerRenamedByAnother", capitalPages,
                [](auto& under) {
                    openBooks(under, withLongNames(""));
                    openForm(under, "ownersButton");
                    under.screen.pick("recordPerson", "Bm");
                    under.screen.fill("recordName", "Budi");
                    auto newer = withLongNames("");
                    newer.books().capital->participants.front().name += "mmmmmmmmm";
                    newer.books().capital->revision += 1;
                    serveBooks(under, newer);
                    under.screen.waitUntil("the books are read anew",
                                           [&] { return resultOf(under.store.refresh(false)).has_value(); });
                    under.screen.press("recordReload");
                    under.screen.waitForText("Newest: ");
                }},
    SweptScreen{"ContributionInAnotherCurrency", capitalPages,
                [](auto& under) {
                    openOverview(under);
                    openForm(under, "contributeButton");
                    under.screen.fill("recordAmount", "250000");
                    under.screen.pick("recordCurrency", "USD");
                }},
    SweptScreen{"Contribution", capitalPages,
                [](auto& under) {
                    openOverview(under);
                    openInVain(under, "contributeButton");
                }},
    SweptScreen{"ContributionInCoveredTime", capitalPages,
                [](auto& under) {
                    CapitalSample sample{capitalGround()};
                    sample.owner("Budi Santoso").baseline("2026-11-20", "IDR", "2026-11-20", {{"c1", "7"}});
                    openBooks(under, sample);
                    openForm(under, "contributeButton");
                    under.screen.pick("recordPerson", "Budi");
                    under.screen.pick("recordAccount", "Operating bank");
                    under.screen.fill("recordAmount", "5");
                    under.screen.keys("Ctrl+Return");
                }},
    SweptScreen{"Owner", capitalPages,
                [](auto& under) {
                    openOverview(under);
                    openInVain(under, "ownersButton");
                }},
    SweptScreen{"KnownOwner", capitalPages,
                [](auto& under) {
                    openOverview(under);
                    openForm(under, "ownersButton");
                    under.screen.pick("recordPerson", "Budi");
                }},
    SweptScreen{"Ownership", capitalPages,
                [](auto& under) {
                    openOverview(under);
                    openForm(under, "ownershipButton");
                    under.screen.fill("recordRow0", "9");
                }},
    SweptScreen{"OwnershipConflict", capitalPages, meetNewerShares},
    SweptScreen{"OwnershipReloaded", capitalPages, loadNewerShares},
    SweptScreen{"Baseline", capitalPages,
                [](auto& under) {
                    openContributions(under);
                    openForm(under, "supersedeButton");
                    under.screen.fill("recordRow0", "x");
                    under.screen.keys("Ctrl+Return");
                }},
    SweptScreen{"ZeroBaseline", capitalPages,
                [](auto& under) {
                    openBooks(under, withoutHistory());
                    openInVain(under, "historyButton");
                }},
    SweptScreen{"ContributionReversal", capitalPages,
                [](auto& under) {
                    openContributions(under);
                    under.screen.pressRow("contributionsTable", "Budi");
                    under.screen.keys("Return");
                    openForm(under, "reverseContributionButton");
                }},
    SweptScreen{"Allocation", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    openInVain(under, "allocateButton");
                }},
    SweptScreen{"FillFromOwnership", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    openForm(under, "allocateButton");
                    under.screen.press("fillFromOwnership");
                    under.screen.waitForText("Later ownership changes");
                }},
    SweptScreen{"DividendPayment", capitalPages,
                [](auto& under) {
                    openPayment(under);
                    under.screen.fill("recordAmount", "99999999");
                }},
    SweptScreen{"DividendPaymentUncertain", capitalPages, loseTheReply},
    SweptScreen{"DividendPaymentRefused", capitalPages, beRefused},
    SweptScreen{"Offset", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    under.screen.pressRow("batchesTable", "2026 Q3");
                    under.screen.pressRow("linesTable", "陈思远");
                    openForm(under, "applyAdvanceButton");
                }},
    SweptScreen{"Advance", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    openInVain(under, "payAdvanceButton");
                }},
    SweptScreen{"ReturnOfAdvance", capitalPages,
                [](auto& under) {
                    openAdvances(under);
                    openInVain(under, "returnAdvanceButton");
                }},
    SweptScreen{"Cancellation", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    under.screen.pressRow("batchesTable", "2026 Q3");
                    openForm(under, "cancelBatchButton");
                }},
    SweptScreen{"MovementReversal", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    under.screen.pressRow("batchesTable", "2026 Q2");
                    under.screen.pressRow("linesTable", "陈思远");
                    under.screen.pressRow("movementsTable", "13,500,000");
                    openForm(under, "reverseMovementButton");
                }},
    SweptScreen{"Participant", capitalPages,
                [](auto& under) {
                    openDividends(under);
                    openInVain(under, "participantsButton");
                }},
};

}

SWEEP(CapitalPages, pages);
SWEEP(CapitalForms, forms);
