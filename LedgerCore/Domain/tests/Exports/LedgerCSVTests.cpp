#include "LedgerCore/Domain/Exports/LedgerCSV.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace {

Account account(std::string id, std::string name)
{
    Account made;
    made.id = std::move(id);
    made.name = std::move(name);
    return made;
}

Category category(std::string id, TextMap names)
{
    Category made;
    made.id = std::move(id);
    made.kind = "expense";
    made.names = std::move(names);
    return made;
}

Attachment attachment(std::string id, std::string name)
{
    Attachment made;
    made.id = std::move(id);
    made.name = std::move(name);
    return made;
}

LedgerTransaction rent()
{
    LedgerTransaction entry;
    entry.id = "t1";
    entry.kind = "expense";
    entry.date = "2026-11-20";
    entry.note = "=1+1";
    entry.createdAt = "2026-11-20T09:41:07Z";
    entry.memberID = "m1";
    entry.categoryID = "c1";
    entry.legs = {{"a1", "USD", -500}, {"gone", "VND", 1500}};
    entry.attachmentIDs = {"r2", "lost", "r1"};
    return entry;
}

LedgerSnapshot books()
{
    LedgerSnapshot snapshot;
    snapshot.currentMember.role = "owner";
    snapshot.currentMember.active = true;
    snapshot.members.push_back({});
    snapshot.members[0].id = "m1";
    snapshot.members[0].name = "Dewi";
    snapshot.accounts = {account("a1", "Bank, \"main\"")};
    snapshot.categories = {category("c1", {{"en-US", "Rent"}, {"vi-VN", "Tiền thuê"}})};
    snapshot.attachments = {attachment("r1", "bill.pdf"), attachment("r2", "photo.jpg")};
    snapshot.transactions = {rent()};
    return snapshot;
}

std::string lastFields(const LedgerSnapshot& snapshot)
{
    const auto text = LedgerCSV::render(snapshot, "en", {.includesReceiptIndex = true});
    const auto end = text.size() - 2;
    const auto start = text.rfind("\"\",", end) + 3; // behind the empty capital contribution
    return text.substr(start, end - start);
}

struct EscapeCase {
    const char* name;
    std::string_view value;
    const char* expected;
};

class CsvField : public testing::TestWithParam<EscapeCase> {};

