#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/tests/CapitalUnderTest.h"

// The page of capital and dividends and its forms, by keys, over a scripted service.

namespace {

using Page = CapitalPageUnderTest;

}

TEST(CapitalView, RecordsAContributionByKeysAndShowsItAfterwards)
{
    Page page;
    page.openContribution();
    auto after = capitalSample();
    after.contribute("2026-11-20", "c1", "IDR", "250,000", "Operating bank");
    serveBooks(page, after);
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.capitalSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].action, CapitalAction::contribute);
    EXPECT_EQ(sent[0].amountMinor, 25'000'000);
    EXPECT_EQ(sent[0].participantID, "c1");
    EXPECT_EQ(sent[0].expectedRevision, capitalSample().books().capital->revision);
    page.screen.waitForText("1,200,250,000");
}

TEST(CapitalView, SaysWhatIsMissingUnderItsFieldAndSendsNothing)
{
    Page page;
    page.screen.press("contributeButton");
    page.screen.waitForFocus("recordForm");
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("Enter an actual contribution amount greater than zero.");
    EXPECT_TRUE(page.screen.says("Choose an owner who is not archived."));
    EXPECT_TRUE(page.capitalSent().empty());
}

TEST(CapitalView, RetriesAContributionOfUnknownOutcomeWithTheSameKey)
{
    Page page;
    page.openContribution();
    page.server.replace("POST v1/capital/commands", ServerReply::dropped());
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("Retry original request");
    EXPECT_FALSE(page.screen.offers("recordAmount")) << "what was sent is settled";
    page.speak("id-ID");
    EXPECT_TRUE(page.screen.says("Tutup…")) << "it can be left, not taken back";
    page.speak("en-US");
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.capitalSent();
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0], sent[1]);
}

TEST(CapitalView, KeepsWhatWasTypedThroughARevisionConflict)
{
    Page page;
    page.screen.press("ownershipButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordRow0", "40");
    page.screen.fill("recordRow1", "43.33");
    page.server.replace("POST v1/capital/commands", ServerReply::error(409, "capital_revision_conflict"));
    auto newer = capitalSample();
    newer.ownership("2026-11-20", {{"c1", "60"}, {"c2", "30"}, {"c3", "10"}});
    serveBooks(page, newer);
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("Capital records have changed. Refresh and review them before saving.");
    EXPECT_FALSE(page.screen.offers("recordConfirm"));
    page.screen.press("recordReload");
    page.screen.waitForText("Newest: 60");
    EXPECT_EQ(page.screen.read("recordRow0"), "40");
    EXPECT_EQ(page.screen.read("recordRow2"), "10") << "what was never touched follows";
    page.screen.fill("recordRow1", "50");
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.capitalSent();
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].expectedRevision, newer.books().capital->revision);
    EXPECT_NE(sent[1].idempotencyKey, sent[0].idempotencyKey);
    EXPECT_EQ(sent[1].ownership->at(0).ownershipBps, 4000);
}

TEST(CapitalView, DoesNotSendWhatWasTypedOnOlderRecords)
{
    Page page;
    page.openContribution();
    auto newer = capitalSample();
    newer.owner("A fourth owner");
    serveBooks(page, newer);
    std::ignore = resultOf(page.store.refresh(false));
    page.screen.waitForText("Capital records have changed. Refresh and review them before saving.");
    page.screen.keys("Ctrl+Return");
    settle();
    EXPECT_TRUE(page.capitalSent().empty());
    EXPECT_EQ(page.screen.read("recordAmount"), "250,000");
}

TEST(CapitalView, KeepsTheInputsOfARefusedPayment)
{
    Page page;
    page.openDividends();
    page.screen.press("payButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordAmount", "1000");
    page.server.replace("POST v1/dividends/commands", ServerReply::error(422, "dividend_overpayment"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("The amount exceeds unpaid dividends or the remaining advance.");
    EXPECT_EQ(page.screen.read("recordAmount"), "1,000");
    EXPECT_FALSE(page.screen.shows("alertDialog")) << "the form says it already";
    const auto sent = page.dividendsSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].batchID, "d10");
    EXPECT_EQ(sent[0].participantID, "d1");
}

