#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"

#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Imports/ImportRowIdentity.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Text/WordTable.h"

namespace {

constexpr std::string_view header = "日期 Date,类型 Type,账户 Account,币种 Currency,金额 Amount,分类 Category,备注 "
                                    "Note,目标账户 Target Account,目标币种 Target Currency,目标金额 Target Amount\n";

Account account(std::string id, std::string name, std::vector<std::string> currencies)
{
    Account made;
    made.id = std::move(id);
    made.name = std::move(name);
    made.currencies = std::move(currencies);
    return made;
}

Category category(std::string id, std::string kind, TextMap names)
{
    Category made;
    made.id = std::move(id);
    made.kind = std::move(kind);
    made.names = std::move(names);
    return made;
}

/// A member who may do everything on every account but on the safe, which is only seen.
LedgerSnapshot books()
{
    LedgerSnapshot snapshot;
    snapshot.company.id = "co-1";
    snapshot.accounts = {account("bank", "Bank", {"USD", "JPY"}), account("cash", "Cash", {"USD"}),
                         account("safe", "Safe", {"USD"}),        account("twin1", "Twin", {"USD"}),
                         account("twin2", "Twin", {"USD"}),       account("hidden", "Hidden", {"USD"}),
                         account("old", "Old", {"USD"}),          account("float", "Float", {"USD"})};
    snapshot.accounts[6].archived = true;
    snapshot.accounts[7].purpose = "employee";
    snapshot.accounts[7].operatorMemberID = "someone";
    snapshot.categories = {category("sales", "income", {{"en-US", "Sales"}, {"zh-CN", "销售"}}),
                           category("rent", "expense", {{"en-US", "Rent"}, {"id-ID", "Rent"}}),
                           category("misc1", "expense", {{"en-US", "Other"}}),
                           category("misc2", "expense", {{"vi-VN", "Other"}}),
                           category("gone", "expense", {{"en-US", "Gone"}}),
                           category("office", "expense", {{"en-US", "Office"}, {"zh-CN", "办公"}}),
                           category("travel", "expense", {{"en-US", "Travel"}}),
                           category("paper1", "expense", {{"en-US", "Paper"}, {"zh-CN", "纸张"}}),
                           category("paper2", "expense", {{"en-US", "Paper"}, {"zh-CN", "纸张"}})};
    snapshot.categories[7].parentID = "office";
    snapshot.categories[8].parentID = "travel";
    snapshot.categories[4].archived = true;
    auto& member = snapshot.currentMember;
    member.id = "me";
    member.active = true;
    member.accountGrants.emplace();
    for (const auto* id : {"bank", "cash", "twin1", "twin2", "old", "float"})
        member.accountGrants->push_back(
            {id, {"view", "income", "expense", "transferOut", "transferIn", "exchange", "opening"}});
    member.accountGrants->push_back({"safe", {"view"}});
    return snapshot;
}

LedgerImportPlan planRows(const std::string& rows, const LedgerSnapshot& snapshot = books())
{
    return LedgerImportCSV::plan(std::string{header} + rows, snapshot);
}

/// "line:key" of every issue.
std::string issues(const LedgerImportPlan& plan)
{
    std::string text;
    for (const auto& issue : plan.issues)
        text += (text.empty() ? "" : " ") + std::to_string(issue.line) + ":" + issue.message;
    return text;
}

struct RowCase {
    const char* name;
    const char* row;
    const char* issues;
};

class ImportRow : public testing::TestWithParam<RowCase> {};

TEST_P(ImportRow, SaysEverythingThatIsWrongWithIt)
{
    const auto plan = planRows(GetParam().row);
    EXPECT_EQ(issues(plan), GetParam().issues);
    EXPECT_EQ(plan.inputs.size(), plan.issues.empty() ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ImportRow,
    testing::Values(
        RowCase{"Income", "2026-01-05,Income,Bank,USD,12.50,Sales,,,,", ""},
        RowCase{"UpperCaseAndBlanks", "2026-01-05, INCOME , Bank ,USD, 12.50 ,Sales,,,,", ""},
        RowCase{"Chinese", "2026-01-05,收入,Bank,USD,12.50,销售,,,,", ""},
        RowCase{"Opening", "2026-01-05,opening balance,Cash,USD,1,,,,,", ""},
        RowCase{"Transfer", "2026-01-05,Transfer,Bank,USD,1,,,Cash,,", ""},
        RowCase{"Exchange", "2026-01-05,换汇,Bank,USD,1,,,Bank,JPY,150", ""},
        RowCase{"CurrencyInSmallLetters", "2026-01-05,Exchange,Bank,jpy,150,,,Cash,usd,1", ""},
        RowCase{"CategoryBehindItsParent", "2026-01-05,Expense,Bank,USD,1,Office / Paper,,,,", ""},
        RowCase{"CategoryAsTheWindowWritesIt", "2026-01-05,Expense,Bank,USD,1,Travel › Paper,,,,", ""},
        RowCase{"CategoryBehindItsParentInChinese", "2026-01-05,Expense,Bank,USD,1,办公/纸张,,,,", ""},
        RowCase{"ChildNameUnderTwoParents", "2026-01-05,Expense,Bank,USD,1,Paper,,,,", "2:category"},
        RowCase{"CategoryBehindAnotherParent", "2026-01-05,Expense,Bank,USD,1,Rent / Paper,,,,", "2:category"},
        RowCase{"TooFewColumns", "2026-01-05,Income,Bank,USD,12.50,Sales,,,", "2:columns"},
        RowCase{"NoSuchDay", "2026-02-29,Income,Bank,USD,1,Sales,,,,", "2:date"},
        RowCase{"OtherDateForm", "05/01/2026,Income,Bank,USD,1,Sales,,,,", "2:date"},
        RowCase{"UnknownType", "2026-01-05,Refund,Bank,USD,1,Sales,,,,", "2:type"},
        RowCase{"NoAccount", "2026-01-05,Income,,USD,1,Sales,,,,", "2:account"},
        RowCase{"TwoAccountsOfThatName", "2026-01-05,Income,Twin,USD,1,Sales,,,,", "2:account"},
        RowCase{"UnseenAccount", "2026-01-05,Income,Hidden,USD,1,Sales,,,,", "2:account"},
        RowCase{"ArchivedAccount", "2026-01-05,Income,Old,USD,1,Sales,,,,", "2:account"},
        RowCase{"CurrencyNotHeld", "2026-01-05,Income,Cash,JPY,1,Sales,,,,", "2:currency"},
        RowCase{"UnknownCurrency", "2026-01-05,Income,Cash,XYZ,1,Sales,,,,", "2:currency"},
        RowCase{"OnlySeen", "2026-01-05,Income,Safe,USD,1,Sales,,,,", "2:permission"},
        RowCase{"SomebodyElsesFloat", "2026-01-05,Expense,Float,USD,1,Rent,,,,", "2:permission"},
        RowCase{"Zero", "2026-01-05,Income,Bank,USD,0.00,Sales,,,,", "2:amount"},
        RowCase{"Negative", "2026-01-05,Income,Bank,USD,-1,Sales,,,,", "2:amount"},
        RowCase{"NotANumber", "2026-01-05,Income,Bank,USD,one,Sales,,,,", "2:amount"},
        RowCase{"YenHasNoDecimals", "2026-01-05,Income,Bank,JPY,1.5,Sales,,,,", "2:amount"},
        RowCase{"BeyondTheLimit", "2026-01-05,Income,Bank,USD,90000000000.01,Sales,,,,", "2:amount"},
        RowCase{"CategoryOfTheOtherKind", "2026-01-05,Income,Bank,USD,1,Rent,,,,", "2:category"},
        RowCase{"TwoCategoriesOfThatName", "2026-01-05,Expense,Bank,USD,1,Other,,,,", "2:category"},
        RowCase{"ArchivedCategory", "2026-01-05,Expense,Bank,USD,1,Gone,,,,", "2:category"},
        RowCase{"SameNameInTwoLanguages", "2026-01-05,Expense,Bank,USD,1,Rent,,,,", ""},
        RowCase{"TargetsOnIncome", "2026-01-05,Income,Bank,USD,1,Sales,,Cash,USD,1",
                "2:targetAccount 2:targetCurrency 2:targetAmount"},
        RowCase{"TransferWithoutTarget", "2026-01-05,Transfer,Bank,USD,1,,,,,", "2:targetAccount"},
        RowCase{"TransferToItself", "2026-01-05,Transfer,Bank,USD,1,,,Bank,,", "2:sameAccount"},
        RowCase{"TransferToArchived", "2026-01-05,Transfer,Bank,USD,1,,,Old,,", "2:targetAccount"},
        RowCase{"TransferWithoutGrant", "2026-01-05,Transfer,Bank,USD,1,,,Safe,,", "2:permission"},
        RowCase{"TransferOfCurrencyNotHeld", "2026-01-05,Transfer,Bank,JPY,1,,,Cash,,", "2:targetCurrency"},
        RowCase{"TransferWithTargetColumns", "2026-01-05,Transfer,Bank,USD,1,,,Cash,USD,1",
                "2:targetCurrency 2:targetAmount"},
        RowCase{"ExchangeWithoutAnything", "2026-01-05,Exchange,Bank,USD,1,,,,,",
                "2:targetAccount 2:targetCurrency 2:targetAmount"},
        RowCase{"ExchangeIntoCurrencyNotHeld", "2026-01-05,Exchange,Bank,USD,1,,,Cash,JPY,1", "2:targetCurrency"},
        RowCase{"ExchangeIntoItself", "2026-01-05,Exchange,Bank,USD,1,,,Bank,USD,1", "2:targetCurrency"},
        RowCase{"ExchangeOfNothing", "2026-01-05,Exchange,Bank,USD,1,,,Bank,JPY,0", "2:targetAmount"},
        RowCase{"ExchangeIntoAccountOnlySeen", "2026-01-05,Exchange,Bank,JPY,1,,,Safe,USD,1", "2:permission"},
        RowCase{"EverythingAtOnce", "x,y,z,w,v,u,,,,", "2:date 2:type 2:account 2:currency 2:amount"}),
    [](const auto& each) { return std::string{each.param.name}; });

struct FileCase {
    const char* name;
    std::string data;
    const char* issues;
    bool malformed;
};

class ImportFile : public testing::TestWithParam<FileCase> {};

TEST_P(ImportFile, IsReadAsAWholeOrNotAtAll)
{
    const auto plan = LedgerImportCSV::plan(GetParam().data, books());
    EXPECT_EQ(issues(plan), GetParam().issues);
    EXPECT_EQ(plan.malformed, GetParam().malformed);
    EXPECT_TRUE(plan.inputs.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, ImportFile,
    testing::Values(FileCase{"Empty", "", "1:header", true},
                    FileCase{"Template", LedgerImportCSV::templateText(), "", false},
                    FileCase{"OpenQuoteInHeader", "\"日期 Date,类型 Type\n", "1:csv", true},
                    FileCase{"OtherHeader", "date,type\n", "1:header", true},
                    FileCase{"OtherHeaderAndOpenQuote", "date,type\na,b\n\"", "1:csv", true},
                    FileCase{"OneColumnMore", std::string{header.substr(0, header.size() - 1)} + ",More\n", "1:header",
                             true},
                    FileCase{"NotUtf8", std::string{header} + "\xFF\n", "1:encoding", true},
                    FileCase{"OpenQuoteAfterGoodRows",
                             std::string{header} + "2026-01-05,Income,Bank,USD,1,Sales,,,,\n\"", "1:csv", true}),
    [](const auto& each) { return std::string{each.param.name}; });

const std::string saleRow = "2026-01-05,Income,Bank,USD,12.50,Sales,first,,,\n";

}

TEST(LedgerImport, TurnsEachKindIntoWhatItRecords)
{
    auto snapshot = books();
    snapshot.accounts[7].operatorMemberID = "me";
    const auto plan = planRows("2026-01-05,Expense,Bank,USD,\"1,234.50\",Rent, paid late ,,,\n"
                               "2026-01-05,Internal Transfer,Bank,USD,2,,,Float,,\n"
                               "2026-01-06,Currency Exchange,Bank,JPY,150,,,Cash,USD,1.01\n"
                               "2026-01-07,期初余额,Cash,USD,3,,,,,\n",
                               snapshot);
    ASSERT_EQ(issues(plan), "");
    ASSERT_EQ(plan.inputs.size(), 4);
    TransactionInput rent{.kind = "expense",
                          .date = "2026-01-05",
                          .note = "paid late",
                          .categoryID = "rent",
                          .sourceAccountID = "bank",
                          .targetAccountID = {},
                          .currency = "USD",
                          .targetCurrency = {},
                          .amountMinor = 123450,
                          .targetAmountMinor = {},
                          .attachmentIDs = {},
                          .idempotencyKey = plan.inputs[0].idempotencyKey,
                          .originalTransactionID = {},
                          .externalReference = {},
                          .transferPurpose = {}};
    EXPECT_EQ(plan.inputs[0], rent);
    EXPECT_EQ(plan.inputs[1].sourceAccountID, "bank");
    EXPECT_EQ(plan.inputs[1].targetAccountID, "float");
    EXPECT_EQ(plan.inputs[1].transferPurpose, "funding");
    EXPECT_EQ(plan.inputs[2].sourceAccountID, "bank");
    EXPECT_EQ(plan.inputs[2].targetAccountID, "cash");
    EXPECT_EQ(plan.inputs[2].amountMinor, 150);
    EXPECT_EQ(plan.inputs[2].targetCurrency, "USD");
    EXPECT_EQ(plan.inputs[2].targetAmountMinor, 101);
    EXPECT_EQ(plan.inputs[3].kind, "opening");
    EXPECT_EQ(plan.inputs[3].targetAccountID, "cash");
    EXPECT_FALSE(plan.inputs[3].sourceAccountID.has_value());
}

TEST(LedgerImport, RefusesDaysBeforeTheBooksAndRowsOutOfOrder)
{
    auto snapshot = books();
    snapshot.financialSettings.emplace().bookkeepingStartDate = "2026-01-01";
    const auto row = [](const std::string& day) { return day + ",Income,Bank,USD,1,Sales,,,,\n"; };
    EXPECT_EQ(issues(planRows(row("2025-12-31") + row("2026-01-01") + row("2026-01-03") + row("2026-01-02") +
                                  row("2026-01-02") + row("bad") + row("2026-01-01"),
                              snapshot)),
              "2:beforeStart 5:dateOrder 7:date 8:dateOrder");
}

TEST(LedgerImport, GivesRowsTheIdentifiersOfTheirContent)
{
    const auto plan = planRows(saleRow + saleRow);
    ASSERT_EQ(plan.inputs.size(), 2);
    EXPECT_EQ(plan.inputs[0].idempotencyKey, "c115378a-9008-5529-9469-e9ae5ff9ab43");
    EXPECT_EQ(plan.inputs[1].idempotencyKey, "9eecdb42-bacc-538d-bdd9-9b0c60f213dc");
    EXPECT_EQ(planRows(saleRow + saleRow), plan);
    EXPECT_TRUE(ImportRowIdentity::isIdentifier(plan.inputs[0].idempotencyKey));
    for (const auto* other : {"c115378a-9008-4529-9469-e9ae5ff9ab43", "C115378A-9008-5529-9469-E9AE5FF9AB43",
                              "c115378a-9008-5529-c469-e9ae5ff9ab43", "c115378a-9008-5529-9469-e9ae5ff9ab4", ""})
        EXPECT_FALSE(ImportRowIdentity::isIdentifier(other)) << other;

    auto other = books();
    other.company.id = "公司";
    EXPECT_EQ(planRows(saleRow, other).inputs.at(0).idempotencyKey, "3df58b45-d820-52c7-b8b1-a735e63f28f9");
}

TEST(LedgerImport, TellsManyRowsApartWhateverEndsTheirLines)
{
    std::string rows;
    for (int at = 0; at < 100; ++at) {
        for (const int amount : {at + 1, at % 7 + 1, at + 1})
            rows += "2026-01-05,Income,Bank,USD," + std::to_string(amount) + ",Sales,,,,\n";
    }
    auto returns = std::string{header} + rows;
    std::ranges::replace(returns, '\n', '\r');
    const auto plan = planRows(rows);
    EXPECT_EQ(LedgerImportCSV::plan(returns, books()), plan);
    std::set<std::string> identifiers;
    for (const auto& input : plan.inputs)
        identifiers.insert(input.idempotencyKey);
    EXPECT_EQ(identifiers.size(), 300);
}

TEST(LedgerImport, AcceptsTheEarlierTemplateAndUntidyHeaders)
{
    const auto legacy =
        LedgerImportCSV::plan("\xEF\xBB\xBF 导入编号 Import ID ," + std::string{header} + "7," + saleRow, books());
    EXPECT_EQ(issues(legacy), "");
    EXPECT_EQ(legacy.inputs.at(0).idempotencyKey, "2e25f577-7202-5a43-8d9d-6bef2c7b3661");
    EXPECT_EQ(legacy.inputs.at(0).amountMinor, 1250);

    const auto marked = LedgerImportCSV::plan(
        "\"\xEF\xBB\xBF日期 Date \xEF\xBB\xBF\"" + std::string{header.substr(11)} + saleRow, books());
    EXPECT_EQ(issues(marked), "");
    EXPECT_EQ(marked.inputs.size(), 1);
}

TEST(LedgerImport, PassesOverRowsInWhichNothingStands)
{
    const auto plan = planRows(",,,,,,,,,\n \n" + saleRow + " , ,,,,,,,,\n\n" + saleRow + "x\n");
    EXPECT_EQ(issues(plan), "8:columns");
    EXPECT_EQ(plan.lines, (std::vector<int>{4, 7}));
    EXPECT_EQ(plan.inputs[1].idempotencyKey, "9eecdb42-bacc-538d-bdd9-9b0c60f213dc"); // as without them

    const auto blank = planRows(std::string(100'000, '\n') + saleRow);
    EXPECT_EQ(blank.issues.size(), 0);
    EXPECT_EQ(blank.lines, (std::vector<int>{100'002}));
}

TEST(LedgerImport, NamesTheSeparatorThatIsNoComma)
{
    auto semicolons = std::string{header};
    std::ranges::replace(semicolons, ',', ';');
    auto quoted = "\xEF\xBB\xBF" + LedgerImportCSV::templateText().substr(3);
    std::ranges::replace(quoted, ',', ';');
    for (const auto& [text, key] : {std::pair{semicolons + "2026-01-05;Income\n", "header"}, {quoted, "csv"}}) {
        const auto plan = LedgerImportCSV::plan(text, books());
        ASSERT_EQ(plan.issues.size(), 1);
        EXPECT_EQ(plan.issues[0], (LedgerImportIssue{.line = 1, .message = key, .value = ";"}));
        EXPECT_EQ(LedgerImportWords::text(plan.issues[0], "en"),
                  "The columns of the file are not separated by commas. Save it as CSV separated by commas.");
    }
    EXPECT_EQ(LedgerImportWords::text(LedgerImportCSV::plan("date;type\n", books()).issues[0], "en"),
              "The header does not match the downloaded template.");
}

TEST(LedgerImport, NamesTheColumnOfTheCellAtFault)
{
    const auto plan = planRows("x,Income,Bank,USD,0,Sales,,,,\n2026-01-05,Exchange,Bank,USD,1,,,Bank,USD,\n1,2\n");
    std::string found;
    for (const auto& issue : plan.issues)
        found += issue.message + (issue.column ? "@" + std::to_string(*issue.column) : "") + " ";
    EXPECT_EQ(found, "date@0 amount@4 targetCurrency@8 targetAmount@9 columns ");
}

TEST(LedgerImport, GivesAFileBackWithItsIssuesToBeMendedAndReadAgain)
{
    const std::string rows = "\"2026-01-05\",Income,Bank,USD,1,Sales,\"=1, \"\"two\"\"\nlines\",,,\n"
                             ",,,\n"
                             "2026-01-06,Income,Bank,USD,oops,Sales,,,\n";
    const auto before = LedgerImportCSV::plan(std::string{header} + rows, books());
    ASSERT_EQ(before.issues.size(), 1);
    const auto file = LedgerImportCSV::withIssues(std::string{header} + rows, {{4, "Too \"few\"."}});
    EXPECT_NE(file.find(",问题 Issue\n2026-01-05,Income,"), std::string::npos) << file;
    EXPECT_NE(file.find(R"("=1, ""two"")"), std::string::npos) << "what a person wrote stays as it was";
    EXPECT_NE(file.find(R"(,oops,Sales,,,,,"Too ""few"".")"), std::string::npos) << file;

    auto mended = file;
    mended.replace(mended.find("oops"), 4, "2.50");
    const auto after = LedgerImportCSV::plan(mended, books());
    EXPECT_TRUE(after.issues.empty());
    ASSERT_EQ(after.inputs.size(), 2);
    EXPECT_EQ(after.inputs[0], before.inputs[0]) << "its key is that of the row in the first file";
    EXPECT_EQ(after.lines, (std::vector<int>{2, 4}));
    EXPECT_EQ(LedgerImportCSV::withIssues(mended, {{4, "Too \"few\"."}}).find("oops"), std::string::npos);
    EXPECT_EQ(LedgerImportCSV::withIssues(file, {{4, "Too \"few\"."}}), file) << "one column, however often";
}

TEST(LedgerImport, GivesALargeFileBackSmallEnoughToBeReadAgain)
{
    const std::string good = "2026-01-05,Income,Bank,USD,1,Sales,,,,\n";
    auto data = std::string{header};
    std::map<int, std::string> issues;
    int line = 1;
    for (; data.size() + good.size() + 100 < LedgerImportCSV::maximumFileSize; ++line)
        data += good;
    data += "2026-01-06,Income,Bank,USD,oops,Sales,,,,\n";
    const auto mended = LedgerImportCSV::withIssues(data, {{++line, "Amount"}});
    EXPECT_LE(mended.size(), LedgerImportCSV::maximumFileSize);
    EXPECT_NE(mended.find("oops,Sales,,,,,Amount\n"), std::string::npos);

    for (int at = 2; at <= line; ++at)
        issues.emplace(at, "Every row, one way or another, is wrong in this file");
    const auto cut = LedgerImportCSV::withIssues(data.substr(0, data.size() / 2), issues);
    EXPECT_LE(cut.size(), LedgerImportCSV::maximumFileSize);
    EXPECT_GT(cut.size(), LedgerImportCSV::maximumFileSize - 1'000) << "as many as there is room for";
    EXPECT_NE(cut.find(good.substr(0, good.size() - 1) + ",\"Every row, one way or another, is wrong in this file\"\n"),
              std::string::npos);
}

TEST(LedgerImport, WordsEveryIssueInFourLanguages)
{
    for (const auto& issue : planRows("x,Refund,z,w,v,u,,,,\n1\n2026-01-05,Exchange,Bank,USD,1,,,,,\n").issues)
        EXPECT_TRUE(LedgerImportWords::table().contains(issue.message)) << issue.message;
    EXPECT_EQ(LedgerImportWords::text("header", "id_ID"), "Baris judul tidak sesuai dengan templat yang diunduh.");
}
