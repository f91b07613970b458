#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include <csignal>
#include <fmt/core.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Random.h"
#include "LedgerService/Receipts/LooseReceipts.h"
#include "LedgerService/Receipts/ReceiptContent.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;
using SampleReceipts::pdf;
using SampleReceipts::upload;

class Receipts : public testing::Test {
protected:
    Attachment mustUpload(const std::string& content, const std::string& member = "mira")
    {
        const auto answer = service.as(member, "POST", "/v1/attachments", upload(content));
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<Attachment>(answer.body).value_or(Attachment{});
    }

    HttpAnswer link(const std::string& entryID, const std::vector<std::string>& ids, const std::string& member = "mira")
    {
        return service.as(member, "POST", "/v1/transactions/" + entryID + "/attachments",
                          Json::encode(AttachmentLink{ids}));
    }

    HttpAnswer download(const std::string& id, const std::string& member = "mira")
    {
        return service.as(member, "GET", "/v1/attachments/" + id);
    }

    [[nodiscard]] fs::path fileOf(const std::string& content) const { return folder.fileOf(Random::digest(content)); }

    /// The service's sweep, so many days after the sample's day, when all files are old.
    LooseReceipts::Swept sweep(int days)
    {
        for (const auto& each : fs::recursive_directory_iterator{folder.path()})
            fs::last_write_time(each.path(), fs::file_time_type::clock::now() - std::chrono::hours{48});
        const auto database = Database::open(service.databaseFile());
        const auto start = *LedgerDay::parseStamp("2026-03-10T09:30:00.000Z");
        return LooseReceipts::sweep(**database, folder, start + std::chrono::hours{24 * days});
    }

    TestService service;
    ReceiptFolder folder{service.files()};
};

struct ContentCase {
    std::string name;
    std::string mediaType;
    std::string content;
    bool taken = false;
};

class ReceiptContents : public testing::TestWithParam<ContentCase> {};

std::string cut(std::string content, std::size_t bytes)
{
    content.resize(content.size() - bytes);
    return content;
}

}

TEST_P(ReceiptContents, AreTakenForWhatTheyAre)
{
    EXPECT_EQ(ReceiptContent::isOf(GetParam().mediaType, GetParam().content), GetParam().taken);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ReceiptContents,
    testing::Values(ContentCase{"Jpeg", "image/jpeg", SampleReceipts::jpeg(), true},
                    ContentCase{"Png", "image/png", SampleReceipts::png(), true},
                    ContentCase{"Heic", "image/heic", SampleReceipts::heic(), true},
                    ContentCase{"HeicCalledHeif", "image/heif", SampleReceipts::heic(), true},
                    ContentCase{"Pdf", "application/pdf", pdf(), true},
                    ContentCase{"PngCalledJpeg", "image/jpeg", SampleReceipts::png()},
                    ContentCase{"PdfCalledPng", "image/png", pdf()},
                    ContentCase{"JpegCalledHeic", "image/heic", SampleReceipts::jpeg()},
                    ContentCase{"PageCalledPdf", "application/pdf", "<html>%PDF-1.7 startxref %%EOF</html>"},
                    ContentCase{"PageBehindAJpegsFirstBytes", "image/jpeg", "\xFF\xD8\xFF<html></html>"},
                    ContentCase{"PageBehindAPngsFirstBytes", "image/png", "\x89PNG\r\n\x1A\n<html></html>"},
                    ContentCase{"HalfAJpeg", "image/jpeg", cut(SampleReceipts::jpeg(), 2)},
                    ContentCase{"HalfAPng", "image/png", cut(SampleReceipts::png(), 12)},
                    ContentCase{"HalfAHeic", "image/heic", cut(SampleReceipts::heic(), 4)},
                    ContentCase{"HalfAPdf", "application/pdf", cut(pdf(), 30)},
                    ContentCase{"Nothing", "application/pdf", ""}, ContentCase{"UnknownType", "text/html", pdf()}),
    [](const auto& each) { return each.param.name; });

