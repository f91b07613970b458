#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Schema/MigrationSteps.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleDatabase.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

/// The sample's books in a file that nobody serves.
class LoneFile {
public:
    LoneFile() { makeSampleDatabase(name()); }

    [[nodiscard]] std::string name() const { return m_folder.file("books.sqlite"); }

    /// Changes it as a person with a shell would, past all rules.
    void change(const std::vector<std::string>& statements) const
    {
        Connection connection{name()};
        connection.execute("PRAGMA foreign_keys = OFF");
        connection.execute("PRAGMA ignore_check_constraints = ON");
        for (const auto& each : statements)
            connection.execute(each);
    }

    /// Everything that is wrong, in lines.
    [[nodiscard]] std::string problems() const
    {
        const auto report = Verify::database(name());
        if (!report)
            return report.error();
        std::string lines;
        for (const auto& each : report->problems)
            lines += each + "\n";
        return lines;
    }

private:
    TemporaryFolder m_folder;
};

struct Damage {
    std::string name;
    std::vector<std::string> statements;
    std::vector<std::string> named; // what the problems speak of
};

class DamagedBooks : public testing::TestWithParam<Damage> {};

}

TEST_P(DamagedBooks, AreNamedAndDoNotKeepTheRestFromBeingChecked)
{
    const LoneFile file;
    ASSERT_EQ(file.problems(), "");
    auto statements = GetParam().statements;
    statements.emplace_back("UPDATE balances SET amount_minor = amount_minor + 1 WHERE account_id = 'vault'");
    statements.emplace_back("INSERT INTO balances VALUES ('sample', 'vault', 'USD', 7)");
    file.change(statements);
    const auto problems = file.problems();
    for (const auto& each : GetParam().named)
        EXPECT_NE(problems.find(each), std::string::npos) << each << " is not among\n" << problems;
    if (GetParam().name != "BrokenJson") // then the company's books cannot be read
        EXPECT_NE(problems.find("vault: the USD balance is 7"), std::string::npos) << problems;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DamagedBooks,
    testing::Values(
        Damage{"DroppedTable", {"DROP TABLE attempts"}, {"table attempts is missing"}},
        Damage{"DroppedIndex", {"DROP INDEX opening_legs"}, {"index opening_legs is missing"}},
        Damage{"ForeignTable", {"CREATE TABLE letters (body TEXT)"}, {"table letters is none of this program"}},
        Damage{"AlteredTable", {"ALTER TABLE sessions ADD COLUMN note TEXT"}, {"table sessions is not as"}},
        Damage{"OrphanLeg",
               {"INSERT INTO legs VALUES ('sample', 999, 0, 'bank', 'IDR', 5, 0)"},
               {"change 999: movements without an entry", "table legs"}},
        Damage{"EntryWithoutLegs",
               {"DELETE FROM legs WHERE sequence = (SELECT sequence FROM entries WHERE id = 'sale')"},
               {"entry sale: moves nothing"}},
        Damage{"BrokenJson",
               {"UPDATE members SET permissions = '[\"view' WHERE id = 'mira'"},
               {"table members: row 1: permissions is no JSON", "company sample: cannot be checked"}},
        Damage{"ChangedOutcome",
               {"INSERT INTO commands SELECT company_id, member_id, 'k1', 'x', 'entry:' || id, created_at FROM entries "
                "WHERE id = 'sale'",
                "UPDATE commands SET outcome = 'entry:opening-bank', created_at = '2026-03-10T09:30:00.001Z'"},
               {"command k1: its outcome is not what it recorded"}},
        Damage{"EarlierText",
               {"INSERT INTO entry_renewals SELECT company_id, 900, sequence, '{}' FROM entries WHERE id = 'sale'"},
               {"entry sale: what it said before change 900 is not what was recorded"}},
        Damage{"RecordsOfOtherShape",
               {"INSERT INTO entry_templates VALUES ('sample', 't', 1, 'mira', 'Rent', 0, '[]', '7', 1, '', NULL)",
                "INSERT INTO entry_drafts VALUES ('sample', 'mira', 'k', '{}', 'en', '[]', 'w', '')",
                R"(INSERT INTO invitations VALUES ('sample', 'i', 'x', 'mira', 'Ana', 'a@b.example', 'finance', '{}',)"
                R"( '[1]', '[{"actions":[]}]', '', '', NULL, NULL))"},
               {"template t: its entry is not", "template t: its recurrence is not", "draft k: its entry is not",
                "draft k: its sent is not", "invitation i: its account_ids is not",
                "invitation i: its permissions is not", "invitation i: its account_grants is not"}},
        Damage{"LostCommand", {"UPDATE companies SET audited_from = 0"}, {"entry sale: no command has recorded it"}},
        Damage{"OneOutcomeOfTwoCommands",
               {"INSERT INTO commands SELECT company_id, member_id, 'k1', 'x', 'entry:' || id, created_at FROM entries "
                "WHERE id = 'sale'",
                "INSERT INTO commands SELECT company_id, member_id, 'k2', 'x', 'entry:' || id, created_at FROM entries "
                "WHERE id = 'sale'"},
               {"2 commands have the outcome entry:sale"}}),
    [](const auto& each) { return each.param.name; });

