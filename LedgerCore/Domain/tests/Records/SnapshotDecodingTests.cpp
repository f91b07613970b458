#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Fields = std::vector<std::string>; // each a key with a value

std::string object(const Fields& fields)
{
    std::string text = "{";
    for (const auto& field : fields)
        text += (text.size() > 1 ? "," : "") + field;
    return text + "}";
}

std::string withNull(const std::string& field)
{
    return field.substr(0, field.find(':')) + ":null";
}

/// Without its optional fields a record decodes and writes back the same, without any other it does not decode.
template <class Record>
void expectFields(const Fields& required, const Fields& optional)
{
    const auto bare = Json::decode<Record>(object(required));
    ASSERT_TRUE(bare) << object(required);
    EXPECT_EQ(Json::encode(*bare), object(required));

    for (std::size_t at = 0; at < required.size(); ++at) {
        auto fields = required;
        fields[at] = withNull(required[at]);
        EXPECT_FALSE(Json::decode<Record>(object(fields))) << object(fields);
        fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(at));
        EXPECT_EQ(Json::decode<Record>(object(fields)), std::unexpected(Json::DecodeError::missingField))
            << object(fields);
    }
    for (const auto& field : optional) {
        auto fields = required;
        fields.push_back(withNull(field));
        EXPECT_EQ(Json::decode<Record>(object(fields)), bare) << field;
        fields.back() = field;
        const auto fuller = Json::decode<Record>(object(fields));
        ASSERT_TRUE(fuller) << field;
        EXPECT_NE(fuller, bare) << field;
        EXPECT_NE(Json::encode(*fuller).find(field), std::string::npos) << field;
    }
}

const Fields company{R"("id":"c")", R"("name":"n")", R"("countries":["ID"])", R"("enabledLocales":["id-ID"])",
                     R"("createdAt":"s")"};
const Fields member{R"("id":"m")",   R"("userID":"u")",       R"("name":"n")",       R"("email":"e")",
                    R"("role":"r")", R"("accountIDs":["a"])", R"("locale":"vi-VN")", R"("active":true)"};

TEST(SnapshotDecoding, NeedsEveryFieldOfAPersonAndACompanyButTheOptionalOnes)
{
    expectFields<Company>(company, {R"("demo":{"version":1,"locale":"en-US"})", R"("approvalStatus":"approved")",
                                    R"("transactionColors":{"income":"green"})"});
    expectFields<Member>(member, {R"("permissions":[])", R"("accountGrants":[{"accountID":"a","actions":["view"]}])",
                                  R"("selectedCategoryIDs":["c"])", R"("transactionColors":{})"});
}

TEST(SnapshotDecoding, NeedsEveryFieldOfMoneyAndItsPlacesButTheOptionalOnes)
{
    expectFields<Account>(
        {R"("id":"a")", R"("name":"n")", R"("currencies":["USD"])", R"("archived":false)",
         R"("balances":{"USD":-9007199254740993})"},
        {R"("ownerMemberID":"m")", R"("purpose":"employee")", R"("operatorMemberID":"m")", R"("returnAccountID":"b")"});
    expectFields<Category>({R"("id":"c")", R"("kind":"income")", R"("names":{"en-US":"Sales"})", R"("symbol":"tag")",
                            R"("archived":true)"},
                           {R"("parentID":"p")", R"("sortOrder":0)", R"("presetID":"x")", R"("defaultEnabled":false)"});
    expectFields<Attachment>(
        {R"("id":"f")", R"("name":"n")", R"("mime":"image/png")", R"("byteCount":5000000000)", R"("createdAt":"s")"},
        {R"("transactionID":"t")"});
    expectFields<LedgerTransaction>(
        {R"("id":"t")", R"("kind":"transfer")", R"("date":"2026-11-20")", R"("note":"")", R"("createdAt":"s")",
         R"("memberID":"m")", R"("legs":[{"accountID":"a","currency":"JPY","amountMinor":-1}])",
         R"("attachmentIDs":[])"},
        {R"("categoryID":"c")", R"("reversedBy":"r")", R"("reversalOf":"r")", R"("originalTransactionID":"o")",
         R"("externalReference":"x")", R"("transferPurpose":"funding")", R"("distributionKind":"payment")",
         R"("participantName":"p")", R"("dividendMovementID":"d")", R"("capitalContributionID":"k")"});
    expectFields<TransactionInput>(
        {R"("kind":"expense")", R"("date":"2026-11-20")", R"("note":"")", R"("currency":"USD")", R"("amountMinor":1)",
         R"("attachmentIDs":[])", R"("idempotencyKey":"k")"},
        {R"("categoryID":"c")", R"("sourceAccountID":"a")", R"("targetAccountID":"b")", R"("targetCurrency":"VND")",
         R"("targetAmountMinor":2)", R"("originalTransactionID":"o")", R"("externalReference":"x")",
         R"("transferPurpose":"return")"});
}

