#include "LedgerUI/Screens/Requests/UnconfirmedDialog.h"

#include <gtest/gtest.h>

#include "LedgerUI/Screens/Capital/CapitalView.h"
#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry allPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
}

struct RequestsUnderTest : WindowUnderTest {
    RequestsUnderTest() : WindowUnderTest{allPages()}
    {
        auto books = reportSample();
        openDemonstration(books.permissions({"viewCompany", "manageCompany"}));
        screen.waitFor("ledgerView");
    }

    static TransactionInput expense(std::string key)
    {
        TransactionInput input;
        input.kind = EntryKind::expense;
        input.date = "2026-11-12";
        input.sourceAccountID = "Operating bank";
        input.currency = "IDR";
        input.amountMinor = 438'520'00;
        input.categoryID = "rent";
        input.note = "November";
        input.idempotencyKey = std::move(key);
        return input;
    }
    /// A command on dividends whose reply is lost.
    void loseCommand()
    {
        DividendCommand command;
        command.action = DividendAction::setVisibility;
        command.date = "2026-11-19";
        command.showInSidebar = true;
        command.idempotencyKey = "visible";
        server.replace(dividends, ServerReply::dropped());
        std::ignore = resultOf(store.submitDividend(command, false));
    }
    void openList()
    {
        screen.press("unconfirmedButton");
        screen.waitForFocus("unconfirmedDialog");
    }
    [[nodiscard]] std::vector<std::string> keysSent() const
    {
        std::vector<std::string> keys;
        for (const auto& request : server.requests("POST v1/transactions"))
            keys.push_back(Json::decode<TransactionInput>(request.body)->idempotencyKey);
        return keys;
    }

    static constexpr auto dividends = "POST v1/dividends/commands";
};

}

TEST(UnconfirmedDialog, ListsEveryRequestAndSendsItAgainAsItStands)
{
    RequestsUnderTest under;
    EXPECT_FALSE(under.screen.shows("unconfirmedButton"));
    under.store.keepEntry(RequestsUnderTest::expense("first"), true);
    EXPECT_EQ(under.screen.read("unconfirmedButton"), "1 unconfirmed request");
    under.loseCommand();
    EXPECT_EQ(under.screen.read("unconfirmedButton"), "2 unconfirmed requests");

    under.openList();
    EXPECT_TRUE(under.screen.says("Operating bank · November"));
    EXPECT_TRUE(under.screen.says("IDR\u00a0438,520"));
    EXPECT_TRUE(under.screen.says("May have been recorded · For 12 Nov 2026"));
    EXPECT_TRUE(under.screen.says("Dividends in the side bar"));
    EXPECT_FALSE(under.screen.shows("open1")) << "there is no form for it";

    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.screen.press("retry0");
    under.screen.waitForText("Confirmed: ");
    EXPECT_EQ(under.keysSent(), std::vector<std::string>{"first"});
    EXPECT_FALSE(under.screen.shows("retry1")) << "what is confirmed leaves the list";
    under.server.replace(RequestsUnderTest::dividends, ServerReply::json("{}"));
    under.screen.press("retry0");
    under.screen.waitForText("No unconfirmed requests");
    EXPECT_EQ(under.server.requests(RequestsUnderTest::dividends).size(), 2U);
    under.screen.keys("Esc");
    under.screen.waitUntilGone("unconfirmedDialog");
    EXPECT_FALSE(under.screen.shows("unconfirmedButton"));
    under.loseCommand();
    under.activate();
    under.openList(); // as often as there is something to show
}

TEST(UnconfirmedDialog, KeepsWhatIsRefusedToBeChangedInItsForm)
{
    RequestsUnderTest under;
    under.store.keepEntry(RequestsUnderTest::expense("first"), true);
    under.store.keepEntry(RequestsUnderTest::expense("second"), true);
    under.clock.advance(std::chrono::hours{3});
    under.openList();
    under.server.replace("POST v1/transactions", ServerReply::dropped());
    under.screen.press("retry1");
    waitUntil([&] { return under.keysSent().size() == 1U && !under.store.isBusy(); });
    EXPECT_EQ(under.store.keptRequests().count(), 2U) << "still nobody knows";

    under.server.replace("POST v1/transactions", ServerReply::error(409, "insufficient_funds"));
    under.screen.press("retry1");
    under.screen.waitForText("The service refused it and recorded nothing");
    EXPECT_TRUE(under.screen.says("Not recorded · For 12 Nov 2026"));
    const auto kept = under.store.keptRequests().entries;
    EXPECT_EQ(kept.back().since, kept.front().since) << "kept since it was sent first";
    under.screen.press("open1");
    under.screen.waitForFocus("transactionForm");
    EXPECT_TRUE(under.screen.offers("entryAmount"));
    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_EQ(under.keysSent(), (std::vector<std::string>{"second", "second", "second"}));
    const auto left = under.store.keptRequests().entries;
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left.front().input.idempotencyKey, "first");
}

TEST(Attention, LeadsToTheListOfRequestsAndToInvitationsThatEnd)
{
    RequestsUnderTest under;
    under.server.replace("GET v1/invites", ServerReply::parked());
    under.store.keepEntry(RequestsUnderTest::expense("first"), true);
    under.store.keepEntry(RequestsUnderTest::expense("second"), false);
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("currencyTable");
    waitUntil([&] { return under.server.requests("GET v1/invites").size() == 1; });
    EXPECT_FALSE(under.store.isBusy()) << "whatever a person does goes first";
    under.server.replace("GET v1/invites", ServerReply::json(companyInvitations()));
    under.server.release(ServerReply::json(companyInvitations()));
    under.screen.waitForText("invitation");
    EXPECT_TRUE(under.screen.says("2 requests are not confirmed"));
    under.screen.press("attention0");
    under.screen.waitForFocus("unconfirmedDialog");
    under.screen.keys("Esc");
    under.screen.waitUntilGone("unconfirmedDialog");
    under.activate();
    under.screen.press("attention1");
    under.screen.waitFor("invitationTable");
}
