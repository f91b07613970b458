#include "LedgerUI/Presentation/Audit/AuditRows.h"

#include <array>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

LedgerSnapshot books()
{
    SnapshotBuilder made;
    made.member(SnapshotBuilder::person("m2", "Dewi Anggraini", "finance"));
    made.account("bank", {"USD", "IDR"}).account("till", {"IDR"});
    made.category("power", "expense", "Electricity");
    auto snapshot = made.build();
    snapshot.accounts[0].name = "Operating bank";
    snapshot.accounts[1].name = "Till";
    snapshot.capital.emplace().participants = {{.id = "p1", .name = "Budi Santoso", .memberID = {}}};
    return snapshot;
}

/// "Role: Employee -> Finance", one line for each change.
std::string changes(const std::string& before, const std::string& after, std::string_view locale = "en-US")
{
    const auto record = Json::decode<AuditTrailRecord>(
        R"({"number":1,"at":"2026-11-20T02:14:00.000Z","origin":"10.0.0.7","kind":"PATCH /v1/members/{id}",)" +
        (before.empty() ? "" : R"("before":)" + before + ",") + R"("after":)" + after + "}");
    std::string all;
    for (const auto& row : AuditRows::changes(record.value(), books(), locale))
        all += row.cells[0].text.toStdString() + ": " + row.cells[1].text.toStdString() + " -> " +
               row.cells[2].text.toStdString() + "\n";
    return all;
}

}

TEST(AuditRows, SayRolesRightsAndAccountsInWords)
{
    EXPECT_EQ(changes(R"({"role":"employee","active":true,"permissions":[],)"
                      R"("accountGrants":[{"accountID":"till","actions":["view"]}]})",
                      R"({"role":"finance","active":false,"permissions":["viewCompany","exportData"],)"
                      R"("accountGrants":[{"accountID":"bank","actions":["view","transferIn"]},)"
                      R"({"accountID":"till","actions":["view"]}]})"),
              "Rights on · Operating bank: – -> View, Transfer in\n"
              "Active: Yes -> No\n"
              "Company-wide rights: – -> View whole company, Export data\n"
              "Role: Employee -> Finance\n")
        << "the rights on the till stayed, although they stand at another place";
}

TEST(AuditRows, SayPeopleCategoriesColoursAndCountriesInWords)
{
    EXPECT_EQ(changes(R"({"operatorMemberID":"m1","purpose":"company","parentID":"power"})",
                      R"({"operatorMemberID":"m2","purpose":"employee","parentID":"gone"})"),
              "Holder: Mira Owner -> Dewi Anggraini\nAbove it: Electricity -> gone\n"
              "Purpose: Company account -> Employee float\n");
    EXPECT_EQ(changes(R"({"countries":["ID"],"enabledLocales":["id-ID"]})",
                      R"({"countries":["ID","VN"],"enabledLocales":["id-ID","en-US"]})"),
              "Countries: Indonesia -> Indonesia, Vietnam\nLanguages: Bahasa Indonesia -> Bahasa Indonesia, English\n");
    EXPECT_EQ(changes(R"({"names":{"vi-VN":"Điện"}})", R"({"names":{"vi-VN":"Tiền điện"}})"),
              "Name · Tiếng Việt: Điện -> Tiền điện\n");
    EXPECT_EQ(changes(R"({"transactionColors":{}})", R"({"transactionColors":{"expense":"no-such"}})"),
              "Colour · Expense: – -> no-such\n")
        << "what no word is known for stays as it was sent";
}

TEST(AuditRows, SayAmountsWithTheirCurrencyAndDaysAsDays)
{
    EXPECT_EQ(changes("", R"({"action":"contribute","expectedRevision":3,"idempotencyKey":"k","date":"2026-11-19",)"
                          R"("participantID":"p1","currency":"IDR","amountMinor":438520000,"accountID":"bank"})"),
              "Account: – -> Operating bank\nCommand: – -> Record contribution\nAmount: – -> IDR\u00a04,385,200\n"
              "Currency: – -> IDR\nDate: – -> 19 November 2026\nParticipant: – -> Budi Santoso\n")
        << "without what only the protocol needs";
    EXPECT_EQ(changes("", R"({"action":"setOwnership","ownership":[{"participantID":"p1","ownershipBps":2550}]})"),
              "Command: – -> Owners and ownership\nShare 1 · Ownership: – -> 25.50\u00a0%\nShare 1 · Participant: – -> "
              "Budi Santoso\n");
    EXPECT_EQ(changes(R"({"balances":{"USD":100}})", R"({"balances":{"USD":-250}})"),
              "Balance · USD: USD\u00a01.00 -> USD\u00a0−2.50\n");
}

TEST(AuditRows, SpeakEveryLanguage)
{
    constexpr auto before = R"({"role":"employee","active":true})";
    constexpr auto after = R"({"role":"finance","active":true,"permissions":["exportData"]})";
    struct Said {
        const char* locale;
        const char* text;
    };
    const std::array cases{Said{"zh-CN", "全公司权限: – -> 导出数据\n角色: 员工 -> 财务\n"},
                           Said{"id-ID", "Hak perusahaan: – -> Ekspor data\nPeran: Karyawan -> Keuangan\n"},
                           Said{"vi-VN", "Quyền toàn công ty: – -> Xuất dữ liệu\nVai trò: Nhân viên -> Tài chính\n"}};
    for (const auto& said : cases)
        EXPECT_EQ(changes(before, after, said.locale), said.text);
}
