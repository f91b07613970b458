#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <thread>

#include <fmt/core.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Schema/MigrationSteps.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Schema/NewestSchema.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/Eventually.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

/// Books as the first schema kept them: an income, its reversal, and two receipts, one of them loose.
constexpr const char* rowsOfAnEarlierProgram[] = {
    "CREATE TABLE schema_migrations (version INTEGER PRIMARY KEY, applied_at TEXT NOT NULL)",
    "INSERT INTO schema_migrations VALUES (1, '')",
    "INSERT INTO companies VALUES ('c', 'C', '[]', '[]', '2026-01-01T00:00:00.000Z', 'approved', NULL, NULL, NULL, 2, "
    "0, 0, 0, NULL, NULL, NULL, NULL)",
    "INSERT INTO users VALUES ('u', 'm@c.example', '', '', NULL)",
    R"(INSERT INTO members VALUES ('c', 'm', 'u', 0, 'M', 'owner', '[]', 'en-US', 1, '["viewCompany"]', '[]', NULL,
       NULL, NULL, ''))",
    R"(INSERT INTO accounts VALUES ('c', 'bank', 0, 'Bank', '["IDR"]', NULL, NULL, NULL, NULL, 0))",
    "INSERT INTO balances VALUES ('c', 'bank', 'IDR', 0)",
    "INSERT INTO categories VALUES ('c', 'sales', 0, 'income', '{}', 'tag', 0, NULL, NULL, NULL, NULL)",
    "INSERT INTO entries VALUES ('c', 1, 'sale', 'income', '2026-01-02', 'n', '', 'm', 'sales', NULL, NULL, NULL, "
    "NULL, NULL, NULL, NULL, NULL)",
    "INSERT INTO entries VALUES ('c', 2, 'undone', 'reversal', '2026-01-03', 'n', '', 'm', NULL, 'sale', NULL, NULL, "
    "NULL, NULL, NULL, NULL, NULL)",
    "INSERT INTO legs VALUES ('c', 1, 0, 'bank', 'IDR', 500, 0)",
    "INSERT INTO legs VALUES ('c', 2, 0, 'bank', 'IDR', -500, 0)",
    "INSERT INTO attachments VALUES ('c', 'linked', 'm', 'sale', 0, 'a.pdf', 'application/pdf', 1, '')",
    "INSERT INTO attachments VALUES ('c', 'loose', 'm', NULL, 0, 'b.pdf', 'application/pdf', 1, '')",
};

/// What tells the log of a file from the one that it was before it began anew.
std::string markOfLog(const std::string& file)
{
    constexpr std::streamoff countAndSalt = 12;
    std::string mark(12, '\0');
    std::ifstream log{file + "-wal", std::ios::binary};
    log.seekg(countAndSalt);
    log.read(mark.data(), static_cast<std::streamsize>(mark.size()));
    return mark;
}

}

TEST(Identifiers, OfOneTimeStandTogetherAndNeverMeet)
{
    constexpr std::size_t count = 1'000;
    std::set<std::string> all;
    for (std::size_t each = 0; each < count; ++each)
        all.insert(Random::identifier());
    EXPECT_EQ(all.size(), count);
    constexpr std::size_t ofSomeHours = 4; // characters
    EXPECT_EQ(all.begin()->substr(0, ofSomeHours), all.rbegin()->substr(0, ofSomeHours));
}

TEST(Migrations, RefuseADatabaseThatANewerProgramHasWritten)
{
    const TemporaryFolder folder;
    const auto file = folder.file("books.sqlite");
    {
        const auto database = Database::open(file);
        ASSERT_TRUE(database.has_value()) << database.error();
        const auto loan = (*database)->borrow();
        EXPECT_EQ(Migrations::apply(*loan), std::nullopt) << "a second time changes nothing";
        Query{*loan, "INSERT INTO schema_migrations (version, applied_at) VALUES (:version, '')"}
            .bind("version", Migrations::newest() + 1)
            .run();
    }
    const auto refused = Database::open(file);
    ASSERT_FALSE(refused.has_value());
    EXPECT_NE(refused.error().find("newer program"), std::string::npos) << refused.error();
}

TEST(Migrations, SayWhyAFileIsNoDatabase)
{
    const TemporaryFolder folder;
    std::ofstream{folder.file("letter.txt")} << std::string(4096, 'a');
    for (const auto& file : {folder.file("letter.txt"), folder.file("no/such/folder/books.sqlite"), std::string{}}) {
        const auto refused = Database::open(file);
        ASSERT_FALSE(refused.has_value()) << file;
        EXPECT_FALSE(refused.error().empty());
    }
    const auto others = folder.file("others.sqlite");
    Connection{others}.execute("CREATE TABLE letters (body TEXT)");
    const auto refused = Database::open(others);
    ASSERT_FALSE(refused.has_value());
    EXPECT_NE(refused.error().find("another program"), std::string::npos) << refused.error();
}

