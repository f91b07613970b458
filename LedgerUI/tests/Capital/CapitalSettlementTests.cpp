#include <gtest/gtest.h>

#include "LedgerUI/tests/CapitalUnderTest.h"

// From the row of a participant on the overview to where their dividends are settled.

namespace {

/// Two participants with shares that differ: settled in rupiah a year ago, unpaid in dollars since then. Only the first
/// of them has anything from this year.
CapitalSample twoYears()
{
    CapitalSample sample{capitalGround()};
    sample.participant("Budi", "60").participant("Chen", "40");                             // d1 d2
    sample.allocate("2025-03-31", "2025 Q1", "IDR", "1,000", {{"d1", "60"}, {"d2", "40"}}); // d3
    sample.pay("2025-04-01", "d3", "d1", "600", "Operating bank");                          // d4
    sample.pay("2025-04-01", "d3", "d2", "400", "Operating bank");                          // d5
    sample.allocate("2025-06-30", "Abroad", "USD", "10", {{"d1", "60"}, {"d2", "40"}});     // d6
    return sample.allocate("2026-03-31", "2026 Q1", "IDR", "500", {{"d1", "100"}});         // d7
}

struct Overview : CapitalPageUnderTest {
    Overview() : CapitalPageUnderTest{twoYears()} {}

    /// Opens the row of the participant; returns the year and the entitlement that then stand there.
    std::pair<std::string, std::string> settlementOf(const char* participant)
    {
        screen.pressRow("ownersTable", participant);
        screen.keys("Return");
        screen.waitFor("settlementEquation");
        const auto equation = QString::fromStdString(screen.read("settlementEquation"));
        return {screen.read("periodLabel"), equation.section(QLatin1Char{'\n'}, 1, 1).toStdString()};
    }
    void goBack()
    {
        screen.keys("Ctrl+Tab"); // behind the last tab stands the first
        screen.waitFor("ownersTable");
    }
};

using Settlement = std::pair<std::string, std::string>;

}

TEST(CapitalView, OpensTheSettlementOfTheParticipantThatIsPressedAndOfNobodyElse)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Ann").participant("Budi", "100").participant("Chen", "0").participant("Huong", "0");
    sample.allocate("2026-03-31", "2026 Q1", "IDR", "1,000", {{"d1", "100"}});
    sample.advance("2026-04-01", "d2", "IDR", "400", "Operating bank");
    CapitalPageUnderTest page{sample};
    const auto says = [&](const char* person, const char* why) {
        page.screen.pressRow("ownersTable", person);
        page.screen.keys("Return");
        page.screen.waitUntil(why, [&] { return page.screen.spoken("statusBar").starts_with(why); });
    };
    says("Huong", "This participant has no allocation and no advance in IDR.");
    says("Ann", "This owner takes no part in dividends.");
    EXPECT_TRUE(page.screen.shows("ownersTable"));
    page.screen.pressRow("ownersTable", "Chen");
    page.screen.keys("Return");
    page.screen.waitForText("Paid in advance on 1 April 2026");
}

TEST(CapitalView, TurnsToTheYearOfASettlementOnlyWhereThePageDoesNotListIt)
{
    Overview page;
    EXPECT_EQ(page.settlementOf("Chen"), Settlement("2025", "400")) << "this year has nothing of theirs";
    page.goBack();
    EXPECT_EQ(page.settlementOf("Budi"), Settlement("2025", "500")) << "what is unpaid is listed in every year";
    page.goBack();
    page.screen.press("periodNext");
    EXPECT_EQ(page.settlementOf("Budi"), Settlement("2026", "500"));
}

TEST(CapitalView, PaysTheParticipantWhoseRowWasOpenedInTheCurrencyOfThePage)
{
    Overview page;
    page.screen.press("segment1");
    EXPECT_EQ(page.settlementOf("Chen"), Settlement("2026", "4.00"));
    page.screen.press("payButton");
    page.screen.waitForFocus("recordForm");
    EXPECT_NE(page.screen.read("recordPerson").find("Chen"), std::string::npos);
    page.screen.pick("recordAccount", "Singapore");
    page.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.dividendsSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].batchID, "d6");
    EXPECT_EQ(sent[0].participantID, "d2");
    EXPECT_EQ(sent[0].currency, "USD");
    EXPECT_EQ(sent[0].amountMinor, 400);
}
