#include <functional>
#include <list>
#include <thread>

#include <gtest/gtest.h>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/Dispatch/Dispatcher.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/TurnQueue.h"
#include "LedgerService/testing/Eventually.h"
#include "LedgerService/testing/OtherWriter.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

using namespace std::chrono_literals;

/// Commands that are carried out together, by a second service on the database of the first.
class CommandGroup : public testing::Test {
protected:
    /// An expense by the holder of the token.
    Command& expense(const std::string& token, const std::string& key, std::int64_t amountMinor = 10)
    {
        auto input = SampleBooks::expense(amountMinor);
        input.idempotencyKey = key;
        auto& command = add(token, Json::encode(input));
        const auto refused = dispatcher.prepare(command);
        EXPECT_FALSE(refused.has_value()) << refused->body;
        return command;
    }

    /// A command of mira's that does this with the database.
    Command& doing(const std::function<void(Connection&)>& work)
    {
        auto& command = add(mira, "");
        command.work = [work](const MemberCall& call) -> Outcome {
            work(call.connection);
            return okReply();
        };
        return command;
    }

    void carryOut()
    {
        auto next = commands.begin();
        dispatcher.carryOut(*next, [&] { return ++next == commands.end() ? nullptr : &*next; });
    }

    static int statusOf(const Command& command)
    {
        return command.outcome ? std::get<Reply>(*command.outcome).status : command.outcome.error().status;
    }

    [[nodiscard]] std::vector<int> statuses() const
    {
        std::vector<int> all;
        for (const auto& command : commands)
            all.push_back(statusOf(command));
        return all;
    }

    /// What the expenses have taken from the account.
    [[nodiscard]] std::int64_t spent()
    {
        return 1'000'000 - service.snapshotOf("mira").account("bank")->balance("IDR");
    }

    Command& add(const std::string& token, const std::string& body)
    {
        Request request;
        request.method = "POST";
        request.path = "/v1/transactions";
        request.token = token;
        request.body = body;
        request.arrived = std::chrono::steady_clock::now();
        return commands.emplace_back(
            Command{RouteTable{allRoutes()}.match(request.method, request.path), std::move(request)});
    }

    TestService service;
    std::string mira = service.tokenOf("mira");
    std::unique_ptr<Database> database = *Database::open(service.databaseFile());
    ReceiptFolder receipts{service.files()};
    Postbox postbox{*database, service.clock(), {}, nullptr}; // sends nothing
    Dispatcher dispatcher{
        {.database = *database, .receipts = receipts, .postbox = postbox, .clock = service.clock(), .policy = {}}};
    std::list<Command> commands;
};

}

