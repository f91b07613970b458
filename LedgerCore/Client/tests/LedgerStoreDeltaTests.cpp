#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/BusyWorkers.h"
#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-11-01", "bank", "USD", 500);
const auto newerBooks = SnapshotBuilder{books}.expense("t2", "2026-11-02", "bank", "USD", 100);

ServerReply tagged(std::string body, const std::string& tag)
{
    return {.body = std::move(body), .headers = {"ETag: \"" + tag + "\""}};
}

ServerReply notModified(const std::string& tag)
{
    return {.status = 304, .headers = {"ETag: \"" + tag + "\""}};
}

template <class Record>
SharedList<Record> newOrChanged(const SharedList<Record>& base, const SharedList<Record>& next)
{
    SharedList<Record> different;
    std::ranges::copy_if(next, std::back_inserter(different),
                         [&](const Record& each) { return std::ranges::find(base, each) == base.end(); });
    return different;
}

/// What a service answers to somebody who holds `base`.
ServerReply delta(const LedgerSnapshot& base, const std::string& baseTag, LedgerSnapshot next, const std::string& tag)
{
    const auto counts = ",\"entryCount\":" + std::to_string(next.transactions.size()) +
                        ",\"attachmentCount\":" + std::to_string(next.attachments.size()) + "}";
    next.transactions = newOrChanged(base.transactions, next.transactions);
    next.attachments = newOrChanged(base.attachments, next.attachments);
    auto body = Json::encode(next);
    body.pop_back();
    auto reply = tagged(body + counts, tag);
    reply.status = 226;
    reply.headers.insert(reply.headers.end(), {"IM: entries", "Delta-Base: \"" + baseTag + "\""});
    return reply;
}

/// Signs in at a service that tells what is new; the store holds `books` with the tag "1".
void signInTagged(StoreUnderTest& test, const LedgerSnapshot& held)
{
    test.server.replace("POST v1/auth/login",
                        tagged(R"({"token":"token-1","snapshot":)" + Json::encode(held) + "}", "1"));
    ASSERT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
}

/// A member's day in the books: entries, reversals, receipts, and the small things around them.
class BookLife {
public:
    explicit BookLife(unsigned seed) : m_random{seed} {}

    void goOn(LedgerSnapshot& now)
    {
        for (auto left = m_random() % 4; left > 0; --left)
            change(now);
    }

private:
    void change(LedgerSnapshot& now)
    {
        const auto id = std::to_string(++m_last);
        auto& entries = now.transactions;
        auto& any = entries[m_random() % entries.size()];
        switch (m_random() % 6) {
        case 0:
        case 1: {
            auto entry = entries.front();
            entry.id = "e" + id;
            entry.note = "note " + id;
            entries.push_back(entry);
            break;
        }
        case 2: {
            auto reversal = any;
            any.reversedBy = reversal.id = "r" + id;
            reversal.reversalOf = any.id;
            reversal.reversedBy.reset();
            entries.push_back(reversal);
            break;
        }
        case 3:
            any.attachmentIDs.push_back("a" + id);
            now.attachments.emplace_back().id = "a" + id;
            break;
        case 4:
            now.company.name = "Harbour " + id;
            break;
        default:
            now.accounts.front().balances["USD"] = static_cast<std::int64_t>(m_random() % 1000);
        }
    }

    std::mt19937 m_random;
    int m_last = 0;
};

TEST(LedgerStoreDelta, ComesToTheSameAsTheWholeWhateverHappensToTheBooks)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        StoreUnderTest test;
        auto held = books.build();
        signInTagged(test, held);
        BookLife life{seed};
        for (int step = 2; step < 12; ++step) {
            auto next = held;
            life.goOn(next);
            const auto before = std::to_string(step - 1);
            test.server.replace("GET v1/snapshot", delta(held, before, next, std::to_string(step)));
            const auto shown = test.store.snapshot();
            const SignalCount changes{test.store, &LedgerStore::snapshotChanged};
            ASSERT_TRUE(resultOf(test.store.refresh(true)));
            EXPECT_EQ(test.server.requests().back().header("if-none-match"), "\"" + before + "\"");
            EXPECT_EQ(*test.store.snapshot(), next) << "seed " << seed << " step " << step;
            EXPECT_EQ(*shown, held) << "what a screen holds never changes";
            EXPECT_EQ(changes.count(), held == next ? 0 : 1);
            held = next;
        }
        EXPECT_EQ(test.server.requests("GET v1/snapshot").size(), 10U) << "never the whole";
    }
}

TEST(LedgerStoreDelta, LeavesLargeBooksAndWhatIsNewInThemToWorkers)
{
    StoreUnderTest test;
    auto many = books;
    for (int each = 0; each < 3000; ++each)
        many.income("i" + std::to_string(each), "2026-11-01", "bank", "USD", each);
    const auto next = SnapshotBuilder{many}.expense("t2", "2026-11-02", "bank", "USD", 100);
    test.server.replace("POST v1/auth/login", tagged(many.signInJson(), "1"));
    test.server.replace("GET v1/snapshot", delta(many.build(), "1", next.build(), "2"));

    auto workers = std::make_unique<BusyWorkers>();
    auto signingIn = test.store.login("m1@example.com", "secret");
    exchangeMuch(test.server);
    EXPECT_FALSE(signingIn.isReady() || test.store.snapshot());
    workers = nullptr;
    EXPECT_TRUE(resultOf(std::move(signingIn)));
    const auto held = test.store.snapshot();
    EXPECT_EQ(*held, many.build());

    workers = std::make_unique<BusyWorkers>();
    auto refreshing = test.store.refresh(true);
    exchangeMuch(test.server);
    EXPECT_FALSE(refreshing.isReady());
    workers = nullptr;
    EXPECT_TRUE(resultOf(std::move(refreshing)));
    EXPECT_EQ(*test.store.snapshot(), next.build());
    EXPECT_TRUE(test.store.snapshot()->transactions.sharesBlock(held->transactions, 0)) << "not copied";
}

