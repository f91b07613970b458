#include <array>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleDatabase.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr std::int64_t funds = 80'000;

/// The sample company in a database that several processes serve; its books have no start date, so that entries of the
/// real today fit. Rudi's float has some funds and takes no expense beyond them.
class SharedBooks {
public:
    explicit SharedBooks(TestDatabase::Isolation isolation) : database(folder, isolation)
    {
        makeSampleDatabase(database.name(), [this](Connection& connection) {
            connection.execute("UPDATE companies SET bookkeeping_start_date = NULL");
            const auto now = std::chrono::system_clock::now();
            for (const auto& [member, token] : {std::pair{"mira", mira}, {"rudi", rudi}})
                SessionRepository::insert(connection, Token::hash(token), {"sample", member}, LedgerDay::stamp(now),
                                          LedgerDay::stamp(now + std::chrono::hours{1}));
        });
    }

    [[nodiscard]] std::unique_ptr<ServiceProcess> serve() const
    {
        return std::make_unique<ServiceProcess>(TALLYFOLD_SERVICE_PROGRAM, database.name(),
                                                std::vector<std::string>{"--files", database.files(), "--demo", "off"});
    }

    [[nodiscard]] HttpAnswer fund(HttpClient& client) const
    {
        return post(client, mira, "funding", SampleBooks::funding(funds));
    }

    [[nodiscard]] HttpAnswer spend(HttpClient& client, const std::string& key, std::int64_t amountMinor) const
    {
        auto input = SampleBooks::expense(amountMinor);
        input.sourceAccountID = "float";
        return post(client, rudi, key, std::move(input));
    }

    TemporaryFolder folder;
    TestDatabase database;
    std::string mira = Token::issue();
    std::string rudi = Token::issue();

private:
    static HttpAnswer post(HttpClient& client, const std::string& token, const std::string& key, TransactionInput input)
    {
        input.date = LedgerDay::localGregorian().day(std::chrono::system_clock::now());
        input.idempotencyKey = key;
        return client.send("POST", "/v1/transactions", token, Json::encode(input), "Prefer: return=minimal\r\n");
    }
};

/// How many answers of each kind came, by their status and code.
class Answers {
public:
    void add(const HttpAnswer& answer)
    {
        const std::lock_guard guard{m_guard};
        ++m_counts[fmt::format("{} {}", answer.status, answer.code())];
    }
    [[nodiscard]] const std::map<std::string, int>& counts() const { return m_counts; }

private:
    std::mutex m_guard;
    std::map<std::string, int> m_counts;
};

}

namespace {

constexpr int writers = 20;

struct Load {
    int posts;           // of each writer
    std::int64_t amount; // of each expense
    int fitting;         // how many of all the funds are enough for
};

/// Has all writers post at once, at both processes in turn; some posts are sent again, to the other one.
void postAll(const SharedBooks& books, const std::array<std::uint16_t, 2>& ports, const Load& load, Answers& answers)
{
    std::vector<std::jthread> threads;
    for (std::size_t writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            HttpClient client{ports.at(writer % 2)};
            HttpClient other{ports.at((writer + 1) % 2)};
            for (int at = 0; at < load.posts; ++at) {
                const auto key = fmt::format("{}-{}", writer, at);
                const auto answer = books.spend(client, key, load.amount);
                answers.add(answer);
                if (at % 10 == 0)
                    EXPECT_EQ(books.spend(other, key, load.amount).status, answer.status) << "of the other process";
            }
        });
}

void postAtOnce(TestDatabase::Isolation isolation, const Load& load)
{
    const SharedBooks books{isolation};
    const std::array processes{books.serve(), books.serve()};
    HttpClient first{processes[0]->port()};
    ASSERT_EQ(books.fund(first).status, 200);
    Answers answers;
    postAll(books, {processes[0]->port(), processes[1]->port()}, load, answers);
    EXPECT_EQ(answers.counts(),
              (std::map<std::string, int>{{"200 ", load.fitting},
                                          {"409 insufficient_funds", writers * load.posts - load.fitting}}));
    const auto opened = Database::openExisting(books.database.name());
    ASSERT_TRUE(opened.has_value()) << opened.error();
    const auto loan = (*opened)->borrow();
    EXPECT_EQ(EntryRepository::all(*loan, "sample").size(), 5U + static_cast<unsigned>(load.fitting));
    EXPECT_EQ(AccountRepository::find(*loan, "sample", "float")->balance("IDR"), funds - load.fitting * load.amount);
    EXPECT_EQ(Verify::run(*loan, books.database.files()).problems, std::vector<std::string>{});
}

}

TEST(SharedDatabase, TakesAThousandPostsAtOnceFromTwoProcessesAndNoneTwiceOrOverTheLimit)
{
    postAtOnce(TestDatabase::Isolation::asItIs, {.posts = 50, .amount = 120, .fitting = 666});
}

TEST(SharedDatabase, TakesThemInTheStrictestIsolationToo)
{
    postAtOnce(TestDatabase::Isolation::strictest, {.posts = 10, .amount = 500, .fitting = 160});
}

}
