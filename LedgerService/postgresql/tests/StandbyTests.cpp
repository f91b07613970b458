#include <array>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <set>
#include <thread>
#include <vector>

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
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

/// A server of its own and a standby that has every commit before it is answered. The folders stand where the server's
/// own user gets to.
class Standby : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(script("start " + first + " --quick"), 0);
        ASSERT_EQ(script("standby " + second + " " + first), 0);
        const auto here = addressIn(first);
        const auto there = addressIn(second);
        const auto end = here.rfind('/');
        both = here.substr(0, end) + "," + there.substr(there.find('@') + 1);
    }
    void TearDown() override
    {
        EXPECT_EQ(script("remove " + first), 0);
        EXPECT_EQ(script("remove " + second), 0);
    }

    static int script(const std::string& arguments)
    {
        return std::system(fmt::format("{} {} >/dev/null", TALLYFOLD_POSTGRESQL_SCRIPT, arguments).c_str());
    }

    static std::string addressIn(const std::string& folder)
    {
        std::ifstream file{folder + "/url"};
        std::string address;
        std::getline(file, address);
        return address;
    }

    /// The sample company, in which mira holds the token.
    void foundBooks() const
    {
        makeSampleDatabase(both, [this](Connection& connection) {
            connection.execute("UPDATE companies SET bookkeeping_start_date = NULL");
            const auto now = std::chrono::system_clock::now();
            SessionRepository::insert(connection, Token::hash(token), {"sample", "mira"}, LedgerDay::stamp(now),
                                      LedgerDay::stamp(now + std::chrono::hours{1}));
        });
    }

    /// Posts under the key until it is confirmed, as a client would that retries.
    void spend(HttpClient& client, const std::string& key) const
    {
        auto input = SampleBooks::expense(10);
        input.date = LedgerDay::localGregorian().day(std::chrono::system_clock::now());
        input.idempotencyKey = key;
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{60};
        while (
            client.send("POST", "/v1/transactions", token, Json::encode(input), "Prefer: return=minimal\r\n").status !=
            200) {
            if (std::chrono::steady_clock::now() > until)
                FAIL() << key << " is never confirmed";
            std::this_thread::sleep_for(std::chrono::milliseconds{50}); // a client waits before it tries again
        }
    }

    TemporaryFolder folder;
    std::string first = fmt::format("/tmp/tallyfold-first-{}", getpid());
    std::string second = fmt::format("/tmp/tallyfold-second-{}", getpid());
    std::string both;
    std::string token = Token::issue();
};

}

TEST_F(Standby, HasEverythingThatWasConfirmedWhenItIsPromotedInTheMiddleOfWrites)
{
    ASSERT_NO_FATAL_FAILURE(foundBooks());
    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, both, {"--files", folder.file("books"), "--demo", "off"}};
    ASSERT_NE(process.port(), 0);
    constexpr int writers = 6;
    constexpr int posts = 60; // of each writer
    std::atomic<int> confirmed = 0;
    std::vector<std::jthread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            HttpClient client{process.port()};
            for (int at = 0; at < posts && !HasFatalFailure(); ++at) {
                spend(client, fmt::format("{}-{}", writer, at));
                ++confirmed;
                confirmed.notify_all();
            }
        });
    for (auto seen = confirmed.load(); seen < writers * posts / 4; seen = confirmed.load())
        confirmed.wait(seen);
    EXPECT_EQ(script("kill " + first), 0);
    EXPECT_EQ(script("promote " + second), 0);
    threads.clear();
    ASSERT_EQ(confirmed, writers * posts);
    const auto opened = Database::openExisting(addressIn(second));
    ASSERT_TRUE(opened.has_value()) << opened.error();
    const auto loan = (*opened)->borrow();
    EXPECT_EQ(EntryRepository::all(*loan, "sample").size(), 4U + writers * posts) << "each there, and once";
    EXPECT_EQ(AccountRepository::find(*loan, "sample", "bank")->balance("IDR"), 1'000'000 - 10 * writers * posts);
    EXPECT_EQ(Verify::run(*loan, folder.file("books")).problems, std::vector<std::string>{});
}

}
