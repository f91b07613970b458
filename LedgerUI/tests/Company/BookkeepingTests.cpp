#include <gtest/gtest.h>

#include <QAbstractButton>

#include "LedgerUI/testing/CompanyUnderTest.h"

namespace {

constexpr auto commands = "POST v1/financial-settings/commands";

LedgerSnapshot booksWith(int revision, bool contributions, bool dividends)
{
    auto books = companyBooks().build();
    books.financialSettings = {.revision = revision,
                               .contributionsEnabled = contributions,
                               .dividendsEnabled = dividends,
                               .bookkeepingStartDate = {},
                               .initializationMode = {},
                               .initializedAt = {},
                               .featuresConfigured = {}};
    return books;
}

struct BookkeepingUnderTest : CompanyUnderTest {
    BookkeepingUnderTest() { openTab("bookkeepingTab"); }

    bool isOn(const char* name) { return screen.find<QAbstractButton>(name).isChecked(); }
    void openSetup()
    {
        screen.press("setUpBooks");
        screen.waitForFocus("bookkeepingSetup");
    }
};

}

TEST(Bookkeeping, KeepsTheSwitchThatWasSetThroughAConflict)
{
    BookkeepingUnderTest under;
    under.screen.press("dividendsSwitch");
    EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
    under.server.replace(commands, ServerReply::error(409, "financial_settings_revision_conflict"));
    under.screen.press("settingsSave");
    under.screen.waitForText("Financial settings have changed");
    under.hold(booksWith(4, false, true));
    under.screen.press("settingsReload");
    under.screen.waitUntil("the newest settings are there", [&] { return !under.isOn("contributionsSwitch"); });
    EXPECT_FALSE(under.isOn("dividendsSwitch")) << "what was set stays";
    EXPECT_FALSE(under.screen.shows("settingsReload"));
    under.server.replace(commands, ServerReply::json("{}"));
    under.hold(booksWith(5, false, false));
    under.screen.press("settingsSave");
    under.screen.waitUntil("it is said", [&] { return under.screen.read("statusSaid") == "Financial settings saved"; });
    const auto sent = under.server.requests(commands);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_TRUE(sent[0].body.contains(R"("expectedRevision":0)")) << sent[0].body;
    EXPECT_TRUE(sent[1].body.contains(R"("expectedRevision":4)")) << sent[1].body;
    EXPECT_TRUE(sent[1].body.contains(R"("contributionsEnabled":false,"dividendsEnabled":false)")) << sent[1].body;
    EXPECT_EQ(under.screen.read("settingsRevision"), "Financial settings revision 5");
}

TEST(Bookkeeping, SaysWhatHelpsWhereTheServiceHasNoRoom)
{
    BookkeepingUnderTest under;
    under.screen.press("contributionsSwitch");
    under.server.replace(commands, ServerReply::error(507, "insufficient_storage"));
    under.screen.press("settingsSave");
    under.screen.waitForText("no room left");
    under.server.replace(commands, ServerReply::dropped());
    under.screen.press("settingsSave");
    under.screen.waitUntil("it failed otherwise", [&] {
        return under.server.requests(commands).size() == 2 && !under.store.isBusy() &&
               !under.screen.says("no room left");
    });
}

TEST(Bookkeeping, SendsTheSameCommandAgainWhenNobodyKnowsTheOutcome)
{
    BookkeepingUnderTest under;
    under.screen.press("contributionsSwitch");
    under.server.replace(commands, ServerReply::dropped());
    under.screen.press("settingsSave");
    under.screen.waitUntil("it can be sent again",
                           [&] { return under.screen.read("settingsSave") == "Retry original request"; });
    EXPECT_FALSE(under.screen.offers("contributionsSwitch"));
    EXPECT_FALSE(under.screen.offers("settingsRevert"));
    under.server.replace(commands, ServerReply::json("{}"));
    under.hold(booksWith(1, false, true));
    under.screen.press("settingsSave");
    under.screen.waitUntil("it is saved", [&] {
        return under.server.requests(commands).size() == 2 && !under.store.isBusy() &&
               under.screen.read("settingsSave") == "Save settings";
    });
    const auto sent = under.server.requests(commands);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0].body, sent[1].body);
    EXPECT_FALSE(under.isOn("contributionsSwitch"));
}

TEST(BookkeepingSetup, IsConfirmedOnceAndOnlyWhenItWasAgreedTo)
{
    BookkeepingUnderTest under;
    under.openSetup();
    under.screen.keys("Ctrl+Return");
    EXPECT_TRUE(under.screen.says("Tick the confirmation first."));
    under.screen.press("setupFromZero");
    under.screen.fill("setupDay", "1/12/2026");
    under.screen.press("setupAgreed");
    under.screen.keys("Ctrl+Return");
    EXPECT_TRUE(under.screen.says("Enter a day from 1 January 1900 to 21 Nov 2026."));
    under.screen.fill("setupDay", "1/1/2026");
    under.screen.press("setupAgreed");
    auto after = booksWith(1, true, true);
    after.financialSettings->bookkeepingStartDate = "2026-01-01";
    after.financialSettings->initializedAt = "2026-11-20T12:00:00.000Z";
    under.server.replace(commands, ServerReply::json("{}"));
    under.hold(after);
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("bookkeepingSetup");
    under.screen.waitUntil("the day is shown", [&] { return under.screen.read("startDay") == "1 January 2026"; });
    EXPECT_FALSE(under.screen.shows("setUpBooks"));
    const auto body = under.server.requests(commands).front().body;
    EXPECT_TRUE(body.contains(R"("bookkeepingStartDate":"2026-01-01","initializationMode":"fromZero")")) << body;
}

