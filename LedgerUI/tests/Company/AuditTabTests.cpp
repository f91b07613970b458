#include <gtest/gtest.h>

#include <QTableView>

#include "LedgerUI/testing/CompanyUnderTest.h"

namespace {

constexpr auto trail = "GET v1/audit";

/// Of the newest records; the next page begins below `next`.
std::string latest(const char* next = R"(,"next":41)")
{
    return std::string{
               R"({"records":[{"number":42,"at":"2026-11-20T02:14:00.000Z","memberID":"m2","origin":"10.0.0.7",)"
               R"("kind":"PATCH /v1/members/{id}","record":"m4","before":{"role":"employee","active":true},)"
               R"("after":{"role":"finance","active":true}},)"
               R"({"number":41,"at":"2026-11-19T23:50:00.000Z","origin":"operator","kind":"company-approved",)"
               R"("record":"c1"}])"} +
           next + "}";
}

std::string earliest()
{
    return R"({"records":[{"number":1,"at":"2026-01-02T00:00:00.000Z","memberID":"gone","origin":"10.0.0.9",)"
           R"("kind":"POST /v2/unheard-of"}]})";
}

struct AuditUnderTest : CompanyUnderTest {
    AuditUnderTest()
    {
        server.replace(trail, ServerReply::json(latest()));
        server.replace(std::string{trail} + "?below=41", ServerReply::json(earliest()));
    }
    /// The table comes with the reply, the tab at once.
    void openTrail()
    {
        openTab("auditTab");
        screen.waitFor("auditTable");
    }
    [[nodiscard]] bool asked(const std::string& query) const { return !server.requests(trail + query).empty(); }
};

}

TEST(CompanyAudit, TellsWhoDidWhatAndHowItStoodBefore)
{
    AuditUnderTest under;
    under.openTrail();
    under.screen.waitForText("Dewi Anggraini");
    EXPECT_EQ(under.screen.read("auditHeadline"),
              "Changed a member · Rizky Pratama · Dewi Anggraini · 20 Nov 2026, 02:14");
    const auto& changes = *under.screen.find<QTableView>("auditChanges").model();
    ASSERT_EQ(changes.rowCount(), 1) << "what stayed as it was is not shown";
    EXPECT_EQ(changes.index(0, 1).data().toString(), QStringLiteral("Employee"));
    EXPECT_EQ(changes.index(0, 2).data().toString(), QStringLiteral("Finance"));
    under.screen.pressRow("auditTable", "Operator of the service");
    EXPECT_TRUE(under.screen.says("There is nothing to it but the action itself."));
}

TEST(CompanyAudit, LeadsFromAnEntryToTheLedger)
{
    AuditUnderTest under;
    auto books = companyBooks().build();
    LedgerTransaction entry;
    entry.id = "e7";
    entry.kind = EntryKind::income;
    entry.date = "2026-11-19";
    entry.memberID = "m1";
    entry.legs = {{books.accounts.front().id, books.accounts.front().currencies.front(), 100}};
    books.transactions = std::vector{entry};
    under.hold(books);
    ASSERT_TRUE(resultOf(under.store.refresh(true)).has_value());
    under.server.replace(
        trail, ServerReply::json(R"({"records":[{"number":9,"at":"2026-11-20T02:14:00.000Z","memberID":"m1",)"
                                 R"("origin":"10.0.0.7","kind":"POST /v1/transactions","record":"e7"},)"
                                 R"({"number":8,"at":"2026-11-20T02:13:00.000Z","memberID":"m1",)"
                                 R"("origin":"10.0.0.7","kind":"POST /v1/transactions","record":"hidden"}]})"));
    under.openTrail();
    std::vector<PageLink> links;
    auto& page = under.screen.find<CompanyView>("companyView");
    QObject::connect(&page, &PageView::linkPressed, &page, [&](const PageLink& link) { links.push_back(link); });
    under.screen.press("auditInLedger");
    EXPECT_EQ(links, (std::vector<PageLink>{{.page = WorkspacePage::ledger, .action = "showEntry", .subject = "e7"}}));
    under.screen.find("auditTable").setFocus();
    under.screen.keys("Down");
    EXPECT_FALSE(under.screen.shows("auditInLedger")) << "an entry that the member does not see";
}

TEST(CompanyAudit, GoesOnToTheFirstRecord)
{
    AuditUnderTest under;
    under.openTrail();
    under.screen.press("auditMore");
    under.screen.waitForText("POST /v2/unheard-of");
    EXPECT_TRUE(under.screen.says("A former member"));
    EXPECT_TRUE(under.screen.says("Changed a member"));
    EXPECT_FALSE(under.screen.shows("auditMore"));
    EXPECT_EQ(under.screen.read("auditHint"), "These are all records.");
}

TEST(CompanyAudit, IsNarrowedByTheService)
{
    AuditUnderTest under;
    under.server.replace(std::string{trail} + "?person=m2", ServerReply::json(latest("")));
    under.server.replace(std::string{trail} + "?person=m2&kind=sign-in", ServerReply::json(R"({"records":[]})"));
    under.server.replace(std::string{trail} + "?record=m4", ServerReply::json(latest("")));
    under.openTrail();
    under.screen.pick("auditPerson", "Dewi");
    under.screen.waitUntil("it is asked for", [&] { return under.asked("?person=m2"); });
    under.screen.pick("auditKind", "Signed in");
    under.screen.waitForText("No action matches the filters.");
    under.screen.press("auditClear");
    under.screen.waitFor("auditTable");
    under.screen.waitFor("auditMore");
    under.screen.press("auditOnly");
    under.screen.waitUntil("it is asked for", [&] { return under.asked("?record=m4"); });
    under.screen.waitUntilGone("auditOnly");
    EXPECT_TRUE(under.screen.offers("auditClear"));
}

TEST(CompanyAudit, LooksOnWhereAPageIsEmptyAndOthersFollow)
{
    AuditUnderTest under;
    under.server.replace(trail, ServerReply::json(R"({"records":[],"next":41})"));
    under.openTab("auditTab");
    under.screen.waitForText("POST /v2/unheard-of");
}

TEST(CompanyAudit, SaysThatItCouldNotBeLoadedAndTriesAgain)
{
    AuditUnderTest under;
    under.server.replace(trail, ServerReply::error(503, "busy"));
    under.openTab("auditTab");
    under.screen.waitForText("The audit trail could not be loaded.");
    under.server.replace(trail, ServerReply::json(latest()));
    under.server.replace(std::string{trail} + "?below=41", ServerReply::dropped());
    under.screen.press("auditAgain");
    under.screen.waitFor("auditTable");
    under.screen.press("auditMore");
    under.screen.waitForText("Earlier records could not be loaded.");
    EXPECT_TRUE(under.screen.says("Dewi Anggraini"));
    under.server.replace(std::string{trail} + "?below=41", ServerReply::json(earliest()));
    under.screen.press("auditMore");
    under.screen.waitForText("POST /v2/unheard-of");
}