TEST(Verify, KnowsWhatRenewedEntriesSaidBefore)
{
    TestService service;
    const auto post = [&](const std::string& path, const std::string& body) {
        auto answer = service.as("mira", "POST", path, body);
        EXPECT_EQ(answer.status, 200) << path << answer.body;
        return answer.body;
    };
    const auto receipt =
        Json::decode<Attachment>(post("/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf())));
    ASSERT_TRUE(receipt.has_value());
    post("/v1/transactions/sale/attachments", Json::encode(AttachmentLink{{receipt->id}}));
    post("/v1/transactions/sale/reverse", Json::encode(SampleBooks::reversal()));
    EXPECT_EQ(service.problems(), "");
    service.write([](Connection& connection) {
        connection.execute("UPDATE entry_renewals SET text_before = replace(text_before, '80000', '90000')");
    });
    const auto problems = service.problems();
    EXPECT_EQ(std::ranges::count(problems, '\n'), 2) << problems;
    EXPECT_NE(problems.find("entry sale: what it said before change"), std::string::npos) << problems;
}

TEST(Verify, ChangesNothingAndNeedsNoRightToWrite)
{
    const LoneFile file;
    const auto folder = std::filesystem::path{file.name()}.parent_path();
    const auto before = std::filesystem::last_write_time(file.name());
    EXPECT_EQ(file.problems(), "");
    EXPECT_EQ(std::filesystem::last_write_time(file.name()), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder}, {}), 1) << "nothing was made beside it";
}

TEST(Verify, DoesNotUpgradeWhatItChecks)
{
    const TemporaryFolder folder;
    const auto name = folder.file("earlier.sqlite");
    {
        Connection connection{name};
        connection.execute("CREATE TABLE schema_migrations (version INTEGER PRIMARY KEY, applied_at TEXT NOT NULL)");
        connection.execute("INSERT INTO schema_migrations VALUES (1, '')");
        for (const auto* statement : MigrationSteps::all().front().statements)
            connection.execute(statement);
    }
    const auto report = Verify::database(name);
    ASSERT_FALSE(report.has_value());
    EXPECT_NE(report.error().find("schema 1"), std::string::npos) << report.error();
    Connection connection{name};
    int version = 0;
    Query query{connection, "SELECT MAX(version) FROM schema_migrations"};
    query.into(version).next();
    EXPECT_EQ(version, 1);
}

TEST(Storage, TakesWholeNumbersAlone)
{
    TestService service;
    service.write([](Connection& connection) {
        for (const auto* amount : {"1.5", "'12abc'", "NULL"})
            EXPECT_ANY_THROW(connection.execute(std::string{"UPDATE legs SET amount_minor = "} + amount)) << amount;
    });
    EXPECT_EQ(service.problems(), "");
}

TEST(Migrations, RefuseAVersionThatIsNone)
{
    const LoneFile file;
    file.change({"DELETE FROM schema_migrations", "INSERT INTO schema_migrations VALUES (-3, '')"});
    const auto refused = Database::open(file.name());
    ASSERT_FALSE(refused.has_value());
    EXPECT_NE(refused.error().find("-3"), std::string::npos) << refused.error();
    EXPECT_NE(file.problems().find("-3"), std::string::npos);
}

}
