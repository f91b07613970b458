#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoro/QCoroTask>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Entry/ReversalDialog.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

constexpr auto reverse = "POST v1/transactions/e1/reverse";

SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"VND"}).account("vault", {"VND"}).grantAll().category("freight", "expense", "Freight");
    builder.expense("e1", "2026-11-19", "bank", "VND", 38'600'000, "freight").note("Waybill 7");
    return builder.transfer("t1", "2026-11-19", "bank", "vault", "VND", 500);
}

class DialogUnderTest {
public:
    explicit DialogUnderTest(std::size_t entry = 0, std::string language = "en-US")
    {
        InterfaceLanguage::change(std::move(language));
        service.signIn(books());
        window.resize(900, 640);
        window.show();
        open(entry);
    }
    ~DialogUnderTest() { InterfaceLanguage::change("en-US"); }

    void open(std::size_t entry = 0)
    {
        dialog = new ReversalDialog(service.store, service.store.snapshot()->transactions[entry], &window);
        dialog->open();
        dialog->activateWindow();
        waitUntil([&] { return dialog->isActiveWindow(); });
    }
    /// Refused for certain: the refusal is named, with what the next attempt would send.
    void expectRefused(const char* reason)
    {
        EXPECT_EQ(control<QLineEdit>("reversalReason").text(), QString::fromUtf8(reason));
        EXPECT_FALSE(control<QLineEdit>("reversalReason").isEnabled());
        EXPECT_EQ(confirm().text(), QStringLiteral("Retry original request"));
        EXPECT_EQ(dialog->banner().text().toStdString(),
                  service.store.friendly(APIError{.status = 409, .code = "refunds_exist", .message = {}}) +
                      "\nThe next attempt sends this reason again and books the reversal on 20 November 2026.");
        EXPECT_FALSE(service.store.errorMessage().has_value());
        settle();
        const auto& field = control<QWidget>("reversalReason");
        const int gap = control<QWidget>("dialogFoot").y() - field.mapTo(dialog, QPoint{0, field.height()}).y();
        EXPECT_LE(gap, 2 * Space::dialogMargin) << "the form is as high as it needs to be";
    }
    template <class Widget>
    Widget& control(const char* name)
    {
        auto* found = dialog->findChild<Widget*>(QString::fromLatin1(name));
        require(found != nullptr, name);
        return *found;
    }
    QAbstractButton& confirm() { return control<QAbstractButton>("reversalConfirm"); }
    void confirmAndWait()
    {
        confirm().click();
        waitUntil([&] { return !service.store.isBusy(); });
        settle();
    }

    StoreUnderTest service;
    QMainWindow window;
    QPointer<ReversalDialog> dialog;
};

}

TEST(ReversalDialog, AsksForAReasonFirst)
{
    DialogUnderTest under;
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("reversalReason"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("   "));
    under.confirm().click();
    EXPECT_EQ(under.control<FieldError>("reversalReasonError").message(),
              QStringLiteral("Enter the reason for the reversal."));
    EXPECT_TRUE(under.service.server.requests(reverse).empty());
}

TEST(ReversalDialog, ResendsTheSameRequestAfterAnUnknownOutcome)
{
    DialogUnderTest under;
    QSignalSpy reversed{under.dialog, &ReversalDialog::reversed};
    QTest::keyClicks(&under.control<QLineEdit>("reversalReason"), QStringLiteral("Billed twice"));
    under.service.server.replace(reverse, ServerReply::dropped());
    under.confirmAndWait();
    EXPECT_EQ(under.confirm().text(), QStringLiteral("Retry original request"));
    EXPECT_FALSE(under.control<QLineEdit>("reversalReason").isEnabled());
    EXPECT_FALSE(under.service.store.errorMessage().has_value()) << "the banner says it, so no alert does";
    under.service.clock.advance(std::chrono::hours{30});
    under.service.server.replace(reverse, ServerReply::json(books().json()));
    under.confirmAndWait();
    EXPECT_EQ(reversed.count(), 1);
    const auto sent = under.service.server.requests(reverse);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].body, sent[0].body);
}