TEST(CapitalView, DisablesConfirmingWhileRatiosAreNotWhole)
{
    Page page;
    page.openDividends();
    page.screen.press("allocateButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordPeriod", "2026 Q4");
    page.screen.fill("recordAmount", "100");
    page.screen.fill("recordRow0", "44");
    page.screen.waitForText("Increase the total by");
    EXPECT_FALSE(page.screen.offers("recordConfirm"));
    page.screen.press("useDefaultRatios");
    EXPECT_TRUE(page.screen.offers("recordConfirm"));
    EXPECT_EQ(page.screen.read("recordRow0"), "45");
    EXPECT_EQ(page.screen.read("recordAmountTotal"), "100");
}

TEST(CapitalView, GreysAnActionWithItsReason)
{
    auto sample = capitalSample();
    sample.books().financialSettings->contributionsEnabled = false;
    Page page{sample};
    EXPECT_FALSE(page.screen.offers("contributeButton"));
    EXPECT_EQ(page.screen.find("contributeButton").toolTip(), QStringLiteral("Shareholder contributions are disabled"));
    EXPECT_TRUE(page.screen.offers("ownershipButton")) << "what is there stays correctable";
    EXPECT_TRUE(page.screen.says("1,200,000,000"));
}

TEST(CapitalView, ShowsWhatWasRecordedInAnotherCurrency)
{
    Page page;
    page.openDividends();
    page.screen.press("allocateButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordPeriod", "Abroad");
    page.screen.pick("recordCurrency", "USD");
    page.screen.fill("recordAmount", "100");
    page.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    serveBooks(page, capitalSample().allocate("2026-11-20", "Abroad", "USD", "100", {{"d1", "50"}, {"d2", "50"}}));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("Abroad");
    page.screen.waitForText("USD\u00a0100.00");
}

class LongNames : public testing::TestWithParam<const char*> {};

TEST_P(LongNames, LeaveFiguresInSight)
{
    Page page{withLongNames(GetParam())};
    const auto fits = [](const QScrollArea& scroll) {
        return scroll.widget()->minimumSizeHint().width() <= scroll.viewport()->width();
    };
    EXPECT_TRUE(fits(page.screen.find<QScrollArea>("ownershipScroll")));
    page.screen.keys("Ctrl+Tab");
    page.screen.waitFor("contributionsTable");
    EXPECT_TRUE(fits(page.screen.find<QScrollArea>("baselineScroll")));
    page.screen.keys("Ctrl+Tab");
    for (const auto* button : {"payButton", "allocateButton"}) {
        page.screen.press(button);
        page.screen.waitForFocus("recordForm");
        if (button == std::string_view{"payButton"})
            page.screen.pick("recordAccount", "Operating bank");
        settle();
        auto* scroll = page.screen.find("recordForm").findChild<QScrollArea*>();
        ASSERT_TRUE(scroll);
        EXPECT_TRUE(fits(*scroll)) << button;
        page.screen.keys("Esc");
        page.screen.waitUntil("the form is left", [&] {
            if (page.screen.shows("questionConfirm"))
                page.screen.press("questionConfirm");
            return !page.screen.shows("recordForm");
        });
    }
}

INSTANTIATE_TEST_SUITE_P(OfManyWordsAndOfOne, LongNames, testing::Values(" ", ""),
                         [](const auto& each) { return std::string{each.index == 0 ? "ManyWords" : "OneWord"}; });

