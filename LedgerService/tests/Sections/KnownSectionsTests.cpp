#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

/// A database with a section, renamed so often that it is worth knowing.
class KnownSection : public testing::Test {
protected:
    void SetUp() override
    {
        write([](Connection& connection) {
            foundSample(connection, "sample");
            foundSample(connection, "other");
            for (int revision = 1; revision <= 50; ++revision)
                append(connection, revision);
        });
    }

    void write(const std::function<void(Connection&)>& work)
    {
        Transaction transaction{connection, Transaction::Mode::writing};
        work(connection);
        transaction.commit();
    }

    static void append(Connection& connection, int revision, const std::string& companyID = "sample")
    {
        DividendRepository::append(
            connection, companyID,
            {.revision = revision,
             .action = std::string{DividendAction::setParticipant},
             .date = "2026-03-10",
             .note = {},
             .memberID = "mira",
             .createdAt = "2026-03-10T09:30:00.000Z",
             .made = std::vector<DividendParticipant>{
                 {.id = "p", .name = fmt::format("Ann {}", revision), .memberID = {}, .ratioBps = 10'000}}});
    }

    std::string committedName(const std::string& companyID = "sample")
    {
        const Transaction transaction{connection, Transaction::Mode::reading};
        return nameIn(*sections.dividends.committed(connection, companyID));
    }
    static std::string nameIn(const DividendState& state)
    {
        return state.participants.empty() ? "nobody" : state.participants.front().name;
    }

    TemporaryFolder folder;
    std::string file = folder.file("books.sqlite");
    std::unique_ptr<Database> database = *Database::open(file);
    Connection connection{file};
    KnownSections sections;
};

}

TEST_F(KnownSection, IsReadOnceAndThenOnlyWhatCameSince)
{
    EXPECT_EQ(committedName(), "Ann 50");
    connection.execute("UPDATE dividend_participants SET name = 'read again', id = 'q' WHERE revision < 50");
    write([](Connection& connection) { append(connection, 51); });
    const Transaction transaction{connection, Transaction::Mode::reading};
    const auto state = sections.dividends.committed(connection, "sample");
    EXPECT_EQ(nameIn(*state), "Ann 51");
    EXPECT_EQ(state->participants.size(), 1U);
    EXPECT_EQ(state->revision, 51);
}

TEST_F(KnownSection, ForgetsWhatWasUndone)
{
    EXPECT_EQ(committedName(), "Ann 50");
    {
        Transaction undone{connection, Transaction::Mode::writing};
        append(connection, 51);
        append(connection, 52);
        EXPECT_EQ(nameIn(*sections.dividends.underWay(connection, "sample")), "Ann 52")
            << "its own transaction sees it";
    }
    EXPECT_EQ(committedName(), "Ann 50");
    write([](Connection& connection) { append(connection, 51); });
    EXPECT_EQ(committedName(), "Ann 51");
}

TEST_F(KnownSection, IsThatOfTheTransactionWhichAsks)
{
    Connection early{file};
    const Transaction before{early, Transaction::Mode::reading};
    EXPECT_EQ(DividendRepository::state(early, "sample").revision, 50); // its view begins
    write([](Connection& connection) { append(connection, 51); });
    EXPECT_EQ(committedName(), "Ann 51");
    EXPECT_EQ(nameIn(*sections.dividends.committed(early, "sample")), "Ann 50") << "known is more than it may see";
    EXPECT_EQ(committedName(), "Ann 51");
}

TEST_F(KnownSection, IsNotThatOfAnotherCompanyUnderItsId)
{
    EXPECT_EQ(committedName(), "Ann 50");
    write([](Connection& connection) {
        connection.execute("DELETE FROM dividend_participants");
        connection.execute("DELETE FROM dividend_changes");
        append(connection, 1);
    });
    EXPECT_EQ(committedName(), "Ann 1") << "shorter than what was known";
    write([](Connection& connection) {
        for (int revision = 2; revision <= 60; ++revision)
            append(connection, revision);
        connection.execute("UPDATE dividend_changes SET note = 'another' WHERE revision = 50");
    });
    EXPECT_EQ(committedName(), "Ann 60") << "longer";
    EXPECT_EQ(committedName("other"), "nobody");
}

TEST_F(KnownSection, GivesWayToThoseUsedLaterWhenThereIsTooMuch)
{
    write([](Connection& connection) {
        for (int revision = 1; revision <= 50; ++revision)
            append(connection, revision, "other");
    });
    KnownSections few{60};
    const auto ask = [&](const std::string& companyID) {
        const Transaction transaction{connection, Transaction::Mode::reading};
        return few.dividends.committed(connection, companyID);
    };
    const auto first = ask("sample");
    EXPECT_EQ(ask("sample"), first) << "the very same";
    EXPECT_EQ(nameIn(*ask("other")), "Ann 50");
    EXPECT_NE(ask("sample"), first) << "read anew";
    EXPECT_EQ(nameIn(*ask("sample")), "Ann 50");
}

}
