#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

QImage square(int side)
{
    QImage image{side, side, QImage::Format_RGB32};
    image.fill(Qt::red);
    return image;
}

SnapshotBuilder books()
{
    return snapshot().account("bank", {"IDR"}).grantAll();
}

struct StoreSignedIn : StoreUnderTest {
    StoreSignedIn() { signIn(books()); }
};

/// A draft's receipts, files to give it, and what the service was sent.
class ReceiptDraft : public testing::Test {
protected:
    ReceiptDraft()
    {
        for (int at = 1; at <= 12; ++at)
            service.server.answer("POST v1/attachments", uploaded("a" + std::to_string(at)));
    }

    static ServerReply uploaded(const std::string& id)
    {
        return ServerReply::json(R"({"id":")" + id + R"(","name":"n.png","mime":"image/png","byteCount":1000,)" +
                                 R"("createdAt":"2026-11-20T10:00:00Z"})");
    }
    ReceiptSource file(const char* name, const QByteArray& content)
    {
        const auto path = folder.filePath(QString::fromUtf8(name));
        QFile written{path};
        require(written.open(QIODevice::WriteOnly) && written.write(content) == content.size(), "the file is written");
        return {.name = QString::fromUtf8(name), .path = path};
    }
    ReceiptSource picture(const char* name, int side = 40)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        square(side).save(&buffer, "png");
        return file(name, buffer.data());
    }
    void rest()
    {
        waitUntil([&] { return !uploads.isBusy(); });
    }
    [[nodiscard]] std::string names() const
    {
        std::string all;
        for (const auto& row : uploads.rows("en-US"))
            all += row.name.toStdString() + ": " + row.state.toStdString() + "; ";
        return all;
    }
    [[nodiscard]] std::size_t sent() const { return service.server.requests("POST v1/attachments").size(); }

    StoreSignedIn service;
    QTemporaryDir folder;
    ReceiptUploads uploads{service.store, 0, nullptr};
};

}

TEST_F(ReceiptDraft, UploadsOneAfterTheOtherInTheOrderOfTheList)
{
    uploads.add({picture("first.png"), picture("second.png"), file("third.pdf", "%PDF-1.4 short")});
    rest();
    EXPECT_EQ(uploads.attachmentIDs(), (std::vector<std::string>{"a1", "a2", "a3"}));
    const auto requests = service.server.requests("POST v1/attachments");
    ASSERT_EQ(requests.size(), 3U);
    EXPECT_EQ(Json::decode<Upload>(requests[0].body)->name, "first.png");
    EXPECT_EQ(Json::decode<Upload>(requests[2].body)->mime, "application/pdf");
    EXPECT_EQ(names(), "first.png: 1 KB; second.png: 1 KB; third.pdf: 1 KB; ");
}

TEST_F(ReceiptDraft, KeepsWhatFailedWithItsReasonAndSendsOnlyThatAgain)
{
    service.server.replace("POST v1/attachments", uploaded("a1"));
    service.server.answer("POST v1/attachments", ServerReply::dropped());
    service.server.answer("POST v1/attachments", uploaded("a3"));
    uploads.add({picture("one.png"), picture("two.png"), picture("three.png")});
    rest();
    ASSERT_EQ(uploads.failed().size(), 1U);
    EXPECT_EQ(uploads.attachmentIDs(), (std::vector<std::string>{"a1", "a3"}));
    const auto failed = uploads.rows("en-US")[1];
    EXPECT_TRUE(failed.mayRetry);
    EXPECT_FALSE(failed.message.isEmpty());
    EXPECT_FALSE(service.store.errorMessage().has_value()) << "the row says it already";

    service.server.replace("POST v1/attachments", ServerReply::error(507, "insufficient_storage"));
    uploads.retry(failed.number);
    rest();
    EXPECT_TRUE(uploads.rows("en-US")[1].message.contains(QStringLiteral("no room left"))) << "somebody can make some";
    service.server.replace("POST v1/attachments", uploaded("a2"));
    const auto before = sent();
    uploads.retry(failed.number);
    rest();
    EXPECT_EQ(sent(), before + 1);
    EXPECT_EQ(uploads.attachmentIDs(), (std::vector<std::string>{"a1", "a2", "a3"}));
}