TEST(CapitalView, ShowsAPartnerWithViewRightsExactlyWhatTheyMay)
{
    const auto open = [](std::vector<std::string> permissions) {
        auto sample = capitalSample();
        sample.books().currentMember.role = "partner";
        sample.books().currentMember.permissions = std::move(permissions);
        return sample;
    };
    Page both{open({"viewCapital", "viewDividends"})};
    const auto noneWorks = [&](std::initializer_list<const char*> buttons) {
        for (const auto* button : buttons)
            EXPECT_FALSE(both.screen.offers(button)) << button;
        EXPECT_FALSE(both.screen.shows("exportCapitalButton"));
        EXPECT_FALSE(both.screen.shows("exportDividendsButton"));
    };
    EXPECT_TRUE(both.screen.says("1,200,000,000"));
    noneWorks({"contributeButton", "ownersButton", "ownershipButton"});
    both.screen.keys("Ctrl+Tab");
    both.screen.waitFor("contributionsTable");
    noneWorks({"contributeButton", "supersedeButton", "reverseContributionButton"});
    both.screen.keys("Ctrl+Tab");
    both.screen.pressRow("batchesTable", "2026 Q2");
    both.screen.pressRow("linesTable", "陈思远");
    both.screen.pressRow("movementsTable", "13,500,000");
    noneWorks({"allocateButton", "payAdvanceButton", "participantsButton", "cancelBatchButton", "payButton",
               "applyAdvanceButton", "reverseMovementButton"});
    Page dividends{open({"viewDividends"})};
    EXPECT_TRUE(dividends.screen.says("31,350,000"));
    EXPECT_FALSE(dividends.screen.says("Ownership versions")) << "not even that there are none";
    dividends.screen.keys("Ctrl+Tab");
    EXPECT_TRUE(dividends.screen.shows("batchesTable")) << "the tab of contributions is not there";
}

TEST(CapitalView, ShowsTheUnavailableStateInsteadOfAPartOfTheFigures)
{
    auto sample = capitalSample();
    sample.books().capital->contributions.front().date = "2025-12-31";
    Page page{sample};
    page.screen.waitForText("Capital and dividends cannot be shown");
    EXPECT_FALSE(page.screen.shows("ownersTable"));
}

TEST(CapitalView, SaysThatTheRecordsAreNotForAnAdministratorToSee)
{
    Page page{withoutTheRight()};
    for (const auto* tab : {"overview", "contributions", "dividends"}) {
        EXPECT_TRUE(page.screen.says("Capital and dividends are not visible to you")) << tab;
        for (const auto* untrue : {"Historical contributions have not been entered", "Nothing was recorded",
                                   "No allocations and no advances"})
            EXPECT_FALSE(page.screen.says(untrue)) << tab << ": " << untrue;
        for (const auto* button : {"contributeButton", "allocateButton", "participantsButton"})
            EXPECT_FALSE(page.screen.shows(button)) << tab;
        page.screen.keys("Ctrl+Tab");
    }
}

TEST(CapitalView, BeginsInACompanyWithoutAccounts)
{
    auto sample = withoutAccounts();
    Page page{sample};
    EXPECT_FALSE(page.screen.shows("capitalUnavailable"));
    page.screen.press("ownersButton");
    page.screen.waitForFocus("recordForm");
    page.screen.fill("recordName", "Budi Santoso");
    serveBooks(page, sample.owner("Budi Santoso"));
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    page.screen.press("historyButton");
    page.screen.waitForFocus("recordForm");
    EXPECT_EQ(page.screen.read("recordRow0"), "0") << "what was paid in before needs no account";
}

TEST(CapitalView, SaysWhyALatestRecordLeadsToNoEntry)
{
    auto sample = capitalSample();
    sample.books().transactions = {};
    Page page{sample};
    const auto says = [&](const char* record, const char* why) {
        page.screen.pressRow("latestRecords", record);
        page.screen.keys("Return");
        page.screen.waitUntil(why, [&] { return page.screen.spoken("statusBar").starts_with(why); });
        EXPECT_TRUE(page.screen.shows("latestRecords"));
    };
    says("Contribution", "You do not see the account of this entry");
    says("Allocation 2026 Q3", "No cash flow");
}

