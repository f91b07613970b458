#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

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
    std::vector<LedgerTransaction> onVault;
    service.write([&](Connection& connection) {
        EntryRepository::append(connection, "sample", entry);
        alone = EntryRepository::find(connection, "sample", "full");
        all = EntryRepository::all(connection, "sample");
        const std::vector<std::string> accounts{"hidden", "vault"};
        onVault = EntryRepository::touching(connection, "sample", accounts);
    });
    EXPECT_EQ(alone, entry);
    EXPECT_EQ(all.size(), 5u);
    EXPECT_EQ(all.back(), entry);
    EXPECT_EQ(onVault, std::vector{entry}) << "whole, with the leg on the account that was not asked for";
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
        try {
            Query{connection, "UPDATE accounts SET name = NULL, purpose = :secret"}.bind("secret", "Dewi's pay").run();
        } catch (const std::exception& failure) {
            words = DatabaseFailure::words(failure);
            EXPECT_FALSE(DatabaseFailure::isBusy(failure));
        }
    });
    EXPECT_NE(words.find("NOT NULL"), std::string::npos) << words;
    EXPECT_EQ(words.find("Dewi"), std::string::npos) << words;
    EXPECT_EQ(service.as("mira", "GET", "/v1/snapshot").status, 200);
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
