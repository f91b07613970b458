#include <QCoreApplication>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreSample.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

using StoreSample::books;
using StoreSample::expense;
using StoreSample::message;
using StoreSample::newerBooks;

TEST(LedgerStoreOperation, SendsNothingWhileAnotherOneRuns)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("POST v1/transactions", ServerReply::parked());
    auto first = test.store.postTransaction(expense(), false);
    waitUntil([&] { return test.server.parkedCount() == 1; });
    EXPECT_TRUE(test.store.isBusy());

    EXPECT_EQ(resultOf(test.store.postTransaction(expense(), false)), failed(clientError(ClientCode::busy)));
    EXPECT_FALSE(test.store.errorMessage()) << "the form that asked shows it";
    EXPECT_EQ(resultOf(test.store.refresh(true)), failed(clientError(ClientCode::busy)));
    EXPECT_EQ(test.store.errorMessage(), message(0, "BUSY"));
    test.store.dismissMessages();
    EXPECT_TRUE(resultOf(test.store.refreshFromUser()));
    EXPECT_FALSE(test.store.errorMessage());

    test.server.release(ServerReply::json("{}"));
    EXPECT_TRUE(resultOf(std::move(first)));
    EXPECT_FALSE(test.store.isBusy());
    EXPECT_EQ(test.server.requests("POST v1/transactions").size(), 1U);
    EXPECT_EQ(test.server.requests("GET v1/snapshot").size(), 1U) << "the reload after the entry";
}

TEST(LedgerStoreOperation, EndsSilentlyWhenItIsGivenUp)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::parked());
    auto refreshing = test.store.refresh(true);
    waitUntil([&] { return test.server.parkedCount() == 1; });
    const SignalCount errors{test.store, &LedgerStore::errorMessageChanged};
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(refreshing)), failed(Cancelled{}));
    EXPECT_FALSE(test.store.isBusy());
    EXPECT_EQ(errors.count(), 0);
    EXPECT_TRUE(test.store.snapshot());
}

TEST(LedgerStoreOperation, OutlivesTheStoreWithoutTouchingIt)
{
    ScriptedServer server;
    RecordingCredentialStore credentials;
    LanguageMemory language;
    FixedClock clock;
    SequentialIdentifiers identifiers;
    auto store = std::make_unique<LedgerStore>(server.url(), LedgerStore::Environment{.credentials = credentials,
                                                                                      .languageDefaults = language,
                                                                                      .clock = clock,
                                                                                      .identifiers = identifiers});
    server.answer("POST v1/auth/login", ServerReply::parked());
    auto signingIn = store->login("m1@example.com", "secret");
    waitUntil([&] { return server.parkedCount() == 1; });
    store.reset();
    EXPECT_EQ(resultOf(std::move(signingIn)), failed(Cancelled{}));
    EXPECT_TRUE(credentials.calls.empty());
}

TEST(LedgerStoreOperation, EndsWholeAtWhateverMomentTheStoreDies)
{
    auto large = books;
    large.note(std::string(std::size_t{1} << 18, 'x')); // is decoded on a worker
    const auto reply = ServerReply::json(large.json());
    bool finished = false;
    for (int moment = 0; !finished; ++moment) {
        auto test = std::make_unique<StoreUnderTest>();
        test->signIn(books);
        test->server.replace("GET v1/snapshot", reply);
        auto refreshing = test->store.refresh(true);
        for (int step = 0; step < moment && !refreshing.isReady(); ++step)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        finished = refreshing.isReady();
        test.reset();
        const auto outcome = resultOf(std::move(refreshing));
        EXPECT_EQ(outcome, finished ? Result<void>{} : Result<void>{failed(Cancelled{})}) << "at moment " << moment;
    }
}

TEST(LedgerStoreOperation, EndsTheSessionOnA401AndSaysSoWhoeverAsked)
{
    StoreUnderTest test;
    test.signIn(books);
    ASSERT_EQ(test.credentials.sessions.size(), 1U);
    test.credentials.failsToDelete = true; // is not worth a message here
    test.server.replace("POST v1/transactions", ServerReply::error(401, "expired"));
    EXPECT_EQ(resultOf(test.store.postTransaction(expense(), false)),
              failed(APIError{401, "expired", "not for people"}));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_FALSE(test.store.lastRefresh());
    EXPECT_EQ(test.store.errorMessage(), message(401, "expired"));
    EXPECT_EQ(test.credentials.calls.back(), "delete " + test.server.url());
    EXPECT_EQ(resultOf(test.store.refresh(false)), failed(clientError(ClientCode::noSession)));
}

TEST(LedgerStoreOperation, KeepsTheSessionOnEveryOtherFailure)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::error(403, "inactive_member"));
    EXPECT_FALSE(resultOf(test.store.refresh(true)));
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_EQ(test.store.errorMessage(), message(403, "inactive_member"));

    test.server.replace("GET v1/snapshot", ServerReply::json("{\"company\":"));
    EXPECT_EQ(resultOf(test.store.refresh(false)), failed(clientError(ClientCode::invalidResponse)));
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_FALSE(test.store.errorMessage()) << "a new operation clears it, and this one does not publish";
}

