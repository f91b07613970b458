#include <gtest/gtest.h>

#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/tests/CapitalUnderTest.h"

// What happens around an open form of capital or dividends: rights that are taken away, a feature that is switched
// off, another company, the end of the session. Each is said, and nothing that was typed is lost.

namespace {

void refreshTo(CapitalPageUnderTest& page, const CapitalSample& sample)
{
    serveBooks(page, sample);
    require(resultOf(page.store.refresh(false)).has_value(), "the scripted service answers");
    settle();
}

struct TakenAway {
    const char* name;
    bool isDividends;
    const char* button;
    const char* field;
    const char* typed;
    void (*take)(LedgerSnapshot&);
    const char* said;
};

constexpr auto noRight = "You do not have the right to do this.";

const TakenAway takings[] = {
    {"RightToRecord", false, "contributeButton", "recordAmount", "250,000",
     [](LedgerSnapshot& books) { books.currentMember.permissions = {{"viewCapital", "viewDividends"}}; }, noRight},
    {"ContributionsSwitchedOff", false, "contributeButton", "recordAmount", "250,000",
     [](LedgerSnapshot& books) { books.financialSettings->contributionsEnabled = false; },
     "Shareholder contributions are disabled"},
    {"RightToSeeThePage", false, "ownershipButton", "recordRow0", "44",
     [](LedgerSnapshot& books) {
         books.currentMember.permissions.emplace();
         books.currentMember.role = "partner";
         books.capital.reset();
         books.dividends.reset();
     },
     noRight},
    {"AccountOfTheMoney", false, "contributeButton", "recordAmount", "250,000",
     [](LedgerSnapshot& books) { books.currentMember.accountGrants.emplace(); },
     "There is no account into which you may book contributions."},
    {"RightToSettle", true, "payButton", "recordAmount", "1,000",
     [](LedgerSnapshot& books) { books.currentMember.permissions = {{"viewCapital", "viewDividends"}}; }, noRight},
    {"DividendsSwitchedOff", true, "allocateButton", "recordPeriod", "2026 Q4",
     [](LedgerSnapshot& books) { books.financialSettings->dividendsEnabled = false; },
     "The company has disabled new allocations and advances."},
    {"AccountsThatPay", true, "payButton", "recordAmount", "1,000",
     [](LedgerSnapshot& books) { books.currentMember.accountGrants.emplace(); },
     "No authorized operating fund account is available."},
};

class FormThatLoses : public testing::TestWithParam<TakenAway> {};

}

TEST_P(FormThatLoses, SaysSoKeepsWhatWasTypedAndGoesOnOnceItIsBack)
{
    const auto& lost = GetParam();
    CapitalPageUnderTest page;
    if (lost.isDividends)
        page.openDividends();
    page.screen.press(lost.button);
    page.screen.waitForFocus("recordForm");
    page.screen.fill(lost.field, lost.typed);
    auto without = capitalSample();
    lost.take(without.books());
    refreshTo(page, without);
    page.screen.waitForText(lost.said);
    EXPECT_FALSE(page.screen.offers("recordConfirm"));
    EXPECT_FALSE(page.screen.shows("recordReload")) << "there is nothing to load";
    page.screen.keys("Ctrl+Return");
    settle();
    EXPECT_TRUE(page.capitalSent().empty() && page.dividendsSent().empty());
    EXPECT_EQ(page.screen.read(lost.field), lost.typed);

    refreshTo(page, capitalSample());
    EXPECT_FALSE(page.screen.says(lost.said));
    if (page.screen.shows("recordReload"))
        page.screen.press("recordReload");
    settle();
    EXPECT_EQ(page.screen.read(lost.field), lost.typed);
}

INSTANTIATE_TEST_SUITE_P(WhileItIsOpen, FormThatLoses, testing::ValuesIn(takings),
                         [](const auto& each) { return std::string{each.param.name}; });

namespace {

/// A second company, which the member can open.
void openOther(CapitalPageUnderTest& page)
{
    AuthResponse other{.token = "token-2", .snapshot = capitalSample().books()};
    other.snapshot.company.id = "c2";
    other.snapshot.company.name = "Samudra Kopi";
    page.server.replace("POST v1/me/companies/switch", ServerReply::json(Json::encode(other)));
    page.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(other.snapshot)));
    require(resultOf(page.store.switchCompany("c2")).has_value(), "the other company opens");
    settle();
}