TEST(CapitalView, ShowsAllFiguresWithoutScrollingInTheSmallestWindow)
{
    for (const auto* language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        WindowUnderTest under{capitalPages(), {900, 640}};
        openBooks(under, capitalSample());
        under.speak(language);
        const auto beyond = [&](const char* table) {
            return under.screen.find<QTableView>(table).horizontalScrollBar()->maximum();
        };
        EXPECT_EQ(beyond("ownersTable"), 0) << language;
        under.screen.keys("Ctrl+Tab Ctrl+Tab");
        under.screen.find("batchesTable").setFocus();
        for (const auto* batch : {"Ctrl+Home", "Down", "Ctrl+End"}) { // two allocations, then the advances
            under.screen.keys(batch);
            settle();
            EXPECT_EQ(beyond("linesTable"), 0) << language << ' ' << batch;
            if (!under.screen.shows("settlementNone"))
                EXPECT_EQ(beyond("movementsTable"), 0) << language << ' ' << batch;
        }
    }
}

TEST(CapitalView, KeepsTheSettlementBelowTheLinesWhetherAnythingWasPaidOrNot)
{
    Page page;
    page.openDividends();
    const auto gapOf = [&](const char* batch) {
        page.screen.pressRow("batchesTable", batch);
        page.screen.pressRow("linesTable", "陈思远");
        settle();
        const auto& lines = page.screen.find("linesTable");
        const int below = lines.mapToGlobal(QPoint{0, lines.height()}).y();
        return page.screen.find("settlementEquation").mapToGlobal(QPoint{}).y() - below;
    };
    const int paid = gapOf("2026 Q2");
    EXPECT_TRUE(page.screen.shows("movementsTable"));
    const int unpaid = gapOf("2026 Q3");
    EXPECT_TRUE(page.screen.shows("settlementNone"));
    EXPECT_EQ(unpaid, paid);
}

TEST(CapitalView, ShowsTheWholeBaselineBelowTheContributions)
{
    Page page;
    page.screen.keys("Ctrl+Tab");
    page.screen.waitForText("1,850,000,000");
    const auto& box = page.screen.find<QScrollArea>("baselineScroll");
    EXPECT_EQ(box.verticalScrollBar()->maximum(), 0) << "three owners find room without scrolling";
}

TEST(CapitalView, ReversesTheContributionThatIsChosenNow)
{
    Page page{capitalSample().contribute("2026-11-20", "c3", "IDR", "250,000", "Operating bank")};
    page.screen.keys("Ctrl+Tab");
    page.screen.pressRow("contributionsTable", "150,000,000");
    page.screen.press("reverseContributionButton");
    page.screen.waitForFocus("recordForm");
    EXPECT_NE(page.screen.read("recordPerson").find("Budi Santoso"), std::string::npos);
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.capitalSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].contributionID, "c9");
}

TEST(CapitalView, ShowsTheFirstAllocationOnceItIsMade)
{
    CapitalSample before{capitalGround()};
    before.participant("Budi Santoso", "100");
    Page page{before};
    page.screen.keys("Ctrl+Tab Ctrl+Tab");
    page.screen.waitForText("No allocations and no advances");
    serveBooks(page, before.allocate("2026-11-20", "2026 Q4", "IDR", "1,000", {{"d1", "100"}}));
    std::ignore = resultOf(page.store.refresh(false));
    page.screen.waitFor("linesTable");
    EXPECT_TRUE(page.screen.offers("payButton"));
}

TEST(CapitalView, SendsAContributionWithItsReceiptOnceThatIsUploaded)
{
    Page page;
    page.openContribution();
    QImage picture{60, 40, QImage::Format_RGB32};
    picture.fill(Qt::darkGreen);
    QApplication::clipboard()->setImage(picture);
    page.server.replace("POST v1/attachments", ServerReply::parked());
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+V Ctrl+Return");
    page.screen.waitForText("Saved as soon as the receipts are uploaded.");
    EXPECT_TRUE(page.capitalSent().empty());
    page.server.release(ServerReply::json(
        R"({"id":"r1","name":"n.png","mime":"image/png","byteCount":1000,"createdAt":"2026-11-20T10:00:00Z"})"));
    page.screen.waitUntilGone("recordForm");
    const auto sent = page.capitalSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].attachmentIDs, std::vector<std::string>{"r1"});
}

