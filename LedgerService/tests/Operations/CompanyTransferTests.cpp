#include <filesystem>
#include <map>

#include <boost/describe.hpp>
#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerService/Operations/Archives/CompanyArrival.h"
#include "LedgerService/Operations/Archives/CompanyTransfer.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;
using CompanyTransfer::Afterwards;
/// The rows of a table as text, by the table's name.
using Dump = std::map<std::string, std::string>;

std::string textOf(Connection& connection, const std::string& statement)
{
    std::string text;
    Query query{connection, statement};
    query.into(text).next();
    return text;
}

/// All rows of the table that the condition finds, in the order of their texts.
std::string rowsOf(Connection& connection, const std::string& table, const std::string& where)
{
    const auto columns = textOf(
        connection,
        fmt::format("SELECT group_concat(name, ', ') FROM pragma_table_info('{}') WHERE name NOT IN "
                    "('number', 'current_company_id', 'snapshot_key') OR '{}' <> 'companies' AND '{}' <> 'users'",
                    table, table, table));
    return textOf(connection,
                  fmt::format("SELECT group_concat(line, char(10)) FROM (SELECT json_array({}) AS line FROM {} WHERE "
                              "{} ORDER BY line)",
                              columns, table, where));
}

/// Everything that is kept of the company, but for what tells of the transfer itself.
Dump dumpOf(const std::string& file, const std::string& companyID)
{
    Connection connection{file, Connection::Access::readOnly};
    const auto ofCompany = fmt::format("company_id = '{}'", companyID);
    Dump dump;
    for (const auto& table : CompanyRows::tables()) {
        if (!CompanyRows::stays(table))
            dump[table] = rowsOf(connection, table, ofCompany);
    }
    dump["companies"] = rowsOf(connection, "companies", fmt::format("id = '{}'", companyID));
    dump["users"] = rowsOf(connection, "users", fmt::format("id IN (SELECT user_id FROM members WHERE {})", ofCompany));
    dump["audit_records"] =
        rowsOf(connection, "audit_records",
               fmt::format("scope = '{}' AND kind NOT IN ('company-exported', 'company-imported')", companyID));
    return dump;
}

std::string idOfDemo(const std::string& file)
{
    Connection connection{file, Connection::Access::readOnly};
    return textOf(connection, "SELECT id FROM companies WHERE demo_locale = 'en-US'");
}