TEST(ReversalDialog, OffersTheCorrectEntryPrefilled)
{
    DialogUnderTest under;
    TransactionDraft offered;
    QObject::connect(under.dialog, &ReversalDialog::correctionRequested, under.dialog,
                     [&](const TransactionDraft& draft) { offered = draft; });
    QTest::keyClicks(&under.control<QLineEdit>("reversalReason"), QStringLiteral("Billed twice"));
    under.service.server.replace(reverse, ServerReply::json(books().json()));
    under.confirmAndWait();
    EXPECT_EQ(under.confirm().text(), QStringLiteral("Record the correct entry"));
    under.confirm().click();
    EXPECT_EQ(offered.kind, "expense");
    EXPECT_EQ(offered.source, "bank");
    EXPECT_EQ(offered.amount, "38,600,000");
    EXPECT_EQ(offered.categoryID, "freight");
    EXPECT_EQ(offered.note, "Waybill 7");
    EXPECT_EQ(offered.idempotencyKey, "");
    waitUntil([&] { return under.dialog.isNull(); });
}

TEST(ReversalDialog, NamesARefusalAndWhatTheNextAttemptWouldSend)
{
    DialogUnderTest under;
    QTest::keyClicks(&under.control<QLineEdit>("reversalReason"), QStringLiteral("Billed twice"));
    under.service.server.replace(reverse, ServerReply::error(409, "refunds_exist"));
    under.confirmAndWait();
    under.expectRefused("Billed twice");
    under.control<QAbstractButton>("reversalCancel").click();
    waitUntil([&] { return under.dialog.isNull(); });

    under.service.clock.advance(std::chrono::hours{30});
    under.open();
    under.expectRefused("Billed twice");
    EXPECT_EQ(QApplication::focusWidget(), &under.confirm());
    under.service.server.replace(reverse, ServerReply::json(books().json()));
    under.confirmAndWait();
    const auto sent = under.service.server.requests(reverse);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].body, sent[0].body);
    EXPECT_EQ(under.confirm().text(), QStringLiteral("Record the correct entry"));
}

TEST(ReversalDialog, OffersNothingThatTheSnapshotForbidsAlready)
{
    DialogUnderTest under;
    auto held = books().build();
    held.transactions.front().reversedBy = "r1";
    auto reversed = Json::encode(held);
    under.service.server.replace("GET v1/snapshot", ServerReply::json(reversed));
    ASSERT_TRUE(resultOf(under.service.store.refresh(false)).has_value());
    EXPECT_FALSE(under.confirm().isEnabled());
    EXPECT_EQ(under.confirm().toolTip(), under.dialog->banner().text());
    EXPECT_FALSE(under.dialog->banner().isHidden());
}

TEST(ReversalDialog, OffersNoRetryOnceTheSnapshotForbidsIt)
{
    DialogUnderTest under;
    QTest::keyClicks(&under.control<QLineEdit>("reversalReason"), QStringLiteral("Billed twice"));
    under.service.server.replace(reverse, ServerReply::error(409, "already_reversed"));
    under.confirmAndWait();
    auto held = books().build();
    held.transactions.front().reversedBy = "r1";
    under.service.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(held)));
    ASSERT_TRUE(resultOf(under.service.store.refresh(false)).has_value());
    EXPECT_FALSE(under.confirm().isEnabled());
}

TEST(ReversalDialog, LetsTheReasonBeChangedWhileNothingWasSent)
{
    DialogUnderTest under;
    QTest::keyClicks(&under.control<QLineEdit>("reversalReason"), QStringLiteral("Billed twice"));
    under.service.server.replace("GET v1/snapshot", ServerReply::parked());
    QCoro::connect(under.service.store.refresh(false), &under.service.store, [](const Result<void>&) {});
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    under.confirm().click();
    waitUntil([&] { return under.control<QLineEdit>("reversalReason").isEnabled(); });
    EXPECT_EQ(under.confirm().text(), QStringLiteral("Confirm reversal"));
    EXPECT_TRUE(under.service.server.requests(reverse).empty());
    under.service.server.release(ServerReply::json(books().json()));
    waitUntil([&] { return !under.service.store.isBusy(); });
}

TEST(ReversalDialog, ExplainsATransferAsAWholeInEveryLanguage)
{
    for (const auto* language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        DialogUnderTest under{1, language};
        under.confirm().click();
        settle();
        EXPECT_EQ(auditLabels(*under.dialog), std::vector<std::string>{}) << language;
        EXPECT_EQ(auditControls(*under.dialog), std::vector<std::string>{}) << language;
    }
    DialogUnderTest transfer{1};
    DialogUnderTest expense{0};
    const auto explanation = [](DialogUnderTest& under) { return under.control<QLabel>("reversalExplanation").text(); };
    EXPECT_TRUE(explanation(transfer).startsWith(QStringLiteral("The whole transfer is reversed on both accounts")));
    EXPECT_TRUE(explanation(expense).startsWith(QStringLiteral("Posted amounts are not overwritten.")));
}