TEST(Database, TakesNoEmptyFileForBooks)
{
    const TemporaryFolder folder;
    const auto cutShort = folder.file("backup.sqlite");
    std::ofstream{cutShort}.flush();
    EXPECT_FALSE(Database::openExisting(cutShort).has_value());
    EXPECT_EQ(std::filesystem::file_size(cutShort), 0U);
    EXPECT_FALSE(Database::openExisting(folder.file("missing.sqlite")).has_value());
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing.sqlite")));
}

TEST(Database, OpensWhileAnotherWritesAndTellsThatItIsHeld)
{
    TestService service;
    service.write([&](Connection&) {
        const auto database = Database::openExisting(service.databaseFile());
        ASSERT_TRUE(database.has_value()) << database.error();
        const auto loan = (*database)->borrow();
        (*loan).execute("PRAGMA busy_timeout = 0");
        try {
            const Transaction transaction{*loan, Transaction::Mode::writing};
            ADD_FAILURE() << "two wrote at the same time";
        } catch (const std::exception& failure) {
            EXPECT_TRUE(DatabaseFailure::isBusy(failure)) << failure.what();
        }
    });
}

TEST(Database, BeginsItsLogAnewWhileWritersTakeTurnsWithoutEnd)
{
    const TemporaryFolder folder;
    const auto file = folder.file("books.sqlite");
    const auto database = Database::open(file);
    ASSERT_TRUE(database.has_value()) << database.error();
    const auto loan = (*database)->borrow();
    (*loan).execute("CREATE TABLE texts (id INTEGER PRIMARY KEY, text TEXT NOT NULL)");
    const auto write = [&](int id, std::size_t bytes) {
        const auto turn = (*database)->queueToWrite();
        Transaction transaction{*loan, Transaction::Mode::writing};
        Query{*loan, "INSERT OR REPLACE INTO texts VALUES (:id, :text)"}
            .bind("id", id)
            .bind("text", std::string(bytes, static_cast<char>('a' + id)))
            .run();
        transaction.commit();
    };
    constexpr std::size_t page = 4096;
    constexpr int pagesOfRound = 2'000; // more than those from which on there is work
    for (int round = 0; round < 3; ++round) {
        const auto before = markOfLog(file);
        for (int each = 0; each < pagesOfRound / 20; ++each)
            write(each % 10, 20 * page);
        EXPECT_TRUE(eventually([&] { // so seldom that the log stays short however long it takes
            std::this_thread::sleep_for(std::chrono::milliseconds{100});
            write(0, 1);
            return markOfLog(file) != before;
        })) << "round "
            << round;
    }
    EXPECT_LT(std::filesystem::file_size(file + "-wal"), std::uintmax_t{16} << 20)
        << "where writers are held up for it";
    int count = 0;
    Query{*loan, "SELECT COUNT(*) FROM texts WHERE length(text) = 81920"}.into(count).next();
    EXPECT_EQ(count, 9);
}

TEST(Database, KeepsItsLogShortWhileReadersOverlapWithoutEnd)
{
    TestService service;
    const auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value()) << database.error();
    const auto read = [&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const auto loan = (*database)->borrow();
            const Transaction transaction{*loan, Transaction::Mode::reading};
            int count = 0;
            Query{*loan, "SELECT COUNT(*) FROM entries"}.into(count).next();
            std::this_thread::sleep_for(std::chrono::milliseconds{20});
        }
    };
    std::vector<std::jthread> readers;
    for (int each = 0; each < 4; ++each) {
        readers.emplace_back(read);
        std::this_thread::sleep_for(std::chrono::milliseconds{5}); // so that there is a reader at every moment
    }
    for (int each = 0; each < 60; ++each) {
        const auto loan = (*database)->borrow();
        const auto turn = (*database)->queueToWrite();
        Transaction transaction{*loan, Transaction::Mode::writing};
        Query{*loan, "UPDATE companies SET name = :name"}
            .bind("name", std::string(1 << 20, static_cast<char>('a' + each % 26)))
            .run();
        transaction.commit();
    }
    // Without the moments that are made the log has all 60 MiB; one of them may be missed on a busy machine.
    EXPECT_LT(std::filesystem::file_size(service.databaseFile() + "-wal"), std::uintmax_t{40} << 20);
}