TEST_F(ReceiptDraft, SaysWhatIsWrongWithAFileAndSendsNothingOfIt)
{
    uploads.add({file("notes.pdf", "only text"),
                 file("nothing.png", ""),
                 file("big.pdf", "%PDF-" + QByteArray(10'485'760, 'x')),
                 file("broken.jpg", "\xff\xd8\xff" + QByteArray(600'000, 'x')),
                 {.name = QStringLiteral("gone.png"), .path = folder.filePath(QStringLiteral("gone.png"))},
                 {.name = QStringLiteral("folder"), .path = folder.path()}});
    rest();
    std::vector<std::string> said;
    std::vector<bool> retries;
    for (const auto& row : uploads.rows("en-US")) {
        said.push_back(row.message.toStdString());
        retries.push_back(row.mayRetry);
    }
    const std::string format =
        "The attachment format is unsupported or does not match its contents. Choose a JPG, PNG, "
        "HEIC, or PDF file.";
    const std::string picture = "The image could not be compressed or is still larger than 10 MB. Choose a smaller or "
                                "clearer file.";
    EXPECT_EQ(said, (std::vector<std::string>{format, "This file is empty.",
                                              "The attachment is too large. Each file must be 10 MB or smaller.",
                                              picture, "This file cannot be read.", "This file cannot be read."}));
    EXPECT_EQ(retries, (std::vector<bool>{false, false, false, false, true, true}));
    EXPECT_EQ(sent(), 0U);
}

TEST_F(ReceiptDraft, TakesTenAndSaysHowManyWereLeftOut)
{
    ReceiptUploads onEntry{service.store, 4, nullptr};
    std::vector<ReceiptSource> many;
    for (int at = 0; at < 8; ++at)
        many.push_back(picture(("p" + std::to_string(at) + ".png").c_str()));
    onEntry.add(std::move(many));
    EXPECT_EQ(onEntry.all().size(), 6U);
    EXPECT_EQ(onEntry.leftOut(), 2U);
    EXPECT_EQ(onEntry.room(), 0U);
    waitUntil([&] { return !onEntry.isBusy(); });
    onEntry.markLinked();
    EXPECT_EQ(onEntry.room(), 0U) << "they are on the entry now";
}

TEST_F(ReceiptDraft, LeavesOutAReceiptThatIsTakenAwayWhileItIsSent)
{
    service.server.replace("POST v1/attachments", ServerReply::parked());
    uploads.add({picture("taken-away.png")});
    waitUntil([&] { return service.server.parkedCount() == 1; });
    uploads.remove(uploads.all().front().number);
    EXPECT_FALSE(uploads.isBusy());
    service.server.replace("POST v1/attachments", uploaded("a2"));
    uploads.add({picture("kept.png")});
    service.server.release(uploaded("a1"));
    rest();
    EXPECT_EQ(uploads.attachmentIDs(), std::vector<std::string>{"a2"});
}

TEST_F(ReceiptDraft, WaitsForTheStoreToBeFree)
{
    service.server.replace("GET v1/snapshot", ServerReply::parked());
    const auto refreshing = service.store.refresh(false);
    waitUntil([&] { return service.server.parkedCount() == 1; });
    uploads.add({picture("late.png")});
    waitUntil([&] { return uploads.all().front().stage == ReceiptUpload::Stage::ready; });
    EXPECT_EQ(sent(), 0U);
    service.server.release(ServerReply::json(books().json()));
    rest();
    EXPECT_EQ(uploads.attachmentIDs(), std::vector<std::string>{"a1"});
}

TEST_F(ReceiptDraft, UploadsNothingIntoAnotherCompany)
{
    const auto open = [&](const std::string& companyID) {
        auto opened = books().build();
        opened.company.id = companyID;
        service.server.replace(
            "POST v1/me/companies/switch",
            ServerReply::json(R"({"token":"token-)" + companyID + R"(","snapshot":)" + Json::encode(opened) + "}"));
        require(resultOf(service.store.switchCompany(companyID)).has_value(), "the company opens");
    };
    uploads.add({picture("own.png")});
    open("c2"); // while the picture is being prepared
    const auto isPrepared = [&] { return uploads.all().front().ready != nullptr; };
    waitUntil(isPrepared);
    QCoreApplication::processEvents();
    EXPECT_EQ(uploads.all().front().stage, ReceiptUpload::Stage::ready);
    EXPECT_EQ(sent(), 0U);

    open("c1");
    rest();
    EXPECT_EQ(uploads.attachmentIDs(), std::vector<std::string>{"a1"});
}

TEST_F(ReceiptDraft, GivesAPastedPictureANameAndCompressesALargeOne)
{
    uploads.add({{.name = QStringLiteral("Pasted picture.png"), .path = {}, .image = square(50)}});
    QImage noisy{1400, 1400, QImage::Format_RGB32};
    unsigned state = 7;
    for (int y = 0; y < noisy.height(); ++y) {
        for (int x = 0; x < noisy.width(); ++x)
            noisy.setPixel(x, y, state = state * 1664525U + 1013904223U);
    }
    uploads.add({{.name = QStringLiteral("scan.png"), .path = {}, .image = noisy}});
    rest();
    const auto requests = service.server.requests("POST v1/attachments");
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(Json::decode<Upload>(requests[0].body)->mime, "image/png");
    EXPECT_EQ(Json::decode<Upload>(requests[1].body)->name, "scan.jpg");
    EXPECT_EQ(uploads.rows("en-US")[1].state, QStringLiteral("1 KB, compressed"));
}