void comeBack(CapitalPageUnderTest& page)
{
    const AuthResponse own{.token = "token-1", .snapshot = capitalSample().books()};
    page.server.replace("POST v1/me/companies/switch", ServerReply::json(Json::encode(own)));
    serveBooks(page, capitalSample());
    require(resultOf(page.store.switchCompany("c1")).has_value(), "the company opens again");
    settle();
}

}

TEST(CapitalFormStanding, WaitsForItsCompanyWhileAnotherOneIsOpen)
{
    CapitalPageUnderTest page;
    page.openContribution();
    page.screen.pick("recordAccount", "Operating bank");
    openOther(page);
    page.screen.waitForText("This form belongs to Harbour Trading.");
    EXPECT_FALSE(page.screen.offers("recordConfirm"));
    page.screen.keys("Ctrl+Return");
    settle();
    EXPECT_TRUE(page.capitalSent().empty()) << "nothing of one company is sent to another";

    comeBack(page);
    EXPECT_EQ(page.screen.read("recordAmount"), "250,000");
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    ASSERT_EQ(page.capitalSent().size(), 1U);
    EXPECT_EQ(page.capitalSent().front().amountMinor, 25'000'000);
}

TEST(CapitalFormStanding, SendsACommandOfUnknownOutcomeToNoOtherCompany)
{
    CapitalPageUnderTest page;
    page.openContribution();
    page.screen.pick("recordAccount", "Operating bank");
    page.server.replace("POST v1/capital/commands", ServerReply::dropped());
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("Retry original request");
    openOther(page);
    page.screen.waitForText("This form belongs to Harbour Trading.");
    page.screen.keys("Ctrl+Return");
    settle();
    EXPECT_EQ(page.capitalSent().size(), 1U);

    comeBack(page);
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    ASSERT_EQ(page.capitalSent().size(), 2U);
    EXPECT_EQ(page.capitalSent()[1], page.capitalSent()[0]);
}

