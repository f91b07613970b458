#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

TEST(ServedSchema, IsMadeOnceByProcessesThatBeginAtTheSameTime)
{
    const TemporaryFolder folder;
    const TestDatabase database{folder};
    EXPECT_FALSE(Database::openExisting(database.name()).has_value()) << "an empty one holds no books";
    {
        std::vector<std::jthread> processes;
        for (int each = 0; each < 4; ++each)
            processes.emplace_back([&] {
                const auto opened = Database::open(database.name());
                EXPECT_TRUE(opened.has_value()) << opened.error();
            });
    }
    Connection connection{database.name()};
    EXPECT_EQ(Migrations::version(connection), Migrations::newest());
    Connection{database.name()}.execute(
        fmt::format("INSERT INTO schema_migrations VALUES ({}, '')", Migrations::newest() + 1));
    const auto refused = Database::open(database.name());
    ASSERT_FALSE(refused.has_value());
    EXPECT_NE(refused.error().find("newer program"), std::string::npos) << refused.error();
}

TEST(ServedSchema, IsNotMadeAmongTablesOfOthers)
{
    const TemporaryFolder folder;
    const TestDatabase database{folder};
    Connection{database.name()}.execute("CREATE TABLE letters (body TEXT)");
    const auto refused = Database::open(database.name());
    ASSERT_FALSE(refused.has_value());
    EXPECT_NE(refused.error().find("another program"), std::string::npos) << refused.error();
}

TEST(ServedSchema, IsBroughtUpToDateWithWhatIsInIt)
{
    TestService service;
    const auto post = [&] {
        return service.as("mira", "POST", "/v1/transactions", Json::encode(SampleBooks::income()));
    };
    const auto before = post();
    ASSERT_EQ(before.status, 200) << before.body;
    // As a program that knew 14 steps has made it: what later steps have made is gone, and what they took is there.
    service.write([](Connection& connection) {
        for (const auto* const statement :
             {"DROP TABLE IF EXISTS entry_drafts", "DROP TABLE template_days", "DROP TABLE entry_templates",
              "DROP INDEX entries_by_reversal",
              "ALTER TABLE entries ADD CONSTRAINT entries_company_id_reversal_of_key UNIQUE (company_id, reversal_of)",
              "CREATE INDEX legs_by_account ON legs (company_id, account_id, sequence)",
              "DELETE FROM schema_migrations", "INSERT INTO schema_migrations VALUES (14, '')"})
            connection.execute(statement);
    });
    EXPECT_NE(service.problems(), "") << "it is not what this program makes";
    ASSERT_TRUE(Database::open(service.databaseFile()).has_value());
    EXPECT_EQ(service.problems(), "");
    EXPECT_EQ(post().body, before.body) << "the command was carried out";
    EXPECT_EQ(service.as("mira", "GET", "/v1/templates").body, R"({"templates":[]})");
}

TEST(ServedSchema, KeepsTheAuditTrail)
{
    TestService service;
    service.as("mira", "POST", "/v1/transactions", "{}");
    service.write([](Connection& connection) {
        connection.execute("INSERT INTO audit_records (scope, number, at, origin, kind, chain) VALUES "
                           "('sample', 900, '', '', '', '')");
    });
    for (const auto* const statement : {"UPDATE audit_records SET kind = 'nothing'", "DELETE FROM audit_records"})
        EXPECT_ANY_THROW(service.write([&](Connection& connection) { connection.execute(statement); })) << statement;
}

struct Change {
    const char* statement;
    const char* word; // of what is said about it
};

TEST(ServedSchema, IsComparedWithWhatThisProgramMakes)
{
    const Change changes[] = {
        {"DROP INDEX entries_by_reversal", "index entries_by_reversal is missing"},
        {"CREATE INDEX others ON legs (currency)", "index others is none"},
        {"ALTER TABLE legs ALTER COLUMN amount_minor TYPE NUMERIC", "table legs is not"},
        {"ALTER TABLE legs ALTER COLUMN currency DROP NOT NULL", "table legs is not"},
        {"ALTER TABLE entries DROP CONSTRAINT entries_company_id_member_id_fkey", "table entries is not"},
        {"ALTER TABLE audit_records DISABLE TRIGGER audit_records_stay", "trigger audit_records_stay is not"},
        {"CREATE OR REPLACE FUNCTION audit_records_kept() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN RETURN NEW; "
         "END $$",
         "function audit_records_kept is not"},
        {"DROP TABLE mails", "table mails is missing"},
    };
    for (const auto& change : changes) {
        TestService service;
        ASSERT_EQ(service.problems(), "");
        service.write([&](Connection& connection) { connection.execute(change.statement); });
        EXPECT_NE(service.problems().find(change.word), std::string::npos)
            << change.statement << ": " << service.problems();
    }
}

TEST(Verify, FindsBrokenJsonAndGoesOn)
{
    TestService service;
    service.write([](Connection& connection) {
        connection.execute("UPDATE account_sets SET account_ids = '[' WHERE id = 1");
        connection.execute("UPDATE balances SET amount_minor = 1 WHERE account_id = 'bank'");
    });
    const auto problems = service.problems();
    EXPECT_NE(problems.find("table account_sets: account_ids"), std::string::npos) << problems;
    EXPECT_NE(problems.find("bank"), std::string::npos) << "what follows is checked: " << problems;
}

}