class Transfer : public testing::Test {
protected:
    [[nodiscard]] std::string exportSample(Afterwards afterwards = Afterwards::open) const
    {
        return exported("sample", afterwards);
    }
    [[nodiscard]] std::string exported(const std::string& companyID, Afterwards afterwards = Afterwards::open) const
    {
        fs::remove(archive);
        return CompanyTransfer::carryOut({.database = source.databaseFile(),
                                          .files = source.files(),
                                          .companyID = companyID,
                                          .archive = archive,
                                          .afterwards = afterwards})
            .value_or("");
    }
    /// What importing the archive comes to, in words.
    [[nodiscard]] std::string importInto(const std::string& database, const std::string& files = {},
                                         const CompanyArrival::Pace& pace = {}) const
    {
        const auto imported = CompanyTransfer::importFrom(archive, database, files, pace);
        return imported ? "imported " + imported->companyID : imported.error();
    }
    /// A database without companies.
    [[nodiscard]] std::string emptyDatabase() const
    {
        auto file = folder.file("other.sqlite");
        EXPECT_TRUE(Database::open(file).has_value());
        return file;
    }
    /// Whatever happens to a company: entries, reversals, receipts, refused ones too.
    void live(std::uint32_t seed)
    {
        RandomCommands commands{seed};
        auto client = source.client();
        std::map<std::string, std::string> tokens;
        for (const auto* member : {"guest", "mira", "rudi", "gone"})
            tokens[member] = source.tokenOf(member);
        for (int number = 0; number < 60; ++number) {
            auto input = commands.inputFor(SampleBooks::books());
            input.idempotencyKey = fmt::format("{}-{}", seed, number);
            const auto& token = tokens[commands.actor()];
            const auto answer = client.send("POST", "/v1/transactions", token, Json::encode(input));
            ASSERT_LT(answer.status, 500) << answer.body;
        }
        EXPECT_EQ(client
                      .send("PUT", "/v1/me/drafts/begun", tokens["rudi"],
                            R"({"entry":{"kind":"expense","date":"","note":"Half","currency":"IDR",)"
                            R"("targetCurrency":"","amount":"1","targetAmount":"","refundReference":"",)"
                            R"("attachments":[],"idempotencyKey":"begun"},"locale":"en-US","writer":"window"})")
                      .status,
                  200);
        EXPECT_EQ(
            client.send("POST", "/v1/attachments", tokens["mira"], SampleReceipts::upload(SampleReceipts::pdf(90'000)))
                .status,
            200);
        keepTemplate(client, tokens["mira"], fmt::format("template-{}", seed));
    }
    /// One with a day for which an entry is recorded and one that is skipped.
    static void keepTemplate(HttpClient& client, const std::string& token, const std::string& key)
    {
        TemplateCreate command;
        command.name = "Office rent";
        command.entry.kind = "expense";
        command.entry.sourceAccountID = "bank";
        command.entry.categoryID = "rent";
        command.entry.currency = "IDR";
        command.recurrence = {.unit = "month", .every = 1, .firstDay = "2026-01-31", .lastDay = {}};
        command.idempotencyKey = key;
        const auto made = client.send("POST", "/v1/templates", token, Json::encode(command));
        ASSERT_EQ(made.status, 200) << made.body;
        const auto id = Json::decode<EntryTemplateList>(made.body).value().templates.back().id;
        auto input = SampleBooks::expense(10);
        input.idempotencyKey = TemplateOccurrence{id, "2026-01-31"}.key();
        EXPECT_EQ(client.send("POST", "/v1/transactions", token, Json::encode(input)).status, 200);
        EXPECT_EQ(client
                      .send("POST", "/v1/templates/" + id + "/days", token,
                            Json::encode(TemplateDay{.day = "2026-02-28", .skipped = true}))
                      .status,
                  200);
    }

    TestService source{[](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::shared; }};
    TemporaryFolder folder;
    std::string archive = folder.file("company.tar");
};

}

TEST_F(Transfer, BringsEverythingOfACompanyAndNothingElse)
{
    for (const std::uint32_t seed : {7U, 8U})
        ASSERT_NO_FATAL_FAILURE(live(seed));
    EXPECT_EQ(source.client().send("POST", "/v1/demo", "", R"({"profile":"owner","locale":"en-US"})").status, 200);
    const auto target = emptyDatabase();
    Dump compared;
    for (const auto& id : {std::string{"sample"}, idOfDemo(source.databaseFile())}) {
        SCOPED_TRACE(id);
        const auto before = dumpOf(source.databaseFile(), id);
        ASSERT_EQ(exported(id), "");
        EXPECT_EQ(importInto(target), "imported " + id);
        for (const auto& [table, rows] : dumpOf(target, id))
            EXPECT_EQ(rows, before.at(table)) << table;
        for (const auto& [table, rows] : before)
            compared[table] += rows;
    }
    for (const auto* table : {"entries", "legs", "balances", "commands", "capital_contributions", "dividend_movements",
                              "attachments", "entry_drafts", "entry_templates", "template_days", "audit_records"})
        EXPECT_FALSE(compared[table].empty()) << table;
    const auto report = Verify::database(target);
    ASSERT_TRUE(report.has_value()) << report.error();
    EXPECT_EQ(report->problems, std::vector<std::string>{});
    EXPECT_EQ(report->companies, 2U);
    EXPECT_EQ(report->receipts, 2U);
    Connection connection{target, Connection::Access::readOnly};
    EXPECT_EQ(textOf(connection, "SELECT group_concat(kind) FROM (SELECT kind FROM audit_records WHERE scope = "
                                 "'sample' ORDER BY number DESC LIMIT 1)"),
              "company-imported");
    EXPECT_EQ(textOf(connection, "SELECT COUNT(*) FROM sessions"), "0");
}

TEST_F(Transfer, KnowsWhatBecomesOfEveryTable)
{
    // A new table of the schema belongs to a company, is copied by itself, or is named here with the reason.
    Connection connection{emptyDatabase()};
    const auto tables = CompanyRows::tables();
    std::string others;
    Query query{connection, "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' ORDER BY "
                            "name"};
    std::string each;
    query.into(each);
    while (query.next()) {
        if (std::ranges::find(tables, each) == tables.end())
            others += each + " ";
    }
    EXPECT_EQ(others, "attempts "          // of this database's own limits
                      "audit_records "     // by their scope
                      "companies "         // by its id
                      "entry_fragments "   // by the company's number
                      "known_places "      // of this database's own limits
                      "mails "             // are sent from where they were written
                      "schema_migrations " // of the database
                      "users ");           // who are members
}

TEST_F(Transfer, LetsPeopleGoOnWhereTheCompanyIsNow)
{
    source.write([](Connection& connection) { foundSample(connection, "moving"); });
    TestService target; // with a company of its own, whose people are others
    const auto post = [](TestService& service, const std::string& key) {
        auto input = SampleBooks::income();
        input.idempotencyKey = key;
        return service.client().send("POST", "/v1/transactions", service.tokenOf("mira", "moving"),
                                     Json::encode(input));
    };
    const auto balance = [](TestService& service) {
        const auto seen = service.client().send("GET", "/v1/snapshot", service.tokenOf("mira", "moving"));
        const auto snapshot = Json::decode<LedgerSnapshot>(seen.body);
        return snapshot ? snapshot->account("bank")->balance("IDR") : 0;
    };
    const auto recorded = post(source, "before the move");
    const auto before = balance(source);
    ASSERT_EQ(exported("moving", Afterwards::closed), "");
    EXPECT_EQ(post(source, "too late").status, 403) << "closed where it was";
    EXPECT_EQ(importInto(target.databaseFile(), target.files()), "imported moving");
    const auto credentials = fmt::format(R"({{"email":"mira@moving.example","password":"{}"}})", TestService::password);
    EXPECT_EQ(target.client().send("POST", "/v1/auth/login", "", credentials).status, 200);
    EXPECT_EQ(post(target, "before the move").body, recorded.body) << "a retry finds what it came to";
    EXPECT_EQ(balance(target), before);
    EXPECT_EQ(post(target, "after the move").status, 200);
    EXPECT_NE(balance(target), before);
    EXPECT_NE(importInto(target.databaseFile(), target.files()).find("is there already"), std::string::npos);
}

TEST_F(Transfer, TakesPeopleThatBothKnowAndRefusesThoseWhoOnlySeemSo)
{
    ASSERT_EQ(exportSample(), "");
    const auto target = emptyDatabase();
    Connection connection{target};
    const auto register_ = [&](const char* id, const char* email) {
        connection.execute("DELETE FROM users");
        connection.execute(fmt::format("INSERT INTO users (id, email, name, locale, created_at) VALUES ('{}', '{}', "
                                       "'Mira', 'en-US', '')",
                                       id, email));
    };
    register_("somebody-else", "mira@sample.example");
    EXPECT_NE(importInto(target).find("mira@sample.example is the address of another person"), std::string::npos);
    register_("mira-of-sample", "new@mira.example");
    EXPECT_NE(importInto(target).find("mira@sample.example has the id of new@mira.example"), std::string::npos);
    EXPECT_EQ(textOf(connection, "SELECT COUNT(*) FROM companies"), "0");
    register_("mira-of-sample", "mira@sample.example");
    EXPECT_EQ(importInto(target), "imported sample");
    EXPECT_EQ(textOf(connection, "SELECT password_hash IS NULL FROM users WHERE id = 'mira-of-sample'"), "1")
        << "her password there is what counts";
}

TEST_F(Transfer, LeavesEverythingAsItWasWhenItIsRefused)
{
    EXPECT_NE(exported("nobody's").find("no company with this id"), std::string::npos);
    EXPECT_FALSE(fs::exists(archive));
    ASSERT_EQ(exportSample(), "");
    const auto target = emptyDatabase();
    EXPECT_NE(CompanyTransfer::carryOut({source.databaseFile(), source.files(), "sample", archive, Afterwards::closed}),
              std::nullopt)
        << "nothing is written over";
    EXPECT_EQ(source.as("mira", "GET", "/v1/snapshot").status, 200) << "so the company is not closed either";
    fs::resize_file(archive, fs::file_size(archive) - 2'000);
    EXPECT_TRUE(importInto(target).starts_with("cannot import")) << "its end is missing";
    EXPECT_NE(importInto(folder.file("missing.sqlite")), "imported sample");
    source.write([](Connection& connection) {
        connection.execute("UPDATE balances SET amount_minor = amount_minor + 1 WHERE account_id = 'bank'");
    });
    EXPECT_NE(exportSample().find("not sound"), std::string::npos) << "unsound books do not travel";
    EXPECT_FALSE(fs::exists(archive));
}

TEST_F(Transfer, LetsOthersWriteBetweenItsTurnsAndShowsTheCompanyToNobodyBeforeItIsWhole)
{
    source.write([](Connection& connection) { foundSample(connection, "moving"); });
    ASSERT_EQ(exported("moving"), "");
    TestService target;
    const auto token = target.tokenOf("mira");
    const auto signIn = [&] {
        const auto body = fmt::format(R"({{"email":"mira@moving.example","password":"{}"}})", TestService::password);
        return target.client().send("POST", "/v1/auth/login", "", body).status;
    };
    constexpr std::size_t rows = 3;
    int turns = 0;
    int posted = 0;
    std::int64_t most = 0;
    std::int64_t before = 0;
    Connection watching{target.databaseFile()};
    const auto count = [&] { // of what has arrived
        std::int64_t all = 0;
        for (const auto& table : CompanyRows::tables())
            all +=
                std::stoll(textOf(watching, fmt::format("SELECT COUNT(*) FROM {} WHERE company_id = 'moving'", table)));
        return all;
    };
    const auto meanwhile = [&] {
        turns += 1;
        const auto now = count();
        most = std::max(most, now - before);
        before = now;
        auto input = SampleBooks::expense(10);
        input.idempotencyKey = std::to_string(turns);
        posted += target.client().send("POST", "/v1/transactions", token, Json::encode(input)).status == 200 ? 1 : 0;
        if (turns % 10 == 0)
            EXPECT_EQ(signIn(), 403) << "she is not let in";
        if (turns % 10 == 5)
            EXPECT_EQ(target.problems(), "") << "what is arriving is not checked";
    };
    EXPECT_EQ(importInto(target.databaseFile(), target.files(), {.rows = rows, .between = meanwhile}),
              "imported moving");
    EXPECT_GE(turns, 10);
    EXPECT_EQ(posted, turns) << "whoever comes between two turns has one";
    EXPECT_LE(most, static_cast<std::int64_t>(rows));
    EXPECT_EQ(signIn(), 200);
    EXPECT_EQ(target.problems(), "");
}

TEST_F(Transfer, RemovesWhatHasArrivedWhenItFailsInTheMiddle)
{
    ASSERT_EQ(exportSample(), "");
    const auto target = emptyDatabase();
    for (const int last : {1, 2, 7, 15}) {
        int turns = 0;
        const auto fail = [&] {
            if (++turns == last)
                throw std::runtime_error("the disk is full");
        };
        EXPECT_NE(importInto(target, {}, {.rows = 3, .between = fail}).find("the disk is full"), std::string::npos);
        EXPECT_GE(turns, last);
        Connection connection{target, Connection::Access::readOnly};
        for (const auto* table : {"companies", "users", "members", "entries", "audit_records", "entry_fragments"})
            EXPECT_EQ(textOf(connection, fmt::format("SELECT COUNT(*) FROM {}", table)), "0") << table;
    }
    EXPECT_EQ(importInto(target), "imported sample");
}

TEST_F(Transfer, MakesWayForTheNextOnceItIsGone)
{
    ASSERT_EQ(exportSample(), "");
    const auto target = emptyDatabase();
    const auto killed = [&] { // as the first import is left by a process that was killed
        int turns = 0;
        const auto end = [&] {
            if (++turns == 12)
                fs::copy_file(target, folder.file("left.sqlite"));
        };
        Connection keeper{target}; // the log is not brought in when the import ends
        EXPECT_EQ(importInto(target, {},
                             {.rows = 3,
                              .between =
                                  [&] {
                                      if (turns + 1 == 12)
                                          keeper.execute("PRAGMA wal_checkpoint(TRUNCATE)");
                                      end();
                                  }}),
                  "imported sample");
        return folder.file("left.sqlite");
    }();
    EXPECT_NE(importInto(killed).find("is being imported by another process"), std::string::npos);
    const auto checked = Verify::database(killed);
    ASSERT_TRUE(checked.has_value());
    EXPECT_EQ(checked->problems, std::vector<std::string>{});
    EXPECT_EQ(checked->companies, 0U);
    {
        Connection connection{killed};
        connection.execute("UPDATE companies SET approval_status = 'arriving somebody 2026-01-01T00:00:00.000Z'");
    }
    EXPECT_EQ(importInto(killed), "imported sample");
    EXPECT_EQ(dumpOf(killed, "sample"), dumpOf(source.databaseFile(), "sample"));
}

TEST_F(Transfer, OpensAClosedCompanyAgainWhenItCannotBePacked)
{
    source.write([](Connection& connection) {
        connection.execute("UPDATE balances SET amount_minor = amount_minor + 1 WHERE account_id = 'bank'");
    });
    EXPECT_NE(exportSample(Afterwards::closed).find("not sound"), std::string::npos);
    EXPECT_EQ(source.as("mira", "GET", "/v1/snapshot").status, 200);
}

TEST_F(Transfer, OpensAClosedCompanyAgainWhenItsExportCannotBeTold)
{
    source.write([](Connection& connection) { // as on a disk that fills up once the archive is made
        connection.execute("CREATE TRIGGER full BEFORE INSERT ON audit_records WHEN NEW.kind = 'company-exported' "
                           "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END");
    });
    for (const auto afterwards : {Afterwards::closed, Afterwards::open}) {
        EXPECT_NE(exportSample(afterwards).find("the disk is full"), std::string::npos);
        EXPECT_FALSE(fs::exists(archive)) << "or it would be taken for one of a company that is closed";
        EXPECT_EQ(source.as("mira", "GET", "/v1/snapshot").status, 200);
    }
    source.write([](Connection& connection) { connection.execute("DROP TRIGGER full"); });
    EXPECT_EQ(exportSample(Afterwards::closed), "");
    EXPECT_EQ(source.as("mira", "GET", "/v1/snapshot").status, 403);
}

TEST_F(Transfer, TakesOneOfTwoImportsThatBeginTogether)
{
    source.write([](Connection& connection) { foundSample(connection, "moving"); });
    const auto archiveOf = [&](const std::string& companyID) {
        EXPECT_EQ(exported(companyID), "");
        auto path = folder.file(companyID + ".tar");
        fs::rename(archive, path);
        return path;
    };
    const auto first = archiveOf("sample");
    for (const auto& second : {first, archiveOf("moving")}) {
        const auto target = folder.file(fs::path{second}.stem().string() + ".sqlite");
        ASSERT_TRUE(Database::open(target).has_value());
        const auto database = Database::open(target);
        // Both are past the look at what is arriving before either writes.
        std::optional<CompanyArrival> late{std::in_place, **database, fs::path{second}.stem().string(),
                                           CompanyArrival::Pace{}};
        std::string refused;
        const auto meanwhile = [&] {
            if (!late)
                return;
            Connection from{source.databaseFile(), Connection::Access::readOnly};
            const Transaction reading{from, Transaction::Mode::reading};
            try {
                late->copy(from, [](Connection&) {});
            } catch (const std::exception& failure) {
                refused = failure.what();
            }
            late.reset();
        };
        const auto imported = CompanyTransfer::importFrom(first, target, {}, {.rows = 3, .between = meanwhile});
        EXPECT_EQ(imported ? imported->companyID : imported.error(), "sample");
        EXPECT_NE(refused.find("is being imported by another process"), std::string::npos) << refused;
        EXPECT_EQ(dumpOf(target, "sample"), dumpOf(source.databaseFile(), "sample"));
    }
}

TEST_F(Transfer, KeepsTheTrailOfACompanyThatComesWhileAnotherImportOfItBegins)
{
    ASSERT_EQ(exportSample(), "");
    const auto target = emptyDatabase();
    const auto database = Database::open(target);
    Connection{target}.execute( // what a removal that was cut off has left: several turns of it
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) INSERT INTO audit_records "
        "(scope, number, at, origin, kind, chain) SELECT 'sample', i, '', '', 'sign-in', '' FROM n");
    std::string told;
    const auto meanwhile = [&] {
        if (std::exchange(told, "begun").empty())
            told = importInto(target);
    };
    const CompanyArrival late{**database, "sample", {.between = meanwhile}};
    EXPECT_EQ(told, "imported sample");
    EXPECT_EQ(dumpOf(target, "sample"), dumpOf(source.databaseFile(), "sample"));
}

}