TEST(CapitalView, KeepsAReceiptThatFailedForTheEntryOfThePayment)
{
    Page page;
    page.openDividends();
    page.screen.press("payButton");
    page.screen.waitForFocus("recordForm");
    QImage picture{60, 40, QImage::Format_RGB32};
    picture.fill(Qt::darkGreen);
    QApplication::clipboard()->setImage(picture);
    page.screen.fill("recordAmount", "1000");
    page.server.replace("POST v1/attachments", ServerReply::error(507, "insufficient_storage"));
    page.screen.keys("Ctrl+V");
    page.screen.waitForText("Failed");
    auto after = capitalSample();
    serveBooks(page, after.pay("2026-11-20", "d10", "d1", "1,000", "Operating bank"));
    page.server.replace("POST v1/dividends/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitForFocus("addReceipts");
    EXPECT_TRUE(page.screen.says("0 files uploaded; 1 failed."));
    EXPECT_TRUE(page.screen.says("Dividend · IDR")) << "the entry is named";
    page.server.replace(
        "POST v1/attachments",
        ServerReply::json(
            R"({"id":"r1","name":"n.png","mime":"image/png","byteCount":1000,"createdAt":"2026-11-20T10:00:00Z"})"));
    page.screen.press("receiptRetry");
    page.screen.waitUntil("it is uploaded", [&] { return !page.screen.shows("receiptRetry"); });
    page.server.replace("POST v1/transactions/entry-d11/attachments", ServerReply::json(after.json()));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("addReceipts");
    const auto links = page.server.requests("POST v1/transactions/entry-d11/attachments");
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].body, R"({"attachmentIDs":["r1"]})");
    EXPECT_EQ(page.dividendsSent().size(), 1U) << "the payment itself is not sent again";
}

TEST(CapitalView, SaysWhyAPasteIsRefusedAndWhatIsWrongWithAnAmountThatIsLeft)
{
    Page page;
    page.openContribution();
    page.screen.find("recordAmount").setFocus();
    QApplication::clipboard()->setText(QStringLiteral("12 apples"));
    page.screen.keys("Ctrl+A Ctrl+V");
    EXPECT_EQ(page.screen.read("recordAmount"), "250,000") << "what stands there stays";
    EXPECT_NE(page.screen.read("recordAmountError"), "") << "and the reason is said";
    page.screen.fill("recordAmount", "1.2.3");
    page.screen.find("recordNote").setFocus();
    page.screen.waitForText("Enter an actual contribution amount greater than zero.");
    page.screen.fill("recordAmount", "10");
    EXPECT_FALSE(page.screen.shows("recordAmountError"));
}

TEST(CapitalView, TypesAmountsInATableAsEverywhereAndGoesDownItsColumn)
{
    Page page;
    page.screen.keys("Ctrl+Tab");
    page.screen.press("supersedeButton");
    page.screen.waitForFocus("recordForm");
    page.screen.find("recordRow0").setFocus();
    page.screen.keys("Ctrl+A");
    page.screen.type("1060000000");
    EXPECT_EQ(page.screen.read("recordRow0"), "1,060,000,000");
    page.screen.keys("Return");
    EXPECT_EQ(page.screen.focus(), "recordRow1");
    page.screen.fill("recordRow2", "1.2.3");
    page.screen.find("recordRow1").setFocus();
    page.screen.waitUntil("what is wrong is said in its row",
                          [&] { return page.screen.spoken("recordRow2").find(": ") != std::string::npos; });
    page.screen.fill("recordRow2", "0");
    page.screen.find("recordRow1").setFocus();
    QApplication::clipboard()->setText(QStringLiteral("12 apples"));
    page.screen.keys("Ctrl+A Ctrl+V");
    EXPECT_EQ(page.screen.read("recordRow1"), "800,000,000") << "what stands there stays";
    page.screen.waitForText("The clipboard does not hold one amount in this currency.");
    page.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    page.screen.keys("Ctrl+Return");
    page.screen.waitUntilGone("recordForm");
    ASSERT_EQ(page.capitalSent().size(), 1U);
    EXPECT_EQ(page.capitalSent().front().entries->front().amountMinor, 106'000'000'000);
}

TEST(CapitalView, SaysOverTheFormWhatIsAboutNoneOfItsFields)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi Santoso").baseline("2026-11-20", "IDR", "2026-11-20", {{"c1", "7"}});
    Page page{sample};
    page.openContribution();
    page.screen.pick("recordAccount", "Operating bank");
    page.screen.keys("Ctrl+Return");
    page.screen.waitForText("The historical contribution range overlaps recorded contributions");
    EXPECT_TRUE(page.capitalSent().empty());
}