TEST(LedgerStoreDelta, AnnouncesNothingWhereNothingIsNew)
{
    StoreUnderTest test;
    signInTagged(test, books.build());
    const auto held = test.store.snapshot();
    const SignalCount snapshots{test.store, &LedgerStore::snapshotChanged};
    test.server.replace("GET v1/snapshot", notModified("1"));
    test.clock.advance(std::chrono::minutes{1});
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(test.store.snapshot(), held);
    EXPECT_EQ(snapshots.count(), 0);
    EXPECT_EQ(test.store.lastRefresh(), test.clock.now());
    const auto& sent = test.server.requests().back();
    EXPECT_EQ(sent.header("if-none-match"), "\"1\"");
    EXPECT_EQ(sent.header("a-im"), "entries");
}

struct Doubt {
    const char* name;
    std::string search; // in a sound delta's head and body
    std::string replacement;
};

class DoubtfulDelta : public testing::TestWithParam<Doubt> {};

TEST_P(DoubtfulDelta, IsNotUsedAndTheWholeIsLoaded)
{
    StoreUnderTest test;
    signInTagged(test, books.build());
    auto reply = delta(books.build(), "1", newerBooks.build(), "2");
    bool isAltered = false;
    for (auto* text : {&reply.headers[1], &reply.headers[2], &reply.body}) {
        if (const auto at = text->find(GetParam().search); at != std::string::npos) {
            text->replace(at, GetParam().search.size(), GetParam().replacement);
            isAltered = true;
        }
    }
    ASSERT_TRUE(isAltered);
    const auto whole = SnapshotBuilder{newerBooks}.companyName("Whole");
    test.server.replace("GET v1/snapshot", reply);
    test.server.answer("GET v1/snapshot", tagged(whole.json(), "3"));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(*test.store.snapshot(), whole.build());
    EXPECT_EQ(test.server.requests().back().header("if-none-match"), "");
    EXPECT_EQ(test.server.requests().back().header("a-im"), "");
}

INSTANTIATE_TEST_SUITE_P(Causes, DoubtfulDelta,
                         testing::Values(Doubt{"OtherBase", "Base: \"1\"", "Base: \"0\""},
                                         Doubt{"OtherManipulation", "IM: entries", "IM: other"},
                                         Doubt{"EntryMissing", "\"entryCount\":2", "\"entryCount\":3"},
                                         Doubt{"ReceiptMissing", "\"attachmentCount\":0", "\"attachmentCount\":1"},
                                         Doubt{"FewerEntriesThanBefore", "\"entryCount\":2", "\"entryCount\":0"},
                                         Doubt{"UnknownEntryForAKnownOne", "\"entryCount\":2", "\"entryCount\":1"},
                                         Doubt{"NoCount", "entryCount", "entries"},
                                         Doubt{"Undecodable", "\"members\":[",
                                               "\"members\":["
                                               "[,"}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreDelta, TakesTheWholeWhereTheServiceSendsIt)
{
    StoreUnderTest test;
    signInTagged(test, books.build());
    test.server.replace("GET v1/snapshot", tagged(newerBooks.json(), "2"));
    test.server.answer("GET v1/snapshot", ServerReply::json(books.json()));
    test.server.answer("GET v1/snapshot", delta(books.build(), "1", newerBooks.build(), "2"));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(*test.store.snapshot(), books.build());
    EXPECT_EQ(resultOf(test.store.refresh(true)), failed(clientError(ClientCode::invalidResponse)))
        << "nobody asked for a part";
    EXPECT_EQ(test.server.requests().back().header("if-none-match"), "") << "the last whole had no tag";
}

TEST(LedgerStoreDelta, AsksNoOtherServiceForLess)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("POST v1/transactions/t1/reverse", ServerReply::json(newerBooks.json()));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_TRUE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    for (const auto& sent : test.server.requests()) {
        for (const auto* header : {"if-none-match", "a-im", "prefer"})
            EXPECT_EQ(sent.header(header), "") << sent.path;
    }
}

TEST(LedgerStoreDelta, FetchesWhatACommandMadeNew)
{
    StoreUnderTest test;
    signInTagged(test, books.build());
    test.server.answer("POST v1/transactions/t1/reverse",
                       {.body = R"({"ok":true})", .headers = {"Preference-Applied: return=minimal"}});
    test.server.answer("POST v1/transactions/t1/reverse", tagged(books.json(), "3"));
    test.server.answer("GET v1/snapshot", delta(books.build(), "1", newerBooks.build(), "2"));
    EXPECT_TRUE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_EQ(test.server.requests("POST v1/transactions/t1/reverse").front().header("prefer"), "return=minimal");

    EXPECT_TRUE(resultOf(test.store.reverseTransaction("t1", "typo"))) << "a service may send the whole all the same";
    EXPECT_EQ(*test.store.snapshot(), books.build());
    test.server.replace("GET v1/snapshot", notModified("3"));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(test.server.requests().back().header("if-none-match"), "\"3\"");
}

}
