#include <algorithm>
#include <map>
#include <random>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/testing/FixedClock.h"
#include "LedgerCore/Client/testing/SequentialIdentifiers.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerService/testing/Random/RandomDays.h"
#include "LedgerService/testing/SampleBooks.h"

using namespace LedgerService;

namespace {

/// A member of the sample's company at a window of their own.
struct Reader {
    Reader(const TestService& service, std::string member)
        : name(std::move(member)),
          store(fmt::format("http://127.0.0.1:{}", service.port()),
                {.credentials = credentials, .languageDefaults = language, .clock = clock, .identifiers = identifiers})
    {
        EXPECT_TRUE(resultOf(store.login(name + "@sample.example", TestService::password))) << name;
    }

    std::string name;
    SessionMemory credentials;
    LanguageMemory language;
    FixedClock clock;
    SequentialIdentifiers identifiers;
    LedgerStore store;
};

/// Says first what differs, as whole books are no message that anybody reads.
testing::AssertionResult agree(const LedgerSnapshot& held, const LedgerSnapshot& whole)
{
    if (held == whole)
        return testing::AssertionSuccess();
    auto differs = testing::AssertionFailure()
                   << held.transactions.size() << " entries for " << whole.transactions.size();
    const auto [left, right] = std::ranges::mismatch(held.transactions, whole.transactions);
    if (left != held.transactions.end())
        differs << ", first " << left->id;
    for (std::size_t at = 0; at < std::min(held.accounts.size(), whole.accounts.size()); ++at) {
        if (held.accounts[at] != whole.accounts[at])
            differs << ", account " << held.accounts[at].id;
    }
    return differs;
}

/// More entries than stand together in one block of a snapshot.
void recordMany(TestService& service)
{
    auto client = service.client();
    const auto token = service.tokenOf("mira");
    for (std::size_t each = 0; each < EntryList::blockSize; ++each) {
        auto input = SampleBooks::income();
        input.idempotencyKey = fmt::format("many-{}", each);
        const auto body = Json::encode(input);
        ASSERT_EQ(client.send("POST", "/v1/transactions", token, body, "Prefer: return=minimal\r\n").status, 200);
    }
}

TEST(StoreOnTheService, HoldsAfterEveryRefreshAndCommandWhatAWholeReloadBrings)
{
    TestService service;
    recordMany(service);
    RandomDays days{service, 20'261'121};
    RandomCommands commands{7};
    std::mt19937 random{20'261'122};
    std::map<std::string, Reader> readers;
    for (const auto* member : {"guest", "mira", "rudi"})
        readers.try_emplace(member, service, member);

    int shared = 0;
    int recorded = 0;
    for (int step = 0; step < 150 && !HasFailure(); ++step) {
        days.step(service.snapshotOf("guest"));
        for (auto& [member, reader] : readers) {
            if (random() % 3 != 0)
                continue; // some catch up with several changes at once
            const auto before = reader.store.snapshot();
            if (random() % 2 == 0) {
                Books books;
                books.entries = before->transactions.toVector();
                auto input = random() % 2 == 0 ? SampleBooks::income() : commands.inputFor(books);
                input.idempotencyKey = fmt::format("{}-{}", member, step);
                input.attachmentIDs.clear();
                const auto id = resultOf(reader.store.postTransaction(input, false));
                recorded += id ? 1 : 0;
                if (!id) // refused, so nothing was fetched
                    EXPECT_TRUE(resultOf(reader.store.refresh(false)));
            } else {
                EXPECT_TRUE(resultOf(reader.store.refresh(false)));
            }
            const auto held = reader.store.snapshot();
            EXPECT_TRUE(agree(*held, service.snapshotOf(member))) << member << " at step " << step;
            const bool isNew = held != before && !before->transactions.empty() && !held->transactions.empty();
            shared += isNew && held->transactions.sharesBlock(before->transactions, 0) ? 1 : 0;
        }
    }
    EXPECT_GT(recorded, 10) << "some of it by the readers themselves";
    EXPECT_GT(shared, 5) << "what is new was added to what was held";
    EXPECT_EQ(service.problems(), "");
}

}
