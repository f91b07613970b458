#include <array>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "LedgerUI/Screens/Receipts/ReceiptPreviewDialog.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

void signIn(WindowUnderTest& under)
{
    SnapshotBuilder builder;
    builder.account("Operating bank", {"IDR", "USD"}).grantAll().category("power", "expense", "Electricity");
    under.openDemonstration(builder.expense("e1", "2026-11-19", "Operating bank", "IDR", 438'520'000, "power"));
    under.screen.waitFor("ledgerTable");
}

/// In a form, with one that failed.
void openForm(WindowUnderTest& under)
{
    signIn(under);
    under.screen.choose("newEntryKinds", "newEntry.expense");
    under.screen.waitForFocus("transactionForm");
    under.server.replace("POST v1/attachments", ServerReply::error(507, "insufficient_storage"));
    QImage pasted{30, 30, QImage::Format_RGB32};
    pasted.fill(Qt::gray);
    QApplication::clipboard()->setImage(pasted);
    under.screen.keys("Ctrl+V");
    under.screen.waitUntil("the upload has failed", [&] { return under.screen.shows("receiptRetry"); });
}

void addToAnEntry(WindowUnderTest& under)
{
    signIn(under);
    under.screen.pressRow("ledgerTable", "Electricity");
    under.screen.keys("Return");
    under.screen.press("addReceiptsButton");
    under.screen.waitFor("addReceipts");
    under.screen.keys("Ctrl+Return");
}

void lookAtOne(WindowUnderTest& under)
{
    signIn(under);
    under.server.replace("GET v1/attachments/a1", ServerReply::json("%PDF-1.4 broken"));
    const Attachment receipt{.id = "a1",
                             .transactionID = "e1",
                             .name = "van-don-7741-ban-sao-co-dau-cua-hang-tau-va-chu-ky.pdf",
                             .mime = "application/pdf",
                             .byteCount = 412'000,
                             .createdAt = {}};
    (new ReceiptPreviewDialog(under.store, {receipt, receipt}, 0, &under.window))->open();
    under.screen.waitUntil("the receipt is here", [&] { return under.screen.offers("previewSave"); });
}

/// Two pages, each with a line of text.
std::string document()
{
    QBuffer written;
    written.open(QIODevice::WriteOnly);
    QPdfWriter writer{&written};
    writer.setPageSize(QPageSize{QPageSize::A5});
    QPainter painter{&writer};
    painter.drawText(100, 400, QStringLiteral("Invoice 7741"));
    writer.newPage();
    painter.drawText(100, 400, QStringLiteral("Terms"));
    painter.end();
    return written.data().toStdString();
}

void turnTheLeaves(WindowUnderTest& under)
{
    signIn(under);
    under.server.replace("GET v1/attachments/a1", ServerReply::json(document()));
    const Attachment receipt{.id = "a1",
                             .transactionID = "e1",
                             .name = "van-don-7741-ban-sao-co-dau-cua-hang-tau-va-chu-ky.pdf",
                             .mime = "application/pdf",
                             .byteCount = 412'000,
                             .createdAt = {}};
    (new ReceiptPreviewDialog(under.store, {receipt}, 0, &under.window))->open();
    under.screen.waitFor("pageForward");
    under.screen.press("pageForward");
}

void share(WindowUnderTest& under)
{
    signIn(under);
    under.screen.pressRow("ledgerTable", "Electricity");
    under.screen.keys("Return");
    under.screen.press("shareButton");
    under.screen.waitForFocus("shareAccount");
    under.screen.press("shareCopy"); // with what is said then
}

const std::array shown{
    SweptScreen{"ReceiptsInForm", ledgerPage, openForm}, SweptScreen{"AddReceipts", ledgerPage, addToAnEntry},
    SweptScreen{"ReceiptPreview", ledgerPage, lookAtOne}, SweptScreen{"ReceiptDocument", ledgerPage, turnTheLeaves},
    SweptScreen{"ReceiptShare", ledgerPage, share}};

}

SWEEP(Receipts, shown);
