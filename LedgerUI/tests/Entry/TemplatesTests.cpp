#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Presentation/Entry/EntryLabels.h"
#include "LedgerUI/tests/TemplatesUnderTest.h"

namespace {

/// The ledger at a service that keeps templates. Today is 20 November 2026: the rent of 31 October is due.
class Templates : public testing::Test {
protected:
    Templates() { openBooksWithTemplates(under, dueTemplates()); }

    void openRent()
    {
        under.screen.press("templatesDueShow");
        under.screen.waitFor("templatesDialog");
        under.screen.press("templateRecord");
        under.screen.waitForFocus("transactionForm");
    }
    template <class Body>
    std::vector<Body> sent(const std::string& route)
    {
        std::vector<Body> bodies;
        for (const auto& request : under.server.requests(route))
            bodies.push_back(Json::decode<Body>(request.body).value());
        return bodies;
    }

    WindowUnderTest under{ledgerAndReports()};
};

TEST_F(Templates, ProposeWhatIsDueAndLeaveTheRecordingToAPerson)
{
    EXPECT_EQ(under.screen.read("templatesDue"), "1 recurring entry is due");
    openRent();
    EXPECT_EQ(under.screen.read("entryAmount"), "900.00");
    EXPECT_EQ(under.screen.read("entryNote"), "Office");
    EXPECT_TRUE(sent<TransactionInput>("POST v1/transactions").empty());

    under.server.answer("POST v1/transactions", ServerReply::error(409, "insufficient_funds"));
    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"new"})"));
    under.screen.keys("Ctrl+Return");
    waitUntil([&] { return under.server.requests("POST v1/transactions").size() == 1; });
    under.screen.waitUntil("the form is free again", [&] { return under.screen.offers("entrySave"); });
    under.screen.fill("entryAmount", "850");
    under.server.replace("GET v1/templates",
                         ServerReply::json(dueTemplates(R"({"day":"2026-10-31","entryID":"new"})")));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("transactionForm");
    const auto posted = sent<TransactionInput>("POST v1/transactions");
    ASSERT_EQ(posted.size(), 2U);
    EXPECT_EQ(posted.front().idempotencyKey, "occurrence:t1:2026-10-31");
    EXPECT_EQ(posted.back().idempotencyKey, "occurrence:t1:2026-10-31") << "changed, and still the entry of that day";
    EXPECT_EQ(posted.back().date, "2026-10-31");
    EXPECT_EQ(posted.back().amountMinor, 85'000);
    under.screen.waitUntilGone("templatesDue");
}

TEST_F(Templates, ProposeWhatFallsDueWhileTheWindowStaysOpen)
{
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("attention");
    const auto wanted = [&] { return under.screen.read("attention"); };
    EXPECT_FALSE(wanted().contains("30 Nov")) << wanted();
    under.clock.advance(std::chrono::days{10}); // November has no 31st
    under.screen.keys("F5");
    under.screen.waitUntil("the report names it", [&] { return wanted().contains("30 Nov"); });
    under.screen.keys("Ctrl+1");
    under.screen.waitFor("templatesDue");
    EXPECT_EQ(under.screen.read("templatesDue"), "2 recurring entries are due");
}

TEST_F(Templates, TellThatSomebodyElseHasRecordedTheDay)
{
    openRent();
    under.server.replace("POST v1/transactions", ServerReply::error(409, "idempotency_conflict"));
    under.server.replace("GET v1/templates",
                         ServerReply::json(dueTemplates(R"({"day":"2026-10-31","entryID":"theirs"})")));
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("An entry is recorded for this due day already.");
    under.screen.press("entryCancel");
    under.screen.waitUntilGone("transactionForm");
    under.screen.waitUntilGone("templatesDue");
    EXPECT_EQ(sent<TransactionInput>("POST v1/transactions").size(), 1U);
}

TEST_F(Templates, SkipADueDayWhenAPersonSaysSo)
{
    under.screen.press("templatesDueShow");
    under.screen.waitFor("templatesDialog");
    under.server.replace("POST v1/templates/t1/days", ServerReply::json(dueTemplates(R"({"day":"2026-10-31"})")));
    under.screen.press("templateSkip");
    under.screen.waitFor("templateUndo");
    EXPECT_EQ(sent<TemplateDay>("POST v1/templates/t1/days"), (std::vector<TemplateDay>{{"2026-10-31", true}}));
    under.server.replace("POST v1/templates/t1/days", ServerReply::json(dueTemplates()));
    under.screen.press("templateUndo");
    under.screen.waitUntilGone("templateUndo");
    EXPECT_EQ(sent<TemplateDay>("POST v1/templates/t1/days").back(), (TemplateDay{"2026-10-31", false}));
}

TEST_F(Templates, SayWhatWasRefusedAndShowHowItStands)
{
    under.screen.press("templatesDueShow");
    under.screen.waitFor("templatesDialog");
    under.server.replace("POST v1/templates/t1/days", ServerReply::error(409, "conflict"));
    under.server.replace("GET v1/templates",
                         ServerReply::json(dueTemplates(R"({"day":"2026-10-31","entryID":"theirs"})")));
    const auto loads = under.server.requests("GET v1/templates").size();
    under.screen.press("templateSkip");
    waitUntil([&] { return under.server.requests("GET v1/templates").size() > loads; });
    under.screen.waitForText("30 Nov 2026");
    EXPECT_FALSE(under.screen.says("Due 31 Oct 2026"));
}

