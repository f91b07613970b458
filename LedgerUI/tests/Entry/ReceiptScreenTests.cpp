#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Receipts/AddReceiptsDialog.h"
#include "LedgerUI/Screens/Receipts/ReceiptPreviewDialog.h"
#include "LedgerUI/testing/WindowUnderTest.h"
#include "LedgerUI/tests/FormUnderTest.h"

namespace {

ServerReply uploaded(const std::string& id)
{
    return ServerReply::json(R"({"id":")" + id + R"(","name":"n.png","mime":"image/png","byteCount":1000,)" +
                             R"("createdAt":"2026-11-20T10:00:00Z"})");
}

QImage picture()
{
    QImage image{60, 40, QImage::Format_RGB32};
    image.fill(Qt::darkGreen);
    return image;
}

QByteArray png()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture().save(&buffer, "png");
    return buffer.data();
}

/// Files that a person has at hand, and their ways into a dialog.
struct Desk {
    QString file(const char* name, const QByteArray& content = png())
    {
        const auto path = folder.filePath(QString::fromUtf8(name));
        QFile written{path};
        require(written.open(QIODevice::WriteOnly) && written.write(content) == content.size(), "the file is written");
        return path;
    }
    static void drop(QWidget& target, const QStringList& paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const auto& path : paths)
            urls << QUrl::fromLocalFile(path);
        data.setUrls(urls);
        const auto place = target.rect().center();
        QDragEnterEvent enter{place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&target, &enter);
        QDropEvent drop{place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&target, &drop);
    }

    QTemporaryDir folder;
};

std::vector<std::string> attached(FormUnderTest& under)
{
    const auto posted = under.posted();
    return posted.empty() ? std::vector<std::string>{"nothing posted"} : posted.back().attachmentIDs;
}

std::size_t uploads(FormUnderTest& under)
{
    return under.service.server.requests("POST v1/attachments").size();
}

}

TEST(ReceiptsInTheForm, AreTakenWhereverTheyAreDroppedAndGoWithTheEntry)
{
    Desk desk;
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    under.service.server.answer("POST v1/attachments", uploaded("a2"));
    Desk::drop(under.control("entryNote"), {desk.file("bill.png"), desk.file("proof.png")});
    waitUntil([&] { return uploads(under) == 2 && !under.service.store.isBusy(); });
    EXPECT_TRUE(under.control<QLineEdit>("entryNote").text().isEmpty()) << "a file is no text";
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    EXPECT_EQ(attached(under), (std::vector<std::string>{"a1", "a2"}));
}

TEST(ReceiptsInTheForm, ArePastedAsPicturesWhileTextStaysText)
{
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    auto& note = under.control<QLineEdit>("entryNote");
    note.setFocus();
    QApplication::clipboard()->setText(QStringLiteral("November"));
    QTest::keyClick(&note, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(note.text(), QStringLiteral("November"));
    EXPECT_EQ(uploads(under), 0U);
    QApplication::clipboard()->setImage(picture());
    QTest::keyClick(&note, Qt::Key_V, Qt::ControlModifier);
    waitUntil([&] { return uploads(under) == 1 && !under.service.store.isBusy(); });
    EXPECT_EQ(note.text(), QStringLiteral("November"));
}

TEST(ReceiptsInTheForm, HoldTheSavingUntilTheyAreUploaded)
{
    Desk desk;
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", ServerReply::parked());
    Desk::drop(*under.form, {desk.file("bill.png")});
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.click("entrySave");
    EXPECT_EQ(under.banner(), "Saved as soon as the receipts are uploaded.");
    EXPECT_TRUE(under.posted().empty());
    under.service.server.release(uploaded("a1"));
    waitUntil([&] { return under.form.isNull(); });
    EXPECT_EQ(under.posted().size(), 1U);
    EXPECT_EQ(attached(under), std::vector<std::string>{"a1"});
}

TEST(ReceiptsInTheForm, ThatFailedAreHandedOnOnceTheEntryIsRecorded)
{
    Desk desk;
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    under.service.server.answer("POST v1/attachments", ServerReply::error(507, "insufficient_storage"));
    Desk::drop(*under.form, {desk.file("kept.png"), desk.file("lost.png")});
    waitUntil([&] { return uploads(under) == 2 && !under.service.store.isBusy(); });
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    EXPECT_EQ(attached(under), std::vector<std::string>{"a1"});

    // Tried again there, only the one that is missing goes to the service.
    auto* dialog = under.window.findChild<AddReceiptsDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->banner().text(),
              QStringLiteral("1 files uploaded; 1 failed. Select the failed files again to retry."));
    under.service.server.replace("POST v1/attachments", uploaded("a2"));
    dialog->findChild<QAbstractButton*>(QStringLiteral("receiptRetry"))->click();
    waitUntil([&] { return uploads(under) == 3 && !under.service.store.isBusy(); });
    under.service.server.replace("POST v1/transactions/e9/attachments", ServerReply::dropped());
    QPointer<AddReceiptsDialog> open = dialog;
    dialog->findChild<QAbstractButton*>(QStringLiteral("addReceiptsConfirm"))->click();
    waitUntil([&] { return !under.service.store.isBusy(); });
    settle();
    ASSERT_FALSE(open.isNull());
    EXPECT_EQ(dialog->confirmButton().text(), QStringLiteral("Retry original request"));
    under.service.server.replace("POST v1/transactions/e9/attachments", ServerReply::json(entryBooks().json()));
    dialog->findChild<QAbstractButton*>(QStringLiteral("addReceiptsConfirm"))->click();
    waitUntil([&] { return open.isNull(); });
    const auto links = under.service.server.requests("POST v1/transactions/e9/attachments");
    ASSERT_EQ(links.size(), 2U);
    EXPECT_EQ(links[0].body, R"({"attachmentIDs":["a2"]})");
    EXPECT_EQ(links[1].body, links[0].body);
}