namespace {

/// The window with a member who pays a dividend while the session ends.
struct PaymentUnderTest : WindowUnderTest {
    PaymentUnderTest() : WindowUnderTest{capitalAndLedger()} { enter(); }

    static PageRegistry capitalAndLedger()
    {
        auto registry = capitalPages();
        registry.add<LedgerView>(WorkspacePage::ledger); // which comes first
        return registry;
    }
    void enter()
    {
        server.replace("POST v1/auth/login",
                       ServerReply::json(R"({"token":"token-1","snapshot":)" + capitalSample().json() + "}"));
        serveBooks(*this, capitalSample());
        require(resultOf(store.login("m1@example.com", "secret")).has_value(), "the member signs in");
        settle();
    }
    void fillPayment()
    {
        screen.keys("Ctrl+2");
        screen.keys("Ctrl+Tab Ctrl+Tab");
        screen.waitFor("batchesTable");
        screen.press("payButton");
        screen.waitForFocus("recordForm");
        screen.fill("recordAmount", "1000");
    }
    void loseTheSession()
    {
        server.replace(path, ServerReply::error(401, "unauthorized"));
        screen.keys("Ctrl+Return");
        screen.waitFor("alertDialog");
        screen.press("messageClose");
        screen.waitFor("signInView");
    }
    std::vector<std::string> sent()
    {
        std::vector<std::string> bodies;
        for (const auto& each : server.requests(path))
            bodies.push_back(each.body);
        return bodies;
    }

    static constexpr auto path = "POST v1/dividends/commands";
};

}

TEST(CapitalView, BringsAnUnconfirmedPaymentBackLockedAfterTheSessionHasEnded)
{
    PaymentUnderTest under;
    under.fillPayment();
    under.server.replace(PaymentUnderTest::path, ServerReply::dropped());
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("Retry original request");
    under.loseTheSession();

    under.enter();
    under.screen.waitForFocus("recordForm");
    EXPECT_EQ(under.screen.read("recordAmount"), "1,000");
    EXPECT_FALSE(under.screen.offers("recordAmount")) << "what was sent is settled";
    EXPECT_TRUE(under.store.hasUnconfirmed()) << "quitting warns of it";
    under.server.replace(PaymentUnderTest::path, ServerReply::json("{}"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("recordForm");
    const auto sent = under.sent();
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1], sent[0]);
    EXPECT_EQ(sent[2], sent[0]);
    EXPECT_FALSE(under.store.keptSectionCommand().has_value());
}

TEST(CapitalView, BringsAPaymentThatWasNeverJudgedBackToBeChangedOrGivenUp)
{
    PaymentUnderTest under;
    under.fillPayment();
    under.loseTheSession();

    under.enter();
    under.screen.waitForFocus("recordForm");
    EXPECT_EQ(under.screen.read("recordAmount"), "1,000");
    EXPECT_TRUE(under.screen.offers("recordAmount"));
    EXPECT_FALSE(under.store.hasUnconfirmed()) << "nothing of it is recorded";
    under.screen.press("recordCancel");
    under.screen.press("questionConfirm");
    under.screen.waitUntilGone("recordForm");
    EXPECT_FALSE(under.store.keptSectionCommand().has_value());
    EXPECT_EQ(under.sent().size(), 1U);
}