TEST(SnapshotDecoding, NeedsItsSevenListsAndRecordsButNoSection)
{
    expectFields<LedgerSnapshot>(
        {R"("company":)" + object(company), R"("currentMember":)" + object(member), R"("members":[])",
         R"("accounts":[])", R"("categories":[])", R"("transactions":[])", R"("attachments":[])"},
        {R"("transferDestinations":[{"id":"a","name":"n","currencies":[],"allowsFunding":true,"allowsReturn":false}])",
         R"("dividends":{"revision":1,"showInSidebar":true,"participants":[],"batches":[],"movements":[]})",
         R"("capital":{"revision":1,"showInSidebar":true,"participants":[],"contributions":[],"baselines":[],"ownershipVersions":[],"currencies":[]})",
         R"("financialSettings":{"revision":1,"contributionsEnabled":true,"dividendsEnabled":false})"});
}

/// `books` with something of everything that a snapshot may hold.
LedgerSnapshot everything()
{
    auto books = snapshot()
                     .account("bank", {"USD"})
                     .category("sales", "income", "Sales")
                     .grantAll()
                     .settings({1, true, true, "2026-01-01", "books", "s", true})
                     .income("t1", "2026-11-20", "bank", "USD", 500, "sales")
                     .build();
    auto& entry = books.transactions.front();
    entry.attachmentIDs = {"r"};
    for (auto* optional : {&entry.reversedBy, &entry.reversalOf, &entry.originalTransactionID, &entry.externalReference,
                           &entry.transferPurpose, &entry.distributionKind, &entry.participantName,
                           &entry.dividendMovementID, &entry.capitalContributionID})
        *optional = "x";
    books.attachments = {{"r", "t1", "r.jpg", "image/jpeg", 5, "s"}};
    books.transferDestinations = {{"bank", "Bank", {"USD"}, true, true}};
    books.dividends.emplace().participants = {{"ana", "Ana", {}, 10000, false}};
    books.capital.emplace().participants = {{"ana", "Ana", {}, false}};
    return books;
}

TEST(SnapshotDecoding, RefusesInItsPartsWhatItRefusesInTheWhole)
{
    const auto text = Json::encode(everything());
    std::size_t refused = 0;
    for (auto at = text.find("\":"); at != std::string::npos; at = text.find("\":", at + 1)) {
        for (const auto* fault : {"_\":", "\":null,\"later\":", "\":0.5,\"later\":", "\":[0],\"later\":"}) {
            auto faulty = text;
            faulty.replace(at, 2, fault);
            const bool isRefused = !Json::decode<LedgerSnapshot>(faulty);
            refused += isRefused ? 1 : 0;
            EXPECT_EQ(!Json::decode<Json::Unread<LedgerSnapshot>>(faulty), isRefused) << faulty;
            EXPECT_EQ(!Json::view<ReportSource>(faulty), isRefused) << fault << " at " << at << " of " << text;
        }
    }
    EXPECT_GT(refused, 200U);
}

TEST(SnapshotDecoding, IgnoresUnknownKeysAtEveryDepth)
{
    const auto text = snapshot().account("bank", {"USD"}).income("t1", "2026-11-20", "bank", "USD", 5).json();
    const std::string later = R"("later":[{"x":{}},null,1.5],)";
    std::string wider;
    for (std::size_t at = 0; at < text.size(); ++at) {
        wider += text[at];
        const bool isMap = text.compare(at, 6, "{\"USD\"") == 0; // there every key means something
        if (text.compare(at, 2, "{\"") == 0 && !isMap)
            wider += later;
    }
    EXPECT_GT(wider.size(), text.size() + 100);
    EXPECT_EQ(Json::decode<LedgerSnapshot>(wider), Json::decode<LedgerSnapshot>(text));
}

TEST(SnapshotDecoding, KeepsTheWholeWhenItIsSentBack)
{
    const auto books = snapshot()
                           .account("bank", {"USD", "VND"})
                           .employeeAccount("float", {"USD"}, "m2")
                           .member(SnapshotBuilder::person("m2", "Điền \"Đ\" \\ 水"))
                           .grantAll()
                           .category("sales", "income", "Sales")
                           .income("t1", "2026-11-20", "bank", "USD", 500, "sales")
                           .transfer("t2", "2026-11-20", "bank", "float", "USD", 200, "funding")
                           .build();
    EXPECT_EQ(Json::decode<LedgerSnapshot>(Json::encode(books)), books);
    EXPECT_EQ(books.account("bank")->balance("USD"), 300);
    EXPECT_EQ(books.account("bank")->balance("JPY"), 0);
    EXPECT_EQ(books.account("nowhere"), nullptr);
}

}