/// Somebody else has changed the dividends: it is said, what was typed stays, and it goes on with the newest records.
TEST(CapitalFormStanding, KeepsADividendThroughAConflictAndAReloadThatFails)
{
    constexpr auto conflict = "Dividend records have changed. Refresh and check the amounts before trying again.";
    CapitalPageUnderTest page;
    page.openDividends();
    page.screen.press("allocateButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordPeriod", "2026 Q4");
    page.screen.fill("recordAmount", "1000");
    page.server.replace("POST v1/dividends/commands", ServerReply::error(409, "dividend_revision_conflict"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText(conflict);
    EXPECT_FALSE(page.screen.shows("alertDialog")) << "the form says it";
    EXPECT_FALSE(page.screen.offers("recordConfirm"));

    page.server.replace("GET v1/snapshot", ServerReply::dropped());
    page.screen.press("recordReload");
    page.screen.waitFor("alertDialog");
    page.screen.press("messageClose");
    page.screen.waitUntilGone("alertDialog");
    EXPECT_TRUE(page.screen.says(conflict));
    EXPECT_EQ(page.screen.read("recordAmount"), "1,000");

    auto newer = capitalSample();
    newer.participant("A fourth", "0");
    serveBooks(page, newer);
    page.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    page.screen.press("recordReload");
    page.screen.waitUntil("the conflict is over", [&] { return !page.screen.says(conflict); });
    EXPECT_TRUE(page.screen.says("A fourth"));
    EXPECT_EQ(page.screen.read("recordPeriod"), "2026 Q4");
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.dividendsSent();
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].amountMinor, 100'000);
    EXPECT_EQ(sent[1].expectedRevision, newer.books().dividends->revision);
    EXPECT_NE(sent[1].idempotencyKey, sent[0].idempotencyKey);
}

/// The baseline was superseded meanwhile: the service's own words, and the way to the newest one.
TEST(CapitalFormStanding, TellsAConflictOfBaselinesAsTheServiceDoes)
{
    constexpr auto conflict = "The historical contribution range overlaps recorded contributions, or its version has "
                              "changed.";
    CapitalPageUnderTest page;
    page.screen.keys("Ctrl+Tab");
    page.screen.press("supersedeButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordRow0", "7");
    page.server.replace("POST v1/capital/commands", ServerReply::error(409, "capital_baseline_conflict"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText(conflict);
    EXPECT_FALSE(page.screen.says("Capital records have changed."));
    EXPECT_FALSE(page.screen.offers("recordConfirm"));
    page.screen.press("recordReload");
    page.screen.waitUntil("the newest are there", [&] { return !page.screen.says(conflict); });
    EXPECT_EQ(page.screen.read("recordRow0"), "7");
}

/// What the service refused is still said when the records change beside it.
TEST(CapitalFormStanding, KeepsARefusalOverNewerRecords)
{
    constexpr auto refusal = "The amount exceeds unpaid dividends or the remaining advance.";
    CapitalPageUnderTest page;
    page.openDividends();
    page.screen.press("payButton");
    page.screen.waitForFocus("recordForm");
    page.server.replace("POST v1/dividends/commands", ServerReply::error(422, "dividend_overpayment"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText(refusal);
    auto newer = capitalSample();
    newer.participant("A fourth", "0");
    refreshTo(page, newer);
    page.screen.waitForText("Dividend records have changed.");
    EXPECT_TRUE(page.screen.says(refusal));
    EXPECT_TRUE(page.screen.offers("recordReload"));
}

/// Nobody takes part yet, so nothing can be allocated: the owners become the participants.
TEST(CapitalFormStanding, FillsTheRatiosBeforeThereIsAnyParticipant)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").owner("Rina").ownership("2026-01-01", {{"c1", "60"}, {"c2", "40"}});
    CapitalPageUnderTest page{sample};
    page.screen.keys("Ctrl+Tab Ctrl+Tab");
    page.screen.waitFor("capitalDividends");
    EXPECT_FALSE(page.screen.offers("allocateButton"));
    page.screen.press("participantsButton");
    page.screen.waitForFocus("recordForm");
    page.screen.press("fillFromOwnership");
    page.screen.waitForText("Default ratios afterwards: Budi 60.00");
    page.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    sample.participant("Budi", "60").participant("Rina", "40");
    serveBooks(page, sample);
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntil("the ratios are filled", [&] { return !page.screen.says("Default ratios afterwards"); });
    ASSERT_EQ(page.dividendsSent().size(), 1U);
    EXPECT_EQ(page.dividendsSent().front().action, DividendAction::fillFromOwnership);
    page.screen.pick("recordPerson", "Rina");
    EXPECT_EQ(page.screen.read("recordRatio"), "40");
}

TEST(CapitalFormStanding, SaysThatTheCurrencyTookTheAmountWithIt)
{
    CapitalPageUnderTest page;
    page.openContribution();
    page.screen.pick("recordCurrency", "USD");
    page.screen.waitForText("The currency has changed: what was typed in the other one was cleared.");
    EXPECT_EQ(page.screen.read("recordAmount"), "");
    page.screen.fill("recordAmount", "25");
    EXPECT_FALSE(page.screen.says("The currency has changed"));
}

TEST(CapitalFormStanding, BringsAContributionThatMetTheEndOfTheSessionBackAsItWasTyped)
{
    auto pages = capitalPages();
    pages.add<LedgerView>(WorkspacePage::ledger);
    WindowUnderTest under{pages};
    const auto enter = [&] {
        under.server.replace("POST v1/auth/login",
                             ServerReply::json(R"({"token":"token-1","snapshot":)" + capitalSample().json() + "}"));
        serveBooks(under, capitalSample());
        require(resultOf(under.store.login("m1@example.com", "secret")).has_value(), "the member signs in");
        settle();
    };
    enter();
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("capitalTabs");
    under.screen.press("contributeButton");
    under.screen.waitForFocus("recordForm");
    under.screen.pick("recordPerson", "Budi");
    under.screen.pick("recordAccount", "Operating bank");
    under.screen.fill("recordAmount", "250000");
    under.screen.fill("recordNote", "Fifth round");
    under.server.replace("POST v1/capital/commands", ServerReply::error(401, "unauthorized"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitFor("signInView");

    enter();
    under.screen.waitForFocus("recordForm");
    EXPECT_NE(under.screen.read("recordPerson").find("Budi"), std::string::npos);
    EXPECT_EQ(under.screen.read("recordNote"), "Fifth round");
    EXPECT_EQ(under.screen.read("recordAmount"), "250,000");
    EXPECT_TRUE(under.screen.offers("recordAmount")) << "nothing of it is recorded, so it can still be changed";
    under.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("recordForm");
    EXPECT_FALSE(under.store.keptSectionCommand().has_value());
}

TEST(CapitalFormStanding, SaysOfAnUntouchedAllocationThatNothingWasPaid)
{
    CapitalPageUnderTest page;
    page.openDividends();
    page.screen.pressRow("batchesTable", "2026 Q3");
    page.screen.waitForText("No payments and no offsets yet");
    EXPECT_FALSE(page.screen.shows("movementsTable"));
    page.screen.pressRow("batchesTable", "2026 Q2");
    page.screen.pressRow("linesTable", "陈思远");
    EXPECT_FALSE(page.screen.shows("settlementNone"));
}