TEST_F(CommandGroup, UndoesTheOneThatFailsAndKeepsTheOthers)
{
    expense(mira, "first");
    doing([](Connection& connection) {
        connection.execute("UPDATE balances SET amount_minor = 7");
        throw std::runtime_error("poisoned");
    });
    expense(mira, "first", 11); // the key of another command
    expense(mira, "first");     // sent again
    expense(mira, "second");
    carryOut();
    EXPECT_EQ(statuses(), (std::vector{200, 500, 409, 200, 200}));
    const auto& again = *std::next(commands.begin(), 3);
    EXPECT_EQ(std::get<Reply>(*again.outcome).body, std::get<Reply>(*commands.front().outcome).body);
    EXPECT_EQ(spent(), 20);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(CommandGroup, LeavesNothingOfThoseThatFailBeforeTheFirstThatIsKept)
{
    for (int each = 0; each < 2; ++each)
        doing([](Connection& connection) {
            connection.execute("UPDATE balances SET amount_minor = 7");
            connection.execute("UPDATE nothing SET amount_minor = 7"); // a server goes on with nothing after this
        });
    expense(mira, "kept");
    doing([](Connection& connection) {
        connection.execute("UPDATE balances SET amount_minor = 8");
        throw std::runtime_error("poisoned");
    });
    carryOut();
    EXPECT_EQ(statuses(), (std::vector{500, 500, 200, 500}));
    EXPECT_EQ(spent(), 10);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(CommandGroup, ConfirmsNothingWhenItCannotBeMadeDurable)
{
    expense(mira, "before");
    doing([](Connection& connection) { // found wrong by the commit
        connection.execute("PRAGMA defer_foreign_keys = ON");
        connection.execute("INSERT INTO balances VALUES ('sample', 'nowhere', 'IDR', 1)");
    });
    expense(mira, "after");
    carryOut();
    EXPECT_EQ(statuses(), (std::vector{500, 500, 500}));
    EXPECT_EQ(spent(), 0);
    commands.clear();
    expense(mira, "before");
    expense(mira, "after");
    carryOut();
    EXPECT_EQ(statuses(), (std::vector{200, 200})) << "their keys were not taken";
    EXPECT_EQ(spent(), 20);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(CommandGroup, EndsWhenTheDatabaseGivesTheTransactionUp)
{
    expense(mira, "before");
    doing([](Connection& connection) {
        connection.execute("ROLLBACK"); // as a full disk does
        throw std::runtime_error("the disk is full");
    });
    expense(mira, "after");
    carryOut();
    EXPECT_EQ(statusOf(commands.front()), 500);
    EXPECT_EQ(statusOf(*std::next(commands.begin())), 500);
    EXPECT_EQ(spent(), 0) << "neither kept by itself nor outside of a transaction";
    EXPECT_EQ(service.problems(), "");
}

TEST_F(CommandGroup, SaysThatTheDiskIsFull)
{
    expense(mira, "before");
    doing([](Connection& connection) {
        connection.execute("PRAGMA max_page_count = 1"); // no more than it has
        connection.execute("UPDATE companies SET name = hex(zeroblob(1000000))");
    });
    carryOut();
    EXPECT_EQ(statusOf(commands.back()), 507);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(CommandGroup, HeedsRightsThatEndInItsMiddle)
{
    const auto rudi = service.tokenOf("rudi");
    expense(mira, "before");
    doing([](Connection& connection) {
        connection.execute("UPDATE sessions SET revoked_at = '2026-03-10T00:00:00.000Z' WHERE member_id = 'rudi'");
    });
    expense(rudi, "ended");
    doing([](Connection& connection) { connection.execute("UPDATE members SET active = 0 WHERE id = 'mira'"); });
    expense(mira, "deactivated");
    carryOut();
    EXPECT_EQ(statuses(), (std::vector{200, 200, 401, 200, 403}));
}

TEST_F(CommandGroup, AsksTheDatabaseWhetherATokenThatItKnowsIsStillGood)
{
    auto& known = expense(mira, "known");
    ASSERT_TRUE(dispatcher.preparesAtOnce(known));
    service.write([](Connection& connection) { // another process
        connection.execute("UPDATE members SET account_grants = '[]' WHERE id = 'mira'");
    });
    carryOut();
    EXPECT_EQ(statuses(), std::vector{404}) << "mira sees no account any more";
    commands.clear();
    service.write([](Connection& connection) { connection.execute("DELETE FROM sessions"); });
    add(mira, Json::encode(SampleBooks::expense(10)));
    EXPECT_FALSE(dispatcher.prepare(commands.front()).has_value()) << "the writer's question, not asked twice";
    carryOut();
    EXPECT_EQ(statuses(), std::vector{401});
    EXPECT_FALSE(dispatcher.preparesAtOnce(commands.front()));
}

TEST_F(CommandGroup, LeavesTheCompanyAsItIsWhenACommandIsOnlyRepeated)
{
    expense(mira, "key");
    carryOut();
    const auto tag = service.as("mira", "GET", "/v1/snapshot").header("etag");
    commands.clear();
    expense(mira, "key");
    carryOut();
    EXPECT_EQ(statuses(), std::vector{200});
    EXPECT_EQ(service.as("mira", "GET", "/v1/snapshot").header("etag"), tag);
}

TEST_F(CommandGroup, WaitsForOtherProcessesNoLongerThanForItsTurn)
{
    auto& command = expense(mira, "late");
    command.request.arrived -= 9'700ms; // it has waited for its turn for so long
    {
        const OtherWriter other{service.databaseFile()};
        const auto began = std::chrono::steady_clock::now();
        carryOut();
        EXPECT_LT(std::chrono::steady_clock::now() - began, 5s);
    }
    EXPECT_EQ(statuses(), std::vector{503});

    command.request.arrived = std::chrono::steady_clock::now();
    auto other = std::make_unique<OtherWriter>(service.databaseFile());
    const std::jthread soon{[&] {
        std::this_thread::sleep_for(600ms);
        other.reset();
    }};
    carryOut();
    EXPECT_EQ(statuses(), std::vector{200}) << "the next wait is as long as ever";
}

TEST(CommandLane, WritesInTheOrderOfArrival)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto ahead = service.client();
    ASSERT_EQ(ahead.send("GET", "/v1/snapshot", token).status, 200); // from now on the token is known
    constexpr int count = 8;
    std::list<HttpClient> clients;
    service.write([&](Connection&) { // meanwhile nobody else writes
        for (int each = 0; each < count; ++each) {
            auto input = SampleBooks::expense(each + 1);
            input.idempotencyKey = std::to_string(each);
            const auto body = Json::encode(input);
            clients.emplace_back(service.port())
                .write(fmt::format("POST /v1/transactions HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n"
                                   "Content-Length: {}\r\n\r\n{}",
                                   token, body.size(), body));
            EXPECT_EQ(ahead.send("GET", "/health/live").status, 200); // what came before is in the queue
        }
    });
    for (auto& client : clients)
        EXPECT_EQ(client.sendRaw("").status, 200);
    const auto entries = service.snapshotOf("mira").transactions;
    ASSERT_GE(entries.size(), static_cast<std::size_t>(count));
    for (int each = 0; each < count; ++each)
        EXPECT_EQ(entries[entries.size() - count + static_cast<std::size_t>(each)].legs.front().amountMinor, -each - 1);
    EXPECT_EQ(service.problems(), "");
}

TEST(TurnQueue, GivesTheTurnToWhoeverHasWaitedLongest)
{
    TurnQueue queue;
    const auto never = std::chrono::steady_clock::now() + 1h;
    ASSERT_TRUE(queue.enter(never));
    EXPECT_FALSE(queue.enter(std::chrono::steady_clock::now())) << "whose patience ends waits no longer";
    std::vector<int> order;
    std::vector<std::jthread> waiting;
    for (int each = 0; each < 4; ++each) {
        waiting.emplace_back([&, each] {
            ASSERT_TRUE(queue.enter(never));
            order.push_back(each);
            queue.leave();
        });
        ASSERT_TRUE(eventually([&] { return queue.waiting() > static_cast<std::size_t>(each); }));
    }
    queue.leave();
    waiting.clear();
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
    EXPECT_TRUE(queue.enter(std::chrono::steady_clock::now()));
}

}