TEST(LedgerStoreOperation, AnnouncesASnapshotOnlyWhenItDiffers)
{
    StoreUnderTest test;
    test.signIn(books);
    const auto held = test.store.snapshot();
    const SignalCount snapshots{test.store, &LedgerStore::snapshotChanged};
    const SignalCount refreshes{test.store, &LedgerStore::lastRefreshChanged};
    test.clock.advance(std::chrono::minutes{1});
    EXPECT_TRUE(resultOf(test.store.refreshFromUser()));
    EXPECT_EQ(snapshots.count(), 0);
    EXPECT_EQ(test.store.snapshot(), held) << "screens may keep what points into it";
    EXPECT_EQ(refreshes.count(), 1);
    EXPECT_EQ(test.store.lastRefresh(), test.clock.now());

    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    EXPECT_TRUE(resultOf(test.store.refreshFromUser()));
    EXPECT_EQ(snapshots.count(), 1);
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
}

TEST(LedgerStoreOperation, RefreshesQuietly)
{
    StoreUnderTest test;
    EXPECT_EQ(resultOf(test.store.refreshQuietly()), failed(clientError(ClientCode::noSession)));
    test.signIn(books);
    const SignalCount busy{test.store, &LedgerStore::isBusyChanged};
    test.server.replace("GET v1/snapshot", ServerReply::dropped());
    EXPECT_FALSE(resultOf(test.store.refreshQuietly()));
    EXPECT_TRUE(test.store.isStale());
    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    EXPECT_TRUE(resultOf(test.store.refreshQuietly()));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_FALSE(test.store.isStale());
    EXPECT_EQ(busy.count(), 0);
    EXPECT_FALSE(test.store.errorMessage());

    test.server.replace("GET v1/snapshot", ServerReply::error(401, "expired"));
    EXPECT_FALSE(resultOf(test.store.refreshQuietly()));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_EQ(test.store.errorMessage(), message(401, "expired"));
}

TEST(LedgerStoreOperation, LetsAQuietRefreshGiveWayToAPerson)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::parked());
    auto refreshing = test.store.refreshQuietly();
    EXPECT_TRUE(resultOf(test.store.refreshQuietly())) << "one is enough";
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    test.server.replace("POST v1/transactions", ServerReply::json("{}"));
    auto posting = test.store.postTransaction(expense(), true);
    EXPECT_EQ(resultOf(std::move(refreshing)), failed(Cancelled{}));
    EXPECT_TRUE(resultOf(test.store.refreshQuietly())) << "does nothing while somebody waits";
    EXPECT_TRUE(resultOf(std::move(posting)));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_EQ(test.server.requests("GET v1/snapshot").size(), 2U);
    EXPECT_FALSE(test.store.isStale());
}

TEST(LedgerStoreOperation, LetsNoQuietRefreshOverwriteWhatAPersonFetchedMeanwhile)
{
    auto older = books;
    older.note(std::string(std::size_t{1} << 18, 'x')); // is read on a worker
    bool finished = false;
    for (int moment = 0; !finished; ++moment) {
        StoreUnderTest test;
        test.signIn(books);
        test.server.replace("GET v1/snapshot", ServerReply::json(older.json()));
        auto refreshing = test.store.refreshQuietly();
        for (int step = 0; step < moment && !refreshing.isReady(); ++step)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        finished = refreshing.isReady();
        test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
        EXPECT_TRUE(resultOf(test.store.refresh(true)));
        const auto outcome = resultOf(std::move(refreshing));
        EXPECT_EQ(outcome, finished ? Result<void>{} : Result<void>{failed(Cancelled{})}) << "at moment " << moment;
        EXPECT_EQ(*test.store.snapshot(), newerBooks.build()) << "at moment " << moment;
    }
}

TEST(LedgerStoreOperation, RefusesTheBooksOfACompanyThatIsNotApproved)
{
    for (const auto& [status, code] :
         {std::pair{"rejected", "company_rejected"}, std::pair{"pending", "company_pending"},
          std::pair{"suspended", "company_pending"}}) {
        StoreUnderTest test;
        test.signIn(SnapshotBuilder{books}.approvalStatus("approved"));
        test.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{books}.approvalStatus(status).json()));
        EXPECT_EQ(resultOf(test.store.refresh(true)), failed(APIError{403, code, ""}));
        EXPECT_EQ(test.store.snapshot()->company.approvalStatus, "approved");
        EXPECT_EQ(test.store.errorMessage(), message(403, code));
    }
}

QCoro::Task<Result<void>> failingWith(Failure failure)
{
    co_return std::unexpected(failure);
}

TEST(LedgerStoreOperation, PublishesTheFailureOfAScreensOwnWork)
{
    StoreUnderTest test;
    resultOf(test.store.perform([] { return failingWith(MoneyError::outOfRange); }));
    EXPECT_EQ(test.store.errorMessage(), "The amount exceeds the supported range.");
    resultOf(test.store.perform([] { return failingWith(Cancelled{}); }));
    EXPECT_EQ(test.store.errorMessage(), "The amount exceeds the supported range.");
}

}