TEST(Storage, KeepsEveryFieldOfAnEntry)
{
    TestService service;
    LedgerTransaction entry;
    entry.id = "full";
    entry.kind = "dividend";
    entry.date = "2026-02-03";
    entry.note = "quote ' and \" and \xE4\xBD\xA0\xE5\xA5\xBD";
    entry.createdAt = "2026-02-03T04:05:06.789Z";
    entry.memberID = "mira";
    entry.categoryID = "sales";
    entry.legs = {{"bank", "USD", -9'000'000'000'000}, {"vault", "IDR", 9'000'000'000'000}};
    entry.originalTransactionID = "sale";
    entry.externalReference = "";
    entry.transferPurpose = "return";
    entry.distributionKind = "payment";
    entry.participantName = "Dewi";
    entry.dividendMovementID = "m1";
    entry.capitalContributionID = "c1";
    std::optional<LedgerTransaction> alone;
    std::vector<LedgerTransaction> all;
    service.write([&](Connection& connection) {
        EntryRepository::append(connection, "sample", entry);
        alone = EntryRepository::find(connection, "sample", "full");
        all = EntryRepository::all(connection, "sample");
    });
    EXPECT_EQ(alone, entry);
    EXPECT_EQ(all.size(), 5u);
    EXPECT_EQ(all.back(), entry);
}

TEST(Storage, RollsBackWhatIsNotCommitted)
{
    TestService service;
    const auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value());
    {
        const auto loan = (*database)->borrow();
        const Transaction transaction{*loan, Transaction::Mode::writing};
        Query{*loan, "UPDATE balances SET amount_minor = 1"}.run();
    }
    EXPECT_EQ(service.problems(), "");
}

TEST(Storage, SaysWhatFailedWithoutWhatWasWritten)
{
    TestService service;
    std::string words;
    service.write([&](Connection& connection) {
        Savepoint part{connection};
        try {
            Query{connection, "UPDATE accounts SET name = NULL, purpose = :secret"}.bind("secret", "Dewi's pay").run();
        } catch (const std::exception& failure) {
            words = DatabaseFailure::words(failure);
            EXPECT_FALSE(DatabaseFailure::isBusy(failure));
        }
        part.undo();
    });
    EXPECT_NE(words.find("name"), std::string::npos) << words;
    EXPECT_EQ(words.find("Dewi"), std::string::npos) << words;
    EXPECT_EQ(service.as("mira", "GET", "/v1/snapshot").status, 200);
}

namespace {

void writeAnEarlierProgramsBooks(const std::string& file)
{
    Connection connection{file};
    for (const auto* statement : MigrationSteps::all().front().statements)
        connection.execute(statement);
    for (const auto* row : rowsOfAnEarlierProgram)
        connection.execute(row);
}

}

TEST(Migrations, CallPeopleAsInTheCompanyThatTheyJoinedFirst)
{
    const TemporaryFolder folder;
    const auto file = folder.file("earlier.sqlite");
    writeAnEarlierProgramsBooks(file);
    Connection{file}.execute("INSERT INTO users VALUES ('alone', 'lan@d.example', '$argon2id$', '2026', NULL)");
    const auto database = Database::openExisting(file);
    ASSERT_TRUE(database.has_value()) << database.error();
    const auto loan = (*database)->borrow();
    const auto member = UserRepository::findByEmail(*loan, "m@c.example");
    ASSERT_TRUE(member.has_value());
    EXPECT_EQ(member->name, "M");
    EXPECT_EQ(member->locale, "en-US");
    EXPECT_EQ(member->passwordHash, std::nullopt) << "an empty one was none";
    EXPECT_EQ(member->activatedAt, std::nullopt);
    const auto alone = UserRepository::find(*loan, "alone");
    ASSERT_TRUE(alone.has_value());
    EXPECT_EQ(alone->activatedAt, "2026");
    EXPECT_TRUE(alone->canSignIn());
}

TEST(Migrations, MakeTheFragmentsOfEntriesThatAnEarlierProgramRecorded)
{
    const TemporaryFolder folder;
    const auto file = folder.file("earlier.sqlite");
    writeAnEarlierProgramsBooks(file);
    const auto database = Database::openExisting(file);
    ASSERT_TRUE(database.has_value()) << database.error();
    const auto loan = (*database)->borrow();
    EXPECT_EQ(Verify::run(*loan, file).problems, std::vector<std::string>{});
    auto answer = SnapshotReader::answer(**database, "c", "m", {});
    ASSERT_TRUE(answer.has_value());
    auto text = answer->text;
    for (auto block = answer->more(); !block.empty(); block = answer->more())
        text += block;
    const auto snapshot = Json::decode<LedgerSnapshot>(text);
    ASSERT_TRUE(snapshot.has_value());
    ASSERT_EQ(snapshot->transactions.size(), 2u);
    EXPECT_EQ(snapshot->transactions[0].reversedBy, "undone");
    EXPECT_EQ(snapshot->transactions[0].attachmentIDs, std::vector<std::string>{"linked"});
    EXPECT_EQ(snapshot->transactions[1].reversalOf, "sale");
    EXPECT_EQ(snapshot->attachments.size(), 2u);
}