TEST_F(Receipts, AreSentBackAsTheyWereUploaded)
{
    const auto content = pdf(10'485'760, '\xC3'); // the largest; more than a block
    const auto receipt = mustUpload(content);
    EXPECT_EQ(receipt.byteCount, 10'485'760);
    EXPECT_EQ(receipt.mime, "application/pdf");
    EXPECT_EQ(receipt.transactionID, std::nullopt);
    const auto answer = download(receipt.id);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.header("content-type"), "application/pdf");
    EXPECT_TRUE(answer.body == content);
    const auto file = fs::status(fileOf(content)).permissions();
    EXPECT_EQ(file & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
    EXPECT_EQ(fs::status(folder.path()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreRefusedWhenTheyAreNotWhatTheySay)
{
    const auto post = [&](const std::string& body) {
        const auto answer = service.as("mira", "POST", "/v1/attachments", body);
        return fmt::format("{} {}", answer.status, answer.code());
    };
    EXPECT_EQ(post(upload(SampleReceipts::png())), "415 unsupported_attachment");
    EXPECT_EQ(post(upload("MZ", "application/x-msdownload")), "415 unsupported_attachment");
    EXPECT_EQ(post(upload(pdf(10'485'761))), "413 payload_too_large");
    EXPECT_EQ(post(upload(pdf(11'500'000))), "413 payload_too_large");
    EXPECT_EQ(post(upload(pdf(), "application/pdf", "../../etc/cron.d/receipt.pdf")), "400 validation_error");
    for (const auto* name : {" ", "..", " .. ", "\u3000.", "a\tb.pdf"})
        EXPECT_EQ(post(upload(pdf(), "application/pdf", name)), "400 validation_error") << name;
    EXPECT_EQ(post(R"({"name":"r.pdf","mime":"application/pdf","dataBase64":"JVBERi0!"})"), "400 validation_error");
    EXPECT_EQ(post(R"({"name":"r.pdf","mime":"application/pdf"})"), "400 validation_error");
    EXPECT_FALSE(fs::exists(folder.path())); // nothing of it was kept
    EXPECT_EQ(service.client().send("POST", "/v1/attachments", "", upload(pdf())).status, 401);
    EXPECT_FALSE(fs::exists(folder.path()));
    EXPECT_EQ(service.as("mira", "GET", "/v1/attachments/..%2f..%2fbooks.sqlite").status, 404);
}

TEST_F(Receipts, OfTheSameContentShareAFileAlsoWhenTheyComeAtOnce)
{
    const auto content = pdf(300'000);
    std::vector<std::jthread> clients;
    std::atomic<int> taken = 0;
    for (int each = 0; each < 4; ++each)
        clients.emplace_back([&, token = service.tokenOf("mira")] {
            taken += service.client().send("POST", "/v1/attachments", token, upload(content)).status == 200;
        });
    clients.clear();
    EXPECT_EQ(taken, 4);
    EXPECT_EQ(std::distance(fs::directory_iterator{fileOf(content).parent_path()}, {}), 1);
    EXPECT_EQ(service.snapshotOf("mira").attachments.size(), 5U); // with that of the sale
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreLinkedOnceByThoseWhoMayCorrectTheEntry)
{
    const auto first = mustUpload(pdf(500));
    const auto second = mustUpload(pdf(600));
    EXPECT_EQ(link("sale", {first.id}).status, 200);
    const auto snapshot = service.snapshotOf("mira");
    const auto sale = std::ranges::find(snapshot.transactions, "sale", &LedgerTransaction::id);
    EXPECT_EQ(sale->attachmentIDs, (std::vector<std::string>{"linked", first.id}));
    EXPECT_EQ(link("sale", {first.id}).status, 200); // the reply was lost, and it came again
    EXPECT_EQ(link("opening-bank", {second.id, first.id}).code(), ServiceCode::attachmentLinked);
    EXPECT_EQ(link("sale", {second.id, second.id}).code(), ServiceCode::validationError);
    EXPECT_EQ(link("sale", {}).code(), ServiceCode::validationError);
    EXPECT_EQ(link("sale", {"nothing"}).status, 404);
    EXPECT_EQ(link("nothing", {second.id}).status, 404);
    const auto foreign = mustUpload(pdf(700), "guest");
    EXPECT_EQ(link("sale", {foreign.id}).status, 404);            // another member's
    EXPECT_EQ(link("sale", {foreign.id}, "guest").status, 403);   // sees the entry, records nothing
    EXPECT_EQ(link("sale", {second.id}, "rudi").status, 404);     // does not see it
    EXPECT_EQ(service.snapshotOf("mira").attachments.size(), 3U); // nothing of all that was linked
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreAtMostTenOnAnEntry)
{
    std::vector<std::string> ids;
    for (std::size_t each = 0; each < 10; ++each)
        ids.push_back(mustUpload(pdf(400 + each)).id);
    EXPECT_EQ(link("sale", ids).code(), ServiceCode::validationError); // it has one already
    const auto last = ids.back();
    ids.pop_back();
    EXPECT_EQ(link("sale", ids).status, 200);
    EXPECT_EQ(link("sale", {last}).code(), ServiceCode::validationError);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreNamedOnceAndByTheirIDsWhoeverLinksThem)
{
    const auto receipt = mustUpload(pdf(400));
    for (const auto* member : {"mira", "guest"}) { // guest sees the entry and may not add to it
        EXPECT_EQ(link("sale", {}, member).code(), ServiceCode::validationError) << member;
        EXPECT_EQ(link("sale", {receipt.id, ""}, member).code(), ServiceCode::validationError) << member;
        EXPECT_EQ(link("sale", {receipt.id, receipt.id}, member).code(), ServiceCode::validationError) << member;
    }
    EXPECT_EQ(link("sale", {receipt.id}, "guest").code(), ServiceCode::forbidden);
    EXPECT_EQ(link("sale", {receipt.id}).status, 200);
}

TEST_F(Receipts, AreSeenByThoseWhoSeeTheEntryAndLooseOnesByTheUploader)
{
    const auto receipt = mustUpload(pdf());
    EXPECT_EQ(download(receipt.id, "mira").status, 200);
    EXPECT_EQ(download(receipt.id, "guest").status, 404);
    EXPECT_EQ(link("sale", {receipt.id}).status, 200);
    EXPECT_EQ(download(receipt.id, "guest").status, 200); // sees the whole company
    EXPECT_EQ(download(receipt.id, "rudi").status, 404);
    EXPECT_EQ(service.client().send("GET", "/v1/attachments/" + receipt.id).status, 401);
}

TEST_F(Receipts, AreNotSentWhenTheirFileIsMissingOrAnother)
{
    const auto content = pdf(700'000);
    const auto receipt = mustUpload(content);
    fs::resize_file(fileOf(content), 650'000);
    EXPECT_EQ(download(receipt.id).status, 500);
    EXPECT_NE(service.problems().find(receipt.id), std::string::npos);
    std::ofstream{fileOf(content), std::ios::binary} << pdf(700'000, 'x');
    EXPECT_EQ(download(receipt.id).status, 0); // begun, and cut off before its end
    EXPECT_NE(service.problems().find(receipt.id), std::string::npos);
    fs::remove(fileOf(content));
    EXPECT_EQ(download(receipt.id).status, 500);
    mustUpload(content); // whoever has the document heals the file
    EXPECT_TRUE(download(receipt.id).body == content);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, OfADamagedRowAreNotSentAndTheServiceGoesOn)
{
    const auto receipt = mustUpload(pdf(500));
    service.write([&](Connection& connection) {
        connection.execute("UPDATE attachments SET content_digest = '../books' WHERE id = '" + receipt.id + "'");
    });
    EXPECT_EQ(download(receipt.id).status, 500);
    EXPECT_NE(service.problems().find(receipt.id), std::string::npos);
    mustUpload(pdf(600));
    EXPECT_EQ(sweep(31).receipts, 2U) << "nor does it keep the others from being swept";
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, ThatAreNeverLinkedAreSweptWithoutTheFilesOfOthers)
{
    const auto shared = pdf(500);
    const auto kept = mustUpload(shared);
    mustUpload(shared);
    mustUpload(pdf(600));
    EXPECT_EQ(link("sale", {kept.id}).status, 200);
    EXPECT_EQ(sweep(29).receipts, 0U);
    const auto swept = sweep(31);
    EXPECT_EQ(swept.receipts, 2U);
    EXPECT_EQ(swept.files, 0U) << "a backup that runs may have copied the rows";
    EXPECT_TRUE(fs::exists(fileOf(pdf(600))));
    EXPECT_EQ(sweep(32).files, 1U);
    EXPECT_TRUE(download(kept.id).body == shared);
    EXPECT_FALSE(fs::exists(fileOf(pdf(600))));
    EXPECT_EQ(service.snapshotOf("mira").attachments.size(), 2U);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreLinkedOrSweptButNeverHalfOfBoth)
{
    std::vector<std::string> ids;
    for (std::size_t each = 0; each < 9; ++each)
        ids.push_back(mustUpload(pdf(500 + each)).id);
    std::vector<int> statuses;
    {
        const std::jthread sweeper{[&] {
            for (int each = 0; each < 6; ++each)
                sweep(31);
        }};
        for (const auto& id : ids)
            statuses.push_back(link("sale", {id}).status);
    }
    sweep(32);
    for (std::size_t each = 0; each < ids.size(); ++each) {
        EXPECT_TRUE(statuses[each] == 200 || statuses[each] == 404) << statuses[each];
        EXPECT_EQ(download(ids[each]).status, statuses[each]);
        EXPECT_EQ(fs::exists(fileOf(pdf(500 + each))), statuses[each] == 200);
    }
    EXPECT_EQ(service.problems(), "");
}

TEST(ReceiptRoom, IsGivenToEachCompanyAndNothingIsWrittenPastIt)
{
    TestService service{[](ServerOptions& options) {
        options.receiptRoom = {.company = 1'000'000, .demonstration = 100};
        options.policy.demonstration = DemonstrationMode::shared;
    }};
    const ReceiptFolder folder{service.files()};
    const auto send = [&](const std::string& content) {
        return service.as("mira", "POST", "/v1/attachments", upload(content));
    };
    const auto first = send(pdf(600'000));
    EXPECT_EQ(first.status, 200) << first.body;
    EXPECT_EQ(send(pdf(500'000)).code(), ServiceCode::insufficientStorage);
    EXPECT_FALSE(folder.has(Random::digest(pdf(500'000))));
    const auto id = Json::decode<Attachment>(first.body).value_or(Attachment{}).id;
    EXPECT_EQ(
        service.as("mira", "POST", "/v1/transactions/sale/attachments", Json::encode(AttachmentLink{{id}})).status,
        200);
    EXPECT_EQ(send(pdf(500'000)).code(), ServiceCode::insufficientStorage) << "linked ones count too";
    EXPECT_EQ(send(pdf(300'000)).status, 200);
    EXPECT_EQ(service.problems(), "");
    service.write([](Connection& connection) {
        connection.execute("UPDATE companies SET demo_version = 1, demo_locale = 'en-US', receipt_bytes = 0");
    });
    EXPECT_NE(service.problems(), "") << "what was counted is checked";
    EXPECT_EQ(send(pdf(400)).code(), ServiceCode::insufficientStorage) << "a demonstration has a room of its own";
}

TEST_F(Receipts, ThatLieAboutAreCountedAndTheClientIsToldWhenToComeAgain)
{
    service.write([](Connection& connection) {
        Attachment receipt;
        receipt.byteCount = 10;
        receipt.createdAt = "2026-03-10";
        for (int each = 0; each < 500; ++each) {
            receipt.id = "loose-" + std::to_string(each);
            AttachmentRepository::insert(connection, "sample", receipt, "mira");
        }
    });
    const auto answer = service.as("mira", "POST", "/v1/attachments", upload(pdf(900)));
    EXPECT_EQ(answer.code(), ServiceCode::rateLimited);
    EXPECT_EQ(answer.header("retry-after"), "3600");
    EXPECT_FALSE(fs::exists(fileOf(pdf(900)))) << "what is refused is not written";
}

TEST_F(Receipts, AreRefusedWithoutATraceWhenTheDiskIsFull)
{
    const auto token = service.tokenOf("mira");
    const auto kept = mustUpload(pdf(500));
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    auto small = before;
    small.rlim_cur = 200'000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto answer = service.client().send("POST", "/v1/attachments", token, upload(pdf(300'000)));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(answer.status, 507);
    EXPECT_EQ(answer.code(), ServiceCode::insufficientStorage);
    for (const auto& each : fs::recursive_directory_iterator{folder.path()})
        EXPECT_TRUE(each.is_directory() || each.path() == fileOf(pdf(500))) << each.path();
    EXPECT_EQ(service.snapshotOf("mira").attachments.size(), 2U);
    EXPECT_EQ(download(kept.id).status, 200);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, AreNotKeptInPlaceOfADiskThatIsGone)
{
    const auto kept = mustUpload(pdf(500));
    const auto away = folder.path().string() + "-away";
    fs::rename(folder.path(), away);
    const auto answer = service.as("mira", "POST", "/v1/attachments", upload(pdf(600)));
    EXPECT_EQ(answer.code(), ServiceCode::serviceUnavailable);
    EXPECT_EQ(answer.header("retry-after"), "60");
    EXPECT_FALSE(fs::exists(folder.path()));
    EXPECT_NE(download(kept.id).status, 200);
    fs::rename(away, folder.path());
    EXPECT_EQ(download(kept.id).status, 200);
    mustUpload(pdf(600));
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Receipts, WhoseRowWasNeverWrittenLeaveNoFileForLong)
{
    mustUpload(pdf(500));
    const auto lost = pdf(600);
    ASSERT_TRUE(folder.keep(lost)); // as if the process had been ended here
    std::ofstream{folder.path() / ".unfinished-x"} << "half";
    EXPECT_EQ(sweep(0).files, 1U);
    EXPECT_FALSE(fs::exists(fileOf(lost)));
    EXPECT_FALSE(fs::exists(folder.path() / ".unfinished-x"));
    EXPECT_TRUE(fs::exists(fileOf(pdf(500))));
}

}