TEST_F(Templates, AreMadeOfWhatStandsInTheEntryForm)
{
    under.screen.press("newEntryButton");
    under.screen.waitForFocus("transactionForm");
    under.screen.pick("entryAccount", "bank");
    under.screen.fill("entryAmount", "42");
    under.screen.press("entryKeepTemplate");
    under.screen.waitForFocus("templateForm");
    under.screen.fill("templateName", "Cleaning");
    under.screen.pick("templateUnit", "weeks");
    under.screen.fill("templateEvery", "2");
    under.server.replace("POST v1/templates", ServerReply::cutShort(dueTemplates()));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntil("the outcome is unknown", [&] { return under.screen.offers("templateSave"); });
    under.server.replace("POST v1/templates", ServerReply::json(dueTemplates()));
    under.screen.press("templateSave");
    under.screen.waitUntilGone("templateForm");
    const auto created = sent<TemplateCreate>("POST v1/templates");
    ASSERT_EQ(created.size(), 2U);
    EXPECT_EQ(created.front(), created.back()) << "the same request with the same key";
    EXPECT_EQ(created.front().entry.amountMinor, 4'200);
    EXPECT_EQ(created.front().entry.sourceAccountID, "bank");
    EXPECT_EQ(created.front().recurrence,
              (Recurrence{.unit = "week", .every = 2, .firstDay = "2026-11-27", .lastDay = {}}))
        << "the entry in the form stands for today";
    EXPECT_TRUE(under.screen.shows("transactionForm")) << "what was begun goes on";
}

TEST_F(Templates, ChangeAndGoByTheirAuthorAlone)
{
    under.screen.press("templatesDueShow");
    under.screen.waitFor("templatesDialog");
    under.screen.keys("F2");
    under.screen.waitForFocus("templateForm");
    under.screen.fill("templateAmount", "");
    under.server.replace("PATCH v1/templates/t1", ServerReply::json(dueTemplates()));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("templateForm");
    const auto updates = sent<TemplateUpdate>("PATCH v1/templates/t1");
    ASSERT_EQ(updates.size(), 1U);
    EXPECT_EQ(updates.front().expectedRevision, 3);
    EXPECT_EQ(updates.front().entry.amountMinor, std::nullopt);
    EXPECT_EQ(updates.front().recurrence->firstDay, "2026-10-31");

    under.server.replace("POST v1/templates/t1/remove", ServerReply::json(R"({"templates":[]})"));
    under.screen.press("templateRemove");
    under.screen.press("questionConfirm");
    under.screen.waitForText("No templates yet");
    EXPECT_FALSE(under.screen.shows("templatesDue"));
}

TEST_F(Templates, ChangeTheirAccountAndCategoryAndSayWhatIsNoAmount)
{
    under.screen.press("templatesDueShow");
    under.screen.waitFor("templatesDialog");
    under.screen.press("templateChange");
    under.screen.waitForFocus("templateForm");
    EXPECT_FALSE(under.screen.shows("templateTarget"));
    under.screen.pick("templateAccount", "vault");
    under.screen.pick("templateCategory", "Chosen each time");
    auto& amount = under.screen.find<QLineEdit>("templateAmount");
    amount.setFocus();
    amount.selectAll();
    QApplication::clipboard()->setText(QStringLiteral("-5"));
    under.screen.keys("Ctrl+V");
    EXPECT_EQ(amount.text(), QStringLiteral("900.00")) << "the field stays as it was";
    EXPECT_TRUE(under.screen.says(EntryLabels::refusedPaste(PasteRefusal::negative, "en-US").toStdString()));
    under.screen.fill("templateAmount", "0");
    under.screen.find<QLineEdit>("templateNote").setFocus();
    EXPECT_TRUE(under.screen.says("Enter an amount above zero, or leave it blank."));
    under.screen.fill("templateAmount", "850");
    EXPECT_FALSE(under.screen.says("Enter an amount above zero, or leave it blank."));
    under.server.replace("PATCH v1/templates/t1", ServerReply::json(dueTemplates()));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("templateForm");
    const auto updates = sent<TemplateUpdate>("PATCH v1/templates/t1");
    ASSERT_EQ(updates.size(), 1U);
    EXPECT_EQ(updates.front().entry.sourceAccountID, "vault");
    EXPECT_EQ(updates.front().entry.categoryID, std::nullopt);
    EXPECT_EQ(updates.front().entry.amountMinor, 85'000);
    EXPECT_EQ(updates.front().entry.note, "Office");
}

TEST_F(Templates, StandAmongWhatWantsAHand)
{
    under.screen.keys("Ctrl+2");
    under.screen.waitForText("“Office rent” is due on 31 Oct 2026");
    under.screen.press("attention0");
    under.screen.waitForFocus("transactionForm");
    EXPECT_EQ(under.screen.read("entryAmount"), "900.00");
}

TEST(TemplatesElsewhere, AreHiddenAndNeverAskedFor)
{
    WindowUnderTest under{ledgerAndReports()};
    SnapshotBuilder builder;
    builder.account("bank", {"USD"}).grantAll();
    under.openDemonstration(builder);
    under.screen.press("newEntryButton");
    under.screen.waitForFocus("transactionForm");
    EXPECT_FALSE(under.screen.shows("entryKeepTemplate"));
    EXPECT_FALSE(under.screen.shows("templatesDue"));
    EXPECT_TRUE(under.server.requests("GET v1/templates").empty());
}

}