namespace {

/// Brings a file that holds nothing but an earlier program's rows to this version, as the programs between did.
void takeSteps(Connection& connection, int from, int to)
{
    connection.execute("PRAGMA foreign_keys = OFF");
    for (int version = from; version <= to; ++version) {
        const auto& step = MigrationSteps::all()[static_cast<std::size_t>(version) - 1];
        for (const auto* statement : step.statements)
            connection.execute(statement);
        if (step.then)
            step.then(connection);
        connection.execute(fmt::format("INSERT INTO schema_migrations VALUES ({}, '')", version));
    }
}

/// All rows of a table, in the order of these columns.
std::vector<std::string> rowsOf(Connection& connection, std::string_view table, std::string_view order)
{
    const auto found = std::ranges::find(NewestSchema::tables(), table, &NewestSchema::Table::name);
    std::vector<std::string> rows;
    std::string row;
    Query query{connection, fmt::format("SELECT json_array({}) FROM {} ORDER BY {}", fmt::join(found->columns, ", "),
                                        table, order)};
    query.into(row);
    while (query.next())
        rows.push_back(row);
    return rows;
}

}

TEST(Migrations, KeepEveryRowOfTheTablesThatAreLaidOutByTheirKeys)
{
    const TemporaryFolder folder;
    const auto file = folder.file("earlier.sqlite");
    writeAnEarlierProgramsBooks(file);
    std::map<std::string, std::vector<std::string>> before;
    const std::pair<const char*, const char*> tables[] = {
        {"entries", "sequence"}, {"legs", "sequence, position"}, {"commands", "idempotency_key"}};
    {
        Connection connection{file};
        takeSteps(connection, 2, 14);
        for (const auto* key : {"k9", "k1", "k5"}) // in no order
            connection.execute(
                fmt::format("INSERT INTO commands VALUES ('c', 'm', '{0}', 'old {0}', '', '2026')", key));
        for (const auto& [table, order] : tables)
            before[table] = rowsOf(connection, table, order);
        ASSERT_EQ(before["commands"].size(), 3u);
    }
    const auto database = Database::openExisting(file);
    ASSERT_TRUE(database.has_value()) << database.error();
    const auto loan = (*database)->borrow();
    for (const auto& [table, order] : tables)
        EXPECT_EQ(rowsOf(*loan, table, order), before[table]) << table;
    EXPECT_EQ(Verify::run(*loan, file).problems, std::vector<std::string>{});
    EXPECT_ANY_THROW((*loan).execute("INSERT INTO entries SELECT company_id, 3, 'again', kind, date, note, created_at, "
                                     "member_id, category_id, reversal_of, NULL, NULL, NULL, NULL, NULL, NULL, NULL "
                                     "FROM entries WHERE id = 'undone'"))
        << "an entry is undone once";
    EXPECT_TRUE(EntryRepository::touches(*loan, "c", "bank"));
    EXPECT_FALSE(EntryRepository::touches(*loan, "c", "ban"));
}

struct Damage {
    std::string_view statement;
    std::string_view word; // of what is said about it
};

TEST(Verify, FindsSnapshotsThatWouldShowOtherThanWhatIsRecorded)
{
    const Damage damages[] = {
        {"UPDATE entry_fragments SET text = replace(text, '80000', '90000')", "entry sale"},
        {"UPDATE entry_fragments SET account_set = account_set % 2 + 1", "accounts that it touches"},
        {"DELETE FROM entry_fragments", "entry sale"},
        {"UPDATE account_sets SET entry_count = entry_count + 1", "count of entries"},
        {"UPDATE attachments SET account_set = 9 WHERE id = 'linked'", "receipt linked"},
        {"INSERT INTO entry_fragments SELECT key - 1, account_set, text FROM entry_fragments ORDER BY key DESC LIMIT 1",
         "of no entry"},
    };
    for (const auto& damage : damages) {
        TestService service;
        service.write([&](Connection& connection) { connection.execute(std::string{damage.statement}); });
        EXPECT_NE(service.problems().find(damage.word), std::string::npos)
            << damage.statement << ": " << service.problems();
    }
}

TEST(Verify, FindsABalanceThatItsLegsDoNotExplain)
{
    TestService service;
    ASSERT_EQ(service.problems(), "");
    service.write([](Connection& connection) {
        connection.execute("UPDATE balances SET amount_minor = amount_minor + 1 WHERE account_id = 'bank' AND "
                           "currency = 'USD'");
    });
    const auto problems = service.problems();
    EXPECT_NE(problems.find("company sample"), std::string::npos);
    EXPECT_NE(problems.find("bank"), std::string::npos) << problems;
}

}