TEST(BookkeepingSetup, SaysWhenAColleagueWasQuicker)
{
    BookkeepingUnderTest under;
    under.openSetup();
    under.screen.press("setupAgreed");
    under.server.replace(commands, ServerReply::error(409, "financial_settings_revision_conflict"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitFor("setupReload");
    auto after = booksWith(1, true, true);
    after.financialSettings->bookkeepingStartDate = "2026-01-01";
    under.hold(after);
    under.screen.press("setupReload");
    under.screen.waitForText("The start date is confirmed already.");
    EXPECT_FALSE(under.screen.offers("setupConfirm"));
}

TEST(BookkeepingOpenings, AreLedThroughOneAfterTheOther)
{
    BookkeepingUnderTest under;
    under.screen.press("recordOpenings");
    under.screen.waitForFocus("transactionForm");
    EXPECT_TRUE(under.screen.says("Ngân hàng Hà Nội – thanh toán"));
    under.screen.fill("entryAmount", "500");
    auto after = companyBooks();
    after.entry("o1", EntryKind::opening, "2026-11-20", {{"Ngân hàng Hà Nội – thanh toán", "VND", 500}});
    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"o1"})"));
    under.hold(after.build());
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntil("the next one is asked for", [&] {
        return under.screen.shows("transactionForm") && under.screen.says("Singapore settlement") &&
               under.screen.read("entryAmount").empty();
    });
}

TEST(TransactionColors, SendEachChoiceOneAfterTheOther)
{
    BookkeepingUnderTest under;
    under.screen.press("changeColors");
    under.screen.waitForFocus("colorsDialog");
    EXPECT_EQ(under.screen.focus(), "color.income.teal");
    const auto first = companyBooks().colors({{"income", "rose"}});
    const auto both = companyBooks().colors({{"income", "rose"}, {"expense", "ink"}});
    under.server.answer("PATCH v1/company/transaction-colors", ServerReply::parked());
    under.server.answer("PATCH v1/company/transaction-colors", ServerReply::json(both.json()));
    under.screen.press("color.income.rose");
    under.screen.press("color.expense.ink");
    EXPECT_EQ(under.screen.read("color.expense"), "Ink blue");
    under.screen.waitUntil("the first is on its way", [&] { return under.server.parkedCount() == 1; });
    under.server.release(ServerReply::json(first.json()));
    under.screen.waitUntil("both are sent", [&] {
        return under.server.requests("PATCH v1/company/transaction-colors").size() == 2 && !under.store.isBusy();
    });
    EXPECT_EQ(under.server.requests("PATCH v1/company/transaction-colors")[1].body,
              R"({"kind":"expense","colorID":"ink"})");
    EXPECT_EQ(under.screen.read("color.income"), "Rose");
    EXPECT_EQ(under.screen.read("color.expense"), "Ink blue");
}

TEST(Bookkeeping, TakesASectionOutOfTheSideBarAndBack)
{
    BookkeepingUnderTest under;
    EXPECT_TRUE(under.isOn("listDividends")) << "what nobody has changed is listed";
    auto books = companyBooks().build();
    books.dividends.emplace().revision = 1;
    under.hold(books);
    under.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    const auto place = under.screen.find("listDividends").geometry();
    under.screen.press("listDividends");
    under.screen.waitUntil("it is said", [&] { return under.screen.read("statusSaid") == "Side bar updated"; });
    EXPECT_FALSE(under.isOn("listDividends"));
    EXPECT_EQ(under.screen.read("listDividends"), "Off");
    settle();
    EXPECT_EQ(under.screen.find("listDividends").geometry(), place) << "the switches stand one below the other";
    EXPECT_TRUE(under.isOn("listContributions"));
    under.server.replace("POST v1/dividends/commands", ServerReply::error(409, "dividend_revision_conflict"));
    under.screen.press("listDividends");
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    EXPECT_FALSE(under.isOn("listDividends")) << "a refused change leaves the switch as the books say";
    const auto sent = under.server.requests("POST v1/dividends/commands");
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_TRUE(sent[0].body.contains(R"("showInSidebar":false)")) << sent[0].body;
    EXPECT_TRUE(sent[1].body.contains(R"("showInSidebar":true)")) << sent[1].body;
    EXPECT_TRUE(sent[1].body.contains(R"("expectedRevision":1)")) << sent[1].body;
}

TEST(Bookkeeping, LeadsToTheImportOfOlderRecords)
{
    BookkeepingUnderTest under;
    under.screen.press("importHistory");
    under.screen.waitFor("importDialog");
    under.screen.keys("Esc");
    under.screen.waitUntilGone("importDialog");
    auto books = companyBooks().build();
    books.members.front().permissions = books.currentMember.permissions = {{"manageCompany"}};
    under.hold(books);
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    EXPECT_FALSE(under.screen.shows("importHistory")) << "who does not see the company imports nothing";
}