TEST_P(CsvField, IsQuotedAndNeverAFormula)
{
    EXPECT_EQ(LedgerCSV::escaped(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, CsvField,
    testing::Values(EscapeCase{"Empty", "", R"("")"}, EscapeCase{"Plain", "rent", R"("rent")"},
                    EscapeCase{"Quote", R"(a"b)", R"("a""b")"}, EscapeCase{"LineEnd", "a\r\nb,c", "\"a\r\nb,c\""},
                    EscapeCase{"Formula", "=A1*2", R"("'=A1*2")"}, EscapeCase{"Plus", "+62", R"("'+62")"},
                    EscapeCase{"At", "@name", R"("'@name")"}, EscapeCase{"Negative", "-12.50", R"("'-12.50")"},
                    EscapeCase{"BlanksBefore", "  =1", R"("'  =1")"},
                    EscapeCase{"TabAndControl", "\t\x01=1", "\"'\t\x01=1\""},
                    EscapeCase{"MarkBefore", "\xEF\xBB\xBF=1", "\"'\xEF\xBB\xBF=1\""},
                    EscapeCase{"WideBlankBefore", "　-1", R"("'　-1")"}, EscapeCase{"FormulaInside", "a=1", R"("a=1")"},
                    EscapeCase{"OnlyBlanks", "  ", R"("  ")"}, EscapeCase{"QuotedFormula", "=\"x\"", R"("'=""x""")"},
                    EscapeCase{"OtherMinus", "−5", R"("−5")"}, EscapeCase{"BrokenText", "\xC3=1", "\"\xC3=1\""}),
    [](const auto& each) { return std::string{each.param.name}; });

}

TEST(LedgerCSV, WritesOneRecordALeg)
{
    EXPECT_EQ(LedgerCSV::render(books(), "vi", {}),
              "\xEF\xBB\xBF"
              "\"transaction_id\",\"date\",\"kind\",\"account\",\"currency\",\"amount\",\"amount_minor\",\"category\","
              "\"member\",\"note\",\"reversal_of\",\"reversed_by\",\"original_transaction_id\",\"external_reference\","
              "\"transfer_purpose\",\"created_at\",\"distribution_kind\",\"participant_name\","
              "\"dividend_movement_id\",\"capital_contribution_id\"\r\n"
              "\"t1\",\"2026-11-20\",\"expense\",\"Bank, \"\"main\"\"\",\"USD\",\"'-5.00\",\"'-500\",\"Tiền thuê\","
              "\"Dewi\",\"'=1+1\",\"\",\"\",\"\",\"\",\"\",\"2026-11-20T09:41:07Z\",\"\",\"\",\"\",\"\"\r\n"
              "\"t1\",\"2026-11-20\",\"expense\",\"\",\"VND\",\"1500\",\"1500\",\"Tiền thuê\","
              "\"Dewi\",\"'=1+1\",\"\",\"\",\"\",\"\",\"\",\"2026-11-20T09:41:07Z\",\"\",\"\",\"\",\"\"\r\n");
}

TEST(LedgerCSV, PutsEveryLinkIntoItsOwnColumn)
{
    auto snapshot = books();
    auto& entry = snapshot.transactions[0];
    entry.legs.resize(1);
    entry.categoryID = "unknown";
    entry.memberID = "unknown";
    entry.reversalOf = "A";
    entry.reversedBy = "B";
    entry.originalTransactionID = "C";
    entry.externalReference = "D";
    entry.transferPurpose = "E";
    entry.distributionKind = "F";
    entry.participantName = "G";
    entry.dividendMovementID = "H";
    entry.capitalContributionID = "I";
    const auto text = LedgerCSV::render(snapshot, "en", {});
    EXPECT_TRUE(text.ends_with("\"'-500\",\"\",\"\",\"'=1+1\",\"A\",\"B\",\"C\",\"D\",\"E\",\"2026-11-20T09:41:07Z\","
                               "\"F\",\"G\",\"H\",\"I\"\r\n"))
        << text;
}

TEST(LedgerCSV, NamesReceiptsOnlyForWhomTheyAreMeant)
{
    auto snapshot = books();
    EXPECT_EQ(lastFields(snapshot), R"("3","photo.jpg; bill.pdf")");
    snapshot.currentMember.permissions = {"exportData"};
    EXPECT_EQ(lastFields(snapshot), R"("3","")");
    snapshot.currentMember.permissions->push_back("viewCompany");
    EXPECT_EQ(lastFields(snapshot), R"("3","photo.jpg; bill.pdf")");
    snapshot.currentMember.permissions.reset();
    snapshot.currentMember.role = "finance";
    EXPECT_EQ(lastFields(snapshot), R"("3","")");
}

TEST(LedgerCSV, StillWritesItsHeaderWithoutEntries)
{
    LedgerSnapshot empty;
    const auto text = LedgerCSV::render(empty, "en", {.includesReceiptIndex = true});
    EXPECT_TRUE(text.ends_with(",\"receipt_count\",\"receipt_names\"\r\n"));
    EXPECT_EQ(std::ranges::count(text, '\n'), 1);
}

TEST(LedgerCSV, NamesFilesAfterTheirDays)
{
    EXPECT_EQ(LedgerCSV::fileName("2026-01-01", "2026-03-31"), "quillet-ledger-2026-01-01_2026-03-31.csv");
    EXPECT_EQ(LedgerCSV::fileName("2026-01-01", "2026-01-01"), "quillet-ledger-2026-01-01.csv");
    EXPECT_EQ(CapitalCSV::fileName("2026-11-20"), "tallyfold-capital-2026-11-20.csv");
    EXPECT_EQ(DividendCSV::fileName("2026-11-20"), "tallyfold-dividends-2026-11-20.csv");
}

TEST(CapitalCSV, WritesOneRecordALineOfEveryKind)
{
    CapitalState state;
    state.baselines = {
        {"b1", "USD", "2025-12-31", "2026-01-02", "s1", {{"p1", "Ana", 10050}, {"p2", "Budi", 0}}, "b0"}};
    state.contributions = {{"k1", "p1", "Ana", "JPY", 700, "2026-02-01", "s2", "t9", {}, "k2"},
                           {"k2", "p1", "Ana", "JPY", -700, "2026-02-03", "s3", "t10", "k1", {}}};
    state.ownershipVersions = {{"o1", "2026-01-01", "s4", {{"p1", "Ana", 6000}, {"p2", "Budi", 4000}}}};
    EXPECT_EQ(
        CapitalCSV::render(state),
        "\xEF\xBB\xBF"
        "\"record_id\",\"kind\",\"date\",\"created_at\",\"currency\",\"participant_id\",\"participant_name\","
        "\"amount\",\"amount_minor\",\"ownership_bps\",\"through_date\",\"replaces_id\",\"reversal_of\","
        "\"reversed_by\"\r\n"
        "\"b1\",\"baseline\",\"2026-01-02\",\"s1\",\"USD\",\"p1\",\"Ana\",\"100.50\",\"10050\",\"\","
        "\"2025-12-31\",\"b0\",\"\",\"\"\r\n"
        "\"b1\",\"baseline\",\"2026-01-02\",\"s1\",\"USD\",\"p2\",\"Budi\",\"0.00\",\"0\",\"\","
        "\"2025-12-31\",\"b0\",\"\",\"\"\r\n"
        "\"k1\",\"contribution\",\"2026-02-01\",\"s2\",\"JPY\",\"p1\",\"Ana\",\"700\",\"700\",\"\",\"\",\"\","
        "\"\",\"k2\"\r\n"
        "\"k2\",\"correction\",\"2026-02-03\",\"s3\",\"JPY\",\"p1\",\"Ana\",\"'-700\",\"'-700\",\"\",\"\",\"\","
        "\"k1\",\"\"\r\n"
        "\"o1\",\"ownership\",\"2026-01-01\",\"s4\",\"\",\"p1\",\"Ana\",\"\",\"\",\"6000\",\"\",\"\",\"\",\"\"\r\n"
        "\"o1\",\"ownership\",\"2026-01-01\",\"s4\",\"\",\"p2\",\"Budi\",\"\",\"\",\"4000\",\"\",\"\",\"\",\"\""
        "\r\n");
}

TEST(DividendCSV, WritesEntitlementsThenMovements)
{
    DividendState state;
    state.participants = {{"p1", "Ana Sari", {}, 10000, false}};
    state.batches = {{"b1",
                      "2025",
                      "USD",
                      300,
                      "2026-01-05",
                      "s1",
                      {{"p1", "Ana", 5000, 150}, {"p2", "Budi", 5000, 150}},
                      true,
                      "2026-01-09"}};
    state.movements = {{"v1", "payment", "p2", "USD", 150, "2026-01-06", "s2", "b1", {}, "t1", "v2", {}},
                       {"v3", "return", "p1", "USD", 40, "2026-01-08", "s4", {}, "v0", "t3", {}, {}}};
    EXPECT_EQ(DividendCSV::render(state, "en"),
              "\xEF\xBB\xBF"
              "\"record_id\",\"kind\",\"date\",\"created_at\",\"period\",\"currency\",\"participant_id\","
              "\"participant_name\",\"ratio_bps\",\"amount\",\"amount_minor\",\"batch_id\",\"advance_id\","
              "\"reversal_of\",\"reversed_by\",\"cancelled\",\"cancelled_date\"\r\n"
              "\"b1\",\"entitlement\",\"2026-01-05\",\"s1\",\"2025\",\"USD\",\"p1\",\"Ana\",\"5000\",\"1.50\",\"150\","
              "\"b1\",\"\",\"\",\"\",\"true\",\"2026-01-09\"\r\n"
              "\"b1\",\"entitlement\",\"2026-01-05\",\"s1\",\"2025\",\"USD\",\"p2\",\"Budi\",\"5000\",\"1.50\",\"150\","
              "\"b1\",\"\",\"\",\"\",\"true\",\"2026-01-09\"\r\n"
              "\"v1\",\"payment\",\"2026-01-06\",\"s2\",\"2025\",\"USD\",\"p2\",\"Budi\",\"\",\"1.50\",\"150\","
              "\"b1\",\"\",\"\",\"v2\",\"false\",\"\"\r\n"
              "\"v3\",\"return\",\"2026-01-08\",\"s4\",\"\",\"USD\",\"p1\",\"Ana Sari\",\"\",\"0.40\",\"40\","
              "\"\",\"v0\",\"\",\"\",\"false\",\"\"\r\n");
}
