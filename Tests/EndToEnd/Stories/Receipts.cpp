#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QPainter>
#include <QUuid>

#include "Tests/EndToEnd/Story.h"

namespace {

QImage bill()
{
    QImage image{420, 560, QImage::Format_RGB32};
    image.fill(Qt::white);
    QPainter painter{&image};
    painter.fillRect(40, 40, 200, 24, Qt::darkGray);
    for (int line = 0; line < 8; ++line)
        painter.fillRect(40, 110 + 40 * line, line % 2 ? 260 : 330, 8, Qt::lightGray);
    return image;
}

void paste(Stage& stage)
{
    QApplication::clipboard()->setImage(bill());
    stage.screen.keys("Ctrl+V");
}

void recordWithReceipts(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("A receipt pasted into a new entry"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "185000");
        screen.press("entryCategory0");
        screen.fill("entryNote", note.toStdString());
        paste(stage);
        screen.waitForText("Pasted picture.png");
        screen.waitForText(" KB");
    });
    stage.teller.step(QStringLiteral("Recorded with its receipt"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(note.toStdString());
        screen.waitFor("detailReceipt");
    });
    expect(stage.books.receiptsOn(note) == 1, QStringLiteral("the entry carries the receipt once"));
}

void lookAtIt(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("A look at the receipt"), [&] {
        screen.find("detailReceipt").setFocus();
        screen.keys("Space");
        screen.waitFor("receiptPreview");
        screen.waitUntil("the picture is shown", [&] { return screen.offers("previewSave"); });
    });
    screen.waitUntil("the picture has the keyboard", [&] { return screen.focus() == "previewPicture"; });
    screen.keys("Space");
    screen.waitUntilGone("receiptPreview");
}

void addAnother(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("Another receipt, while the service is away"), [&] {
        screen.press("addReceiptsButton");
        screen.waitFor("addReceipts");
        stage.service.stop();
        paste(stage);
        screen.waitForText("Failed");
    });
    stage.teller.step(QStringLiteral("Tried again"), [&] {
        expect(stage.service.start(), QStringLiteral("the service is back"));
        screen.press("receiptRetry");
        screen.waitForText(" KB");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("addReceipts");
    });
    expect(stage.books.receiptsOn(note) == 2, QStringLiteral("the entry carries both receipts once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

void share(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("The entry as a digital receipt"), [&] {
        screen.press("shareButton");
        screen.waitForFocus("shareAccount");
        screen.press("shareCopy");
        screen.waitForText("The receipt is ready to share.");
        expect(QApplication::clipboard()->image().width() == 3 * 388,
               QStringLiteral("the picture is on the clipboard"));
    });
    screen.keys("Esc");
    screen.waitUntilGone("receiptShare");
}

void giveOneUp(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("A draft with a receipt is given up"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        paste(stage);
        screen.waitForText(" KB");
        screen.keys("Esc");
        screen.waitForText("Uploaded receipts are not deleted automatically.");
    });
    screen.press("questionConfirm");
    screen.waitUntilGone("transactionForm");
    expect(stage.books.looseReceipts() == 1, QStringLiteral("the receipt stays loose at the service"));
}

}

void tellOfReceipts(Stage& stage)
{
    stage.enterDemonstration("finance");
    const auto note =
        QStringLiteral("Parking at the harbour %1").arg(QUuid::createUuid().toString(QUuid::Id128).left(8));
    recordWithReceipts(stage, note);
    lookAtIt(stage);
    addAnother(stage, note);
    share(stage);
    giveOneUp(stage);
}
