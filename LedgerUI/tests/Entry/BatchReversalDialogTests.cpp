#include <set>

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Entry/BatchReversalDialog.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"VND"}).grantAll().category("freight", "expense", "Freight");
    for (const auto* id : {"e1", "e2", "e3"})
        builder.expense(id, "2026-11-19", "bank", "VND", 500, "freight");
    return builder;
}

std::string path(const char* id)
{
    return std::string{"POST v1/transactions/"} + id + "/reverse";
}

struct BatchUnderTest {
    BatchUnderTest()
    {
        InterfaceLanguage::change("en-US");
        service.signIn(books());
        for (const auto* id : {"e1", "e2", "e3"})
            service.server.replace(path(id), ServerReply::json(books().json()));
        window.resize(900, 640);
        window.show();
        open();
    }

    void open()
    {
        delete dialog;
        dialog = new BatchReversalDialog(service.store, {"e1", "e2", "e3"}, &window);
        dialog->open();
        settle();
    }

    template <class Widget = QAbstractButton>
    Widget& control(const char* name)
    {
        auto* found = dialog->findChild<Widget*>(QString::fromLatin1(name));
        require(found != nullptr, name);
        return *found;
    }
    std::string states()
    {
        std::string text;
        const auto& rows = control<PlainTable>("batchTable").rows();
        for (int row = 0; row < rows.rowCount(); ++row)
            text += (row > 0 ? " | " : "") + rows.index(row, 2).data().toString().toStdString();
        return text;
    }
    void begin(const char* reason = "Entered twice")
    {
        control<QLineEdit>("batchReason").clear();
        QTest::keyClicks(&control<QLineEdit>("batchReason"), QString::fromUtf8(reason));
        control("batchConfirm").click();
    }
    void rest()
    {
        waitUntil([&] { return !service.store.isBusy() && !dialog->isBusy(); });
        settle();
    }
    std::string banner() { return dialog->banner().text().toStdString(); }

    StoreUnderTest service;
    QMainWindow window;
    QPointer<BatchReversalDialog> dialog;
};

}

TEST(BatchReversalDialog, SendsOneRequestForEachWithAKeyOfItsOwn)
{
    BatchUnderTest under;
    QSignalSpy reversed{under.dialog, &BatchReversalDialog::reversed};
    under.control("batchConfirm").click();
    EXPECT_EQ(under.control<FieldError>("batchReasonError").message(),
              QStringLiteral("Enter the reason for the reversal."));
    under.service.server.replace(path("e2"), ServerReply::error(409, "refunds_exist"));
    under.begin();
    under.rest();
    std::set<std::string> keys;
    for (const auto* id : {"e1", "e2", "e3"}) {
        const auto sent = under.service.server.requests(path(id));
        ASSERT_EQ(sent.size(), 1U) << id;
        const auto reversal = Json::decode<Reversal>(sent.front().body).value();
        EXPECT_EQ(reversal.reason, "Entered twice");
        keys.insert(reversal.idempotencyKey);
    }
    EXPECT_EQ(keys.size(), 3U);
    EXPECT_EQ(under.states(),
              "Reversed | " +
                  under.service.store.friendly(APIError{.status = 409, .code = "refunds_exist", .message = {}}) +
                  " | Reversed");
    EXPECT_EQ(under.banner(), "2 entries reversed.");
    EXPECT_FALSE(under.service.store.errorMessage().has_value()) << "the row says it";
    ASSERT_EQ(reversed.count(), 1);
    EXPECT_FALSE(under.control("batchConfirm").isVisible());
}

TEST(BatchReversalDialog, LeavesOutAnEntryWhoseEarlierReasonWouldBeSent)
{
    BatchUnderTest under;
    under.service.server.replace(path("e2"), ServerReply::error(409, "refunds_exist"));
    ASSERT_FALSE(resultOf(under.service.store.reverseTransaction("e2", "Charged twice")).has_value());
    under.open();
    EXPECT_EQ(under.states(),
              "Waiting | An earlier request to reverse this entry is kept. Open its own reversal. | Waiting");
    under.begin();
    under.rest();
    EXPECT_EQ(under.service.server.requests(path("e2")).size(), 1U);
    EXPECT_EQ(under.banner(), "2 entries reversed.");
}

TEST(BatchReversalDialog, PresentsOneRowForEachReplyAndHowFarItIs)
{
    BatchUnderTest under;
    auto& table = under.control<PlainTable>("batchTable");
    QSignalSpy amended{&table.rows(), &QAbstractItemModel::dataChanged};
    under.service.server.replace(path("e2"), ServerReply::parked());
    under.begin();
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    EXPECT_EQ(under.banner(), "1 of 3 answered by the service");
    EXPECT_EQ(under.states(), "Reversed | Being reversed… | Waiting");
    for (const auto& each : amended)
        EXPECT_EQ(each[0].toModelIndex().row(), each[1].toModelIndex().row()) << "thousands are not made anew";
    EXPECT_EQ(amended.count(), 3) << "sent, reversed, and the next one sent";
    under.service.server.release(ServerReply::json(books().json()));
    under.rest();
    EXPECT_EQ(under.states(), "Reversed | Reversed | Reversed");
}

TEST(BatchReversalDialog, StopsBetweenTwoAndGoesOnThere)
{
    BatchUnderTest under;
    under.service.server.replace(path("e1"), ServerReply::parked());
    under.begin();
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    EXPECT_EQ(under.control("batchCancel").text(), QStringLiteral("Stop"));
    under.control("batchCancel").click();
    EXPECT_TRUE(under.dialog->isVisible()) << "what is on its way is waited for";
    under.service.server.release(ServerReply::json(books().json()));
    under.rest();
    EXPECT_EQ(under.states(), "Reversed | Waiting | Waiting");
    EXPECT_TRUE(under.service.server.requests(path("e2")).empty());
    EXPECT_EQ(under.control("batchConfirm").text(), QStringLiteral("Go on with 2 entries"));
    under.control("batchConfirm").click();
    under.rest();
    EXPECT_EQ(under.states(), "Reversed | Reversed | Reversed");
    EXPECT_EQ(under.service.server.requests(path("e1")).size(), 1U);
}

TEST(BatchReversalDialog, SendsAnUnconfirmedOneAgainAsItStood)
{
    BatchUnderTest under;
    under.service.server.replace(path("e2"), ServerReply::dropped());
    under.begin();
    under.rest();
    EXPECT_EQ(under.states(), "Reversed | Not confirmed | Waiting");
    EXPECT_NE(under.banner().find("Stopped: 1 reversed, 2 left."), std::string::npos);
    under.service.server.replace(path("e2"), ServerReply::json(books().json()));
    under.control("batchConfirm").click();
    under.rest();
    const auto sent = under.service.server.requests(path("e2"));
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0].body, sent[1].body);
    EXPECT_EQ(under.states(), "Reversed | Reversed | Reversed");
}