TEST(CapitalView, BringsAPaymentThatWasChangedSinceBackOnce)
{
    PaymentUnderTest under;
    under.fillPayment();
    under.loseTheSession();
    under.enter();
    under.screen.waitForFocus("recordForm");
    under.screen.fill("recordAmount", "900");
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(under.store.refresh(false)).has_value());
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitFor("signInView");

    under.enter();
    under.screen.waitForFocus("recordForm");
    EXPECT_EQ(under.screen.read("recordAmount"), "900");
    EXPECT_EQ(under.store.keptRequests().count(), 0U) << "the form itself has waited";
    under.server.replace(PaymentUnderTest::path, ServerReply::json("{}"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("recordForm");
    settle();
    EXPECT_FALSE(under.screen.shows("recordForm"));
    EXPECT_EQ(under.sent().size(), 2U);
}

TEST(CapitalView, SavesTheSectionOfTheTabAsATable)
{
    Page page;
    QTemporaryDir folder;
    const auto save = [&](const char* button, const char* name) {
        page.screen.press(button);
        page.screen.waitForFocus("exportFileDialog");
        EXPECT_NE(page.screen.read("fileNameEdit").find(name), std::string::npos);
        const auto path = folder.filePath(QString::fromUtf8(name));
        page.screen.fill("fileNameEdit", path.toStdString());
        page.screen.keys("Return");
        page.screen.waitUntil("the file is there", [&] { return QFile::exists(path); });
        QFile written{path};
        return written.open(QIODevice::ReadOnly) ? written.readAll().toStdString() : std::string{};
    };
    const auto sample = capitalSample();
    EXPECT_EQ(save("exportCapitalButton", "tallyfold-capital-2026-11-20.csv"),
              CapitalCSV::render(*sample.books().capital));
    EXPECT_FALSE(page.screen.shows("exportDividendsButton"));
    page.activate();
    page.openDividends();
    EXPECT_EQ(page.screen.find("exportDividendsButton").toolTip().section(QLatin1Char{'\n'}, 1),
              QStringLiteral("Export the dividend ledger in each original currency, excluding private documents and "
                             "account details."));
    EXPECT_EQ(save("exportDividendsButton", "tallyfold-dividends-2026-11-20.csv"),
              DividendCSV::render(*sample.books().dividends, "en-US"));
}

TEST(CapitalView, SavesWhatTheBooksHoldOnceThePlaceIsChosen)
{
    Page page;
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("capital.csv"));
    const auto saveAs = [&] {
        page.screen.press("exportCapitalButton");
        page.screen.waitForFocus("exportFileDialog");
        page.screen.fill("fileNameEdit", path.toStdString());
    };
    saveAs();
    auto later = capitalSample();
    later.contribute("2026-11-20", "c1", "USD", "250", "Singapore");
    serveBooks(page, later);
    page.screen.keys("Return");
    page.screen.waitUntil("the file is there", [&] { return QFile::exists(path); });
    QFile written{path};
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().toStdString(), CapitalCSV::render(*later.books().capital));
    ASSERT_TRUE(written.remove());

    page.activate();
    saveAs();
    later.books().currentMember.role = "partner";
    later.books().currentMember.permissions = {{"viewCapital"}};
    serveBooks(page, later);
    page.screen.keys("Return");
    page.screen.waitFor("alertDialog");
    EXPECT_FALSE(QFile::exists(path)) << "the right was withdrawn meanwhile";
}

TEST(CapitalView, SavesFromTheOverviewWhatMayBeSaved)
{
    auto sample = capitalSample();
    sample.books().currentMember.role = "partner";
    sample.books().currentMember.permissions = {{"viewCapital", "viewDividends", "exportData"}};
    Page page{sample};
    EXPECT_TRUE(page.screen.shows("exportDividendsButton"));
    EXPECT_FALSE(page.screen.shows("exportCapitalButton"));
}

TEST(CapitalView, LeavesRoomForTheCurrenciesInTheHeader)
{
    auto sample = capitalSample();
    sample.contribute("2026-11-20", "c1", "USD", "250", "Singapore");
    for (const auto* language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        Page page{sample};
        page.openDividends();
        page.speak(language);
        auto& currencies = page.screen.find("capitalCurrency");
        EXPECT_GE(currencies.width(), currencies.sizeHint().width()) << language;
        EXPECT_TRUE(page.screen.offers("segment1")) << language;
    }
}