TEST(ReceiptsInTheForm, ThatFailedGoToNoOtherCompany)
{
    Desk desk;
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", ServerReply::error(507, "insufficient_storage"));
    Desk::drop(*under.form, {desk.file("lost.png")});
    waitUntil([&] { return uploads(under) == 1 && !under.service.store.isBusy(); });
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    QPointer<AddReceiptsDialog> dialog = under.window.findChild<AddReceiptsDialog*>();
    ASSERT_FALSE(dialog.isNull());
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    dialog->findChild<QAbstractButton*>(QStringLiteral("receiptRetry"))->click();
    waitUntil([&] { return uploads(under) == 2 && !under.service.store.isBusy(); });

    const auto open = [&](const std::string& id, const std::string& name) {
        AuthResponse opened{.token = "token-" + id, .snapshot = entryBooks().companyName(name).build()};
        opened.snapshot.company.id = id;
        under.service.server.replace("POST v1/me/companies/switch", ServerReply::json(Json::encode(opened)));
        ASSERT_TRUE(resultOf(under.service.store.switchCompany(id)).has_value());
        settle();
    };
    const auto links = [&] { return under.service.server.requests("POST v1/transactions/e9/attachments").size(); };
    open("c2", "Samudra Kopi");
    ASSERT_FALSE(dialog.isNull());
    EXPECT_TRUE(dialog->banner().text().startsWith(QStringLiteral("This form belongs to Harbour Trading.")));
    EXPECT_FALSE(dialog->confirmButton().isEnabled());
    QTest::keyClick(dialog, Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_EQ(links(), 0U) << "the other company has no such entry, or another one of that name";

    open("c1", "Harbour Trading");
    under.service.server.replace("POST v1/transactions/e9/attachments", ServerReply::json(entryBooks().json()));
    dialog->confirmButton().click();
    waitUntil([&] { return dialog.isNull(); });
    EXPECT_EQ(links(), 1U);
}

TEST(ReceiptsInTheForm, AreLockedWhileTheOutcomeIsUnknown)
{
    Desk desk;
    FormUnderTest under;
    fill(under);
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    Desk::drop(*under.form, {desk.file("bill.png")});
    waitUntil([&] { return uploads(under) == 1 && !under.service.store.isBusy(); });
    under.answer(ServerReply::dropped());
    under.saveAndWait();
    EXPECT_TRUE(under.control("receiptRemove").isHidden());
    EXPECT_TRUE(under.control("receiptFiles").isHidden());
    Desk::drop(*under.form, {desk.file("late.png")});
    EXPECT_EQ(uploads(under), 1U);
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    const auto posted = under.posted();
    ASSERT_EQ(posted.size(), 2U);
    EXPECT_EQ(posted[1], posted[0]);
}

TEST(ReceiptsInTheForm, AreAskedForBeforeTheFormIsLeft)
{
    Desk desk;
    FormUnderTest under;
    under.service.server.replace("POST v1/attachments", uploaded("a1"));
    Desk::drop(*under.form, {desk.file("bill.png")});
    waitUntil([&] { return uploads(under) == 1 && !under.service.store.isBusy(); });
    under.form->reject();
    EXPECT_TRUE(under.form) << "the receipt would be left loose";
    EXPECT_NE(under.form->findChild<QDialog*>(), nullptr);
}

TEST(ReceiptPreview, GoesThroughTheReceiptsByKeyAndClosesBySpace)
{
    InterfaceLanguage::change("en-US");
    StoreUnderTest service;
    service.signIn(entryBooks());
    service.server.answer("GET v1/attachments/a1", ServerReply::json(png().toStdString()));
    service.server.answer("GET v1/attachments/a2", ServerReply::json("%PDF-1.4 broken"));
    QMainWindow window;
    window.resize(900, 640);
    window.show();
    QPointer<ReceiptPreviewDialog> dialog = new ReceiptPreviewDialog(
        service.store,
        {{.id = "a1", .transactionID = {}, .name = "bill.png", .mime = "image/png", .byteCount = 10, .createdAt = {}},
         {.id = "a2",
          .transactionID = {},
          .name = "paper.pdf",
          .mime = "application/pdf",
          .byteCount = 10,
          .createdAt = {}}},
        0, &window);
    dialog->open();
    auto* shown = dialog->findChild<QWidget*>(QStringLiteral("previewPicture"));
    waitUntil([&] { return shown->accessibleName() == QStringLiteral("bill.png"); });
    QTest::keyClick(shown, Qt::Key_Right);
    waitUntil([&] { return shown->accessibleName() == QStringLiteral("This file cannot be previewed."); });
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Receipt 2 of 2"));
    QTest::keyClick(shown, Qt::Key_Right);
    QTest::keyClick(shown, Qt::Key_Left);
    waitUntil([&] { return shown->accessibleName() == QStringLiteral("bill.png"); });
    EXPECT_EQ(service.server.requests("GET v1/attachments/a1").size(), 1U) << "the second look comes from the cache";
    QTest::keyClick(shown, Qt::Key_Space);
    settle();
    waitUntil([&] { return dialog.isNull(); });
}
