#include <gtest/gtest.h>

#include "LedgerCore/Client/Http/SessionHold.h"
#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreSample.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

namespace {

using StoreSample::message;

const auto books = snapshot().account("bank", {"USD"}).grantAll();
constexpr auto login = "POST v1/auth/login";
constexpr auto logout = "POST v1/auth/logout";

/// The sessions that the service was told to end, in this order.
std::vector<std::string> handedBack(const ScriptedServer& server)
{
    std::vector<std::string> tokens;
    for (const auto& farewell : server.requests(logout))
        tokens.push_back(farewell.header("authorization"));
    return tokens;
}

TEST(LedgerStoreSession, OpensTheBooksAndKeepsTheToken)
{
    StoreUnderTest test;
    const SignalCount snapshots{test.store, &LedgerStore::snapshotChanged};
    test.signIn(books);
    EXPECT_EQ(*test.store.snapshot(), books.build());
    EXPECT_EQ(snapshots.count(), 1);
    EXPECT_EQ(test.store.lastRefresh(), test.clock.now());
    EXPECT_FALSE(test.store.isDemo());
    EXPECT_EQ(test.credentials.sessions.at(test.server.url()), (SavedSession{"token-1", false}));
    const auto& sent = test.server.requests().front();
    EXPECT_EQ(Json::decode<Login>(sent.body), (Login{"m1@example.com", "secret"}));
    EXPECT_EQ(sent.header("authorization"), "");
    EXPECT_EQ(test.server.requests().size(), 1U) << "the reply carries the snapshot";
}

TEST(LedgerStoreSession, StartsADemonstrationAsTheChosenPerson)
{
    StoreUnderTest test;
    test.server.answer("POST v1/demo", ServerReply::json(books.signInJson()));
    EXPECT_TRUE(resultOf(test.store.startDemo("vi-VN", "finance")));
    EXPECT_TRUE(test.store.isDemo());
    EXPECT_TRUE(test.credentials.sessions.at(test.server.url()).isDemo);
    EXPECT_EQ(test.server.requests().front().body, R"({"locale":"vi-VN","profile":"finance"})");
}

struct RefusedSignIn {
    const char* name;
    ServerReply reply;
    APIError error;
    std::vector<std::string> handedBack = {};
};

class SignInRefusal : public testing::TestWithParam<RefusedSignIn> {};

TEST_P(SignInRefusal, LeavesNoTraceOfASession)
{
    StoreUnderTest test;
    test.server.answer(login, GetParam().reply);
    EXPECT_EQ(resultOf(test.store.login("m1@example.com", "secret")), failed(GetParam().error));
    EXPECT_EQ(test.store.errorMessage(), GetParam().error.friendlyMessage("en-US"));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_FALSE(test.store.noticeMessage());
    EXPECT_TRUE(test.credentials.calls.empty());
    EXPECT_EQ(resultOf(test.store.refresh(false)), failed(clientError(ClientCode::noSession)));
    waitUntil([&] { return test.server.requests(logout).size() >= GetParam().handedBack.size(); });
    EXPECT_EQ(handedBack(test.server), GetParam().handedBack);
}

std::string applicationReply(const std::string& id, const std::string& email)
{
    return R"({"status":"pending","applicationID":")" + id + R"(","companyName":"Kopi","email":")" + email + "\"}";
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SignInRefusal,
    testing::Values(
        RefusedSignIn{"WrongPassword",
                      ServerReply::error(401, "invalid_credentials"),
                      {401, "invalid_credentials", "not for people"}},
        RefusedSignIn{"Rejected",
                      ServerReply::json(SnapshotBuilder{books}.approvalStatus("rejected").signInJson()),
                      {403, "company_rejected", ""},
                      {"Bearer token-1"}},
        RefusedSignIn{"Unreviewed",
                      ServerReply::json(SnapshotBuilder{books}.approvalStatus("new").signInJson()),
                      {403, "company_pending", ""},
                      {"Bearer token-1"}},
        RefusedSignIn{
            "PendingWithoutApplication", ServerReply::json(applicationReply("", "a@b.c")), {0, "INVALID_RESPONSE", ""}},
        RefusedSignIn{
            "PendingWithoutEmail", ServerReply::json(applicationReply("a1", "")), {0, "INVALID_RESPONSE", ""}},
        RefusedSignIn{"NoToken", ServerReply::json("{\"snapshot\":" + books.json() + "}"), {0, "INVALID_RESPONSE", ""}},
        RefusedSignIn{"Empty", ServerReply::json(""), {0, "INVALID_RESPONSE", ""}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreSession, HoldsAPendingApplicationUntilTheNextSignIn)
{
    StoreUnderTest test;
    test.server.answer(login, ServerReply::json(applicationReply("a1", "m1@example.com")));
    test.server.answer(login, ServerReply::dropped());
    EXPECT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
    ASSERT_TRUE(test.store.pendingCompanyRegistration());
    EXPECT_EQ(*test.store.pendingCompanyRegistration(),
              (PendingCompanyRegistration{"pending", "a1", "Kopi", "m1@example.com"}));
    EXPECT_EQ(test.store.noticeMessage(), message(0, "company_pending"));
    EXPECT_FALSE(test.store.snapshot());

    EXPECT_FALSE(resultOf(test.store.login("m1@example.com", "secret")));
    EXPECT_FALSE(test.store.pendingCompanyRegistration());
    EXPECT_FALSE(test.store.noticeMessage());
}

TEST(LedgerStoreSession, GoesOnInMemoryWhenItCannotBeKept)
{
    StoreUnderTest test;
    test.credentials.failsToSave = true;
    test.signIn(books);
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_EQ(test.store.errorMessage(), message(0, "KEYCHAIN_UNAVAILABLE"));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
}

struct EndedSession {
    const char* name;
    ServerReply reply;
    bool failsToDelete;
    std::optional<std::string> errorMessage;
};

class Logout : public testing::TestWithParam<EndedSession> {};

TEST_P(Logout, SignsOutWhateverTheServiceSays)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer(logout, GetParam().reply);
    test.credentials.failsToDelete = GetParam().failsToDelete;
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_FALSE(test.store.isBusy());
    EXPECT_EQ(test.store.errorMessage(), GetParam().errorMessage);
    EXPECT_EQ(test.credentials.calls.back(), "delete " + test.server.url());
    waitUntil([&] { return !test.server.requests(logout).empty(); });
    EXPECT_EQ(test.server.requests(logout).front().header("authorization"), "Bearer token-1");
    test.signIn(books);
    EXPECT_TRUE(test.store.snapshot());
}

INSTANTIATE_TEST_SUITE_P(Replies, Logout,
                         testing::Values(EndedSession{"Accepted", ServerReply::json(""), false, {}},
                                         EndedSession{"Unreachable", ServerReply::dropped(), false, {}},
                                         EndedSession{"Expired", ServerReply::error(401, "expired"), false, {}},
                                         EndedSession{"KeychainFails", ServerReply::json(""), true,
                                                      message(0, "KEYCHAIN_LOGOUT_UNAVAILABLE")}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreSession, IsOverBeforeTheServiceHasAnsweredTheLogout)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer(logout, ServerReply::parked());
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_FALSE(test.store.isBusy());
    test.signIn(books);
    test.store.cancel();
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.server.release(ServerReply::error(401, "expired"));
    EXPECT_TRUE(resultOf(test.store.refresh(true))) << "the farewell is not about the new session";
    EXPECT_TRUE(test.store.snapshot());
}

TEST(LedgerStoreSession, CanBeGivenUpWhileItIsSought)
{
    StoreUnderTest test;
    test.server.answer(login, ServerReply::parked());
    auto signingIn = test.store.login("m1@example.com", "secret");
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(signingIn)), failed(Cancelled{}));
    EXPECT_FALSE(test.store.isBusy());
    EXPECT_FALSE(test.store.errorMessage());
    test.signIn(books);
}

TEST(LedgerStoreSession, IsEndedWhereItIsOpenedForSomebodyWhoHasGivenUp)
{
    ScriptedServer elsewhere;
    StoreUnderTest test;
    test.server.answer(logout, ServerReply::json(R"({"ok":true})"));
    test.server.answer(login, ServerReply::parked());
    auto givenUp = test.store.login("m1@example.com", "secret");
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(givenUp)), failed(Cancelled{}));
    test.store.setServerURL(elsewhere.url());
    test.server.release(ServerReply::json(books.signInJson("late")));
    waitUntil([&] { return test.server.requests(logout).size() == 1; });
    EXPECT_EQ(handedBack(test.server), std::vector<std::string>{"Bearer late"});
    EXPECT_TRUE(elsewhere.requests().empty()) << "the token is another service's";
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_TRUE(test.credentials.calls.empty());
}

TEST(LedgerStoreSession, IsEndedWhereItIsOpenedAfterTheWindowIsClosed)
{
    constexpr auto acceptance = "POST v1/invites/accept";
    for (const auto* parked : {login, acceptance}) {
        StoreUnderTest test;
        test.server.answer(logout, ServerReply::json(R"({"ok":true})"));
        test.server.answer(login, ServerReply::json(books.signInJson("first")));
        test.server.replace(parked, ServerReply::parked());
        auto signingIn = test.store.loginAndAcceptInvitation("m1@example.com", "secret", "ABC");
        waitUntil([&] { return test.server.parkedCount() == 1; });
        const auto leaving = test.store.leave();
        EXPECT_EQ(resultOf(std::move(signingIn)), failed(Cancelled{}));
        EXPECT_FALSE(leaving.isReady()) << parked;
        test.server.release(ServerReply::json(books.signInJson("late")));
        waitUntil([&] { return leaving.isReady(); });
        auto ended = handedBack(test.server);
        std::ranges::sort(ended);
        const auto expected = parked == login ? std::vector<std::string>{"Bearer late"}
                                              : std::vector<std::string>{"Bearer first", "Bearer late"};
        EXPECT_EQ(ended, expected);
    }
}

TEST(LedgerStoreSession, IsNoLongerWaitedForWhenItsConnectionGoes)
{
    ScriptedServer server;
    server.answer(login, ServerReply::parked());
    auto connection = std::make_unique<ServiceConnection>(server.url(), TransferLimits{.idle = std::chrono::hours{1}});
    SessionOpening opening{*connection};
    auto asking = opening.ask({.method = "POST", .path = "v1/auth/login", .body = "{}"}, nullptr,
                              [](const SplitReply&) { return std::optional<CompanyRegistrationResponse>{}; });
    waitUntil([&] { return server.parkedCount() == 1; });
    connection.reset();
    const auto answer = resultOf(std::move(asking));
    ASSERT_FALSE(answer);
    EXPECT_TRUE(std::holds_alternative<Cancelled>(answer.error()));
}

TEST(LedgerStoreSession, StaysWhereGoingToAnotherCompanyIsGivenUp)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer(logout, ServerReply::json(R"({"ok":true})"));
    test.server.replace("POST v1/me/companies/switch", ServerReply::parked());
    for (const auto& late : {books.json(), books.signInJson("late")}) {
        auto going = test.store.switchCompany("c2");
        waitUntil([&] { return test.server.parkedCount() == 1; });
        EXPECT_TRUE(test.store.awaitsChange());
        test.store.cancel();
        EXPECT_EQ(resultOf(std::move(going)), failed(Cancelled{}));
        EXPECT_FALSE(test.store.awaitsChange());
        test.server.release(ServerReply::json(late));
    }
    waitUntil([&] { return test.server.requests(logout).size() == 1; });
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(test.server.requests().back().header("authorization"), "Bearer token-1");
    EXPECT_EQ(handedBack(test.server), std::vector<std::string>{"Bearer late"});
}

TEST(LedgerStoreSession, IsRestoredOnceFromWhatWasKept)
{
    StoreUnderTest test;
    test.credentials.sessions[test.server.url()] = {"kept", true};
    test.server.answer("GET v1/snapshot", ServerReply::json(books.json()));
    EXPECT_TRUE(resultOf(test.store.restoreSession()));
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_TRUE(test.store.isDemo());
    EXPECT_EQ(test.server.requests().front().header("authorization"), "Bearer kept");
    EXPECT_TRUE(resultOf(test.store.restoreSession()));
    EXPECT_EQ(test.server.requests().size(), 1U);
}

struct FailedRestore {
    const char* name;
    std::optional<SavedSession> saved;
    bool failsToRead;
    ServerReply reply;
    std::optional<std::string> errorMessage;
    bool isKept; // the saved session, for the next start
};

class RestoreFailure : public testing::TestWithParam<FailedRestore> {};

TEST_P(RestoreFailure, EndsSignedOutAndForgetsOnlyAnExpiredSession)
{
    StoreUnderTest test;
    if (GetParam().saved)
        test.credentials.sessions[test.server.url()] = *GetParam().saved;
    test.credentials.failsToRead = GetParam().failsToRead;
    test.server.answer("GET v1/snapshot", GetParam().reply);
    static_cast<void>(resultOf(test.store.restoreSession()));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_FALSE(test.store.isDemo());
    EXPECT_EQ(test.store.errorMessage(), GetParam().errorMessage);
    EXPECT_EQ(test.credentials.sessions.contains(test.server.url()), GetParam().isKept);
    EXPECT_EQ(resultOf(test.store.refresh(false)), failed(clientError(ClientCode::noSession)));
}

const SavedSession kept{"kept", true};

INSTANTIATE_TEST_SUITE_P(
    Causes, RestoreFailure,
    testing::Values(FailedRestore{"NothingSaved", {}, false, ServerReply::json(books.json()), {}, false},
                    FailedRestore{"KeychainFails", kept, true, ServerReply::json(books.json()),
                                  message(0, "KEYCHAIN_RESTORE_UNAVAILABLE"), true},
                    FailedRestore{"Unreachable", kept, false, ServerReply::dropped(), message(0, "NETWORK"), true},
                    FailedRestore{"Rejected", kept, false,
                                  ServerReply::json(SnapshotBuilder{books}.approvalStatus("rejected").json()),
                                  message(403, "company_rejected"), true},
                    FailedRestore{"Expired", kept, false, ServerReply::error(401, "expired"), message(401, "expired"),
                                  false}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreSession, EndsAtTheServiceWithTheProgramUnlessItIsKept)
{
    const auto logouts = [](StoreUnderTest& test) {
        const auto leaving = test.store.leave();
        waitUntil([&] { return leaving.isReady(); });
        return test.server.requests(logout);
    };
    StoreUnderTest usual;
    usual.signIn(books);
    EXPECT_TRUE(logouts(usual).empty());

    StoreUnderTest unkept;
    unkept.server.replace(logout, ServerReply::json(R"({"ok":true})"));
    EXPECT_TRUE(logouts(unkept).empty()) << "nobody is signed in";
    unkept.credentials.failsToSave = true;
    unkept.signIn(books);
    const auto sent = logouts(unkept);
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent.front().header("authorization"), "Bearer token-1");

    StoreUnderTest restored;
    restored.credentials.sessions[restored.server.url()] = {"token-1", false};
    restored.server.answer("GET v1/snapshot", ServerReply::json(books.json()));
    ASSERT_TRUE(resultOf(restored.store.restoreSession()));
    EXPECT_TRUE(logouts(restored).empty());
}

TEST(LedgerStoreSession, WaitsAtTheEndForTheServiceToLearnOfASignOut)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer(logout, ServerReply::parked());
    EXPECT_TRUE(resultOf(test.store.logout()));
    const auto leaving = test.store.leave();
    waitUntil([&] { return test.server.parkedCount() == 1; });
    EXPECT_FALSE(leaving.isReady());
    test.server.release(ServerReply::json(R"({"ok":true})"));
    waitUntil([&] { return leaving.isReady(); });
    EXPECT_EQ(test.server.requests(logout).size(), 1U);
}

TEST(LedgerStoreSession, LeavesWhatAnotherWindowHasKept)
{
    StoreUnderTest test;
    test.signIn(books);
    auto& inKeychain = test.credentials.sessions.at(test.server.url());
    inKeychain = {"of-the-other-window", false};
    const SessionHold otherWindow{test.server.url(), "of-the-other-window"};
    test.server.replace("GET v1/snapshot", ServerReply::error(401, "expired"));
    EXPECT_FALSE(resultOf(test.store.refresh(true)));
    EXPECT_FALSE(test.store.snapshot()) << "this window shows no books that nobody opened in it";
    EXPECT_EQ(test.store.errorMessage(), message(401, "expired"));
    EXPECT_EQ(inKeychain.token, "of-the-other-window");

    test.signIn(books);
    inKeychain = {"of-the-other-window", false};
    const auto leaving = test.store.leave();
    waitUntil([&] { return leaving.isReady(); });
    EXPECT_EQ(handedBack(test.server), std::vector<std::string>{"Bearer token-1"})
        << "the next start will not find this session";
}

struct ReplacedSession {
    const char* name;
    bool isUsedElsewhere;
    bool failsToSave;
    std::vector<std::string> handedBack;
};

class SessionReplacement : public testing::TestWithParam<ReplacedSession> {};

/// The start could not reach the service and left the session where it was kept; then somebody signs in.
TEST_P(SessionReplacement, EndsASessionThatNobodyCouldTakeUpAgain)
{
    StoreUnderTest test;
    test.server.answer(logout, ServerReply::json(R"({"ok":true})"));
    test.credentials.sessions[test.server.url()] = {"kept", false};
    test.credentials.failsToSave = GetParam().failsToSave;
    std::optional<SessionHold> elsewhere;
    if (GetParam().isUsedElsewhere)
        elsewhere.emplace(test.server.url(), "kept");
    test.server.answer("GET v1/snapshot", ServerReply::dropped());
    EXPECT_FALSE(resultOf(test.store.restoreSession()));
    test.signIn(books);
    waitUntil([&] { return test.server.requests(logout).size() >= GetParam().handedBack.size(); });
    EXPECT_TRUE(resultOf(test.store.refresh(true))) << "goes on";
    EXPECT_EQ(handedBack(test.server), GetParam().handedBack);
}

INSTANTIATE_TEST_SUITE_P(Kept, SessionReplacement,
                         testing::Values(ReplacedSession{"AndReplaced", false, false, {"Bearer kept"}},
                                         ReplacedSession{"AndUsedInAnotherWindow", true, false, {}},
                                         ReplacedSession{"ForTheNextStart", false, true, {}}),
                         [](const auto& each) { return std::string{each.param.name}; });

/// Both have taken up one session from the keychain; in one of them the person then goes over to another company.
TEST(LedgerStoreSession, GoesOnInAnotherWindowUntilTheLastOneIsClosed)
{
    const auto close = [](LedgerStore& store) {
        const auto leaving = store.leave();
        waitUntil([&] { return leaving.isReady(); });
    };
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/me/companies/switch", ServerReply::json(books.signInJson("token-2")));
    test.server.answer(logout, ServerReply::json(R"({"ok":true})"));
    LedgerStore other{test.server.url(),
                      {.credentials = test.credentials,
                       .languageDefaults = test.language,
                       .clock = test.clock,
                       .identifiers = test.identifiers}};
    ASSERT_TRUE(resultOf(other.restoreSession()));
    ASSERT_TRUE(resultOf(test.store.switchCompany("c2")));
    close(test.store);
    EXPECT_TRUE(test.server.requests(logout).empty()) << "the other window would be signed out";
    close(other);
    ASSERT_EQ(test.server.requests(logout).size(), 1U) << "the next start will not find this session";
    EXPECT_EQ(test.server.requests(logout).front().header("authorization"), "Bearer token-1");
}

TEST(LedgerStoreSession, BelongsToOneServiceAddress)
{
    StoreUnderTest test;
    test.signIn(books);
    test.store.setServerURL("https://elsewhere.example.com");
    EXPECT_EQ(test.store.serverURL(), test.server.url()) << "not while signed in";
    EXPECT_TRUE(resultOf(test.store.logout()));
    auto refreshing = test.store.login("m1@example.com", "secret");
    test.store.setServerURL("https://elsewhere.example.com");
    EXPECT_EQ(test.store.serverURL(), test.server.url()) << "not while busy";
    EXPECT_TRUE(resultOf(std::move(refreshing)));
    EXPECT_TRUE(resultOf(test.store.logout()));

    const SignalCount changes{test.store, &LedgerStore::endpointChanged};
    test.store.setServerURL("http://192.168.1.10");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(resultOf(test.store.login("m1@example.com", "secret")),
              failed(clientError(ClientCode::invalidServerURL)));
    EXPECT_EQ(test.store.errorMessage(), "Enter an HTTPS service address. HTTP is allowed for local development.");
    test.store.setServerURL(test.server.url() + "/");
    EXPECT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
    EXPECT_TRUE(test.credentials.sessions.contains(test.server.url() + "/"));
    EXPECT_FALSE(test.credentials.sessions.contains(test.server.url()));
}

TEST(LedgerStoreSession, SaysThatAnApplicationWasTurnedDownAndHoldsNoneOfIt)
{
    const auto applied = [](const std::string& status, const std::string& id) {
        return ServerReply::json(R"({"status":")" + status + R"(","applicationID":")" + id +
                                 R"(","companyName":"Kopi","email":"m1@example.com"})");
    };
    const auto route = "POST v1/me/companies";
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace(route, applied("pending", "a1"));
    EXPECT_TRUE(resultOf(test.store.createAnotherCompany("Kopi", "q1")));
    test.server.replace(route, applied("rejected", "a2"));
    EXPECT_TRUE(resultOf(test.store.createAnotherCompany("Kopi", "q2")));
    EXPECT_EQ(test.store.noticeMessage(), message(0, "company_rejected"));
    ASSERT_TRUE(test.store.pendingCompanyRegistration()) << "the other one is not decided";
    test.server.replace(route, applied("rejected", "a1"));
    EXPECT_TRUE(resultOf(test.store.createAnotherCompany("Kopi", "q1")));
    EXPECT_FALSE(test.store.pendingCompanyRegistration());
}

TEST(LedgerStoreSession, ForgetsAPendingApplicationWithItsService)
{
    StoreUnderTest test;
    test.server.answer(login, ServerReply::json(applicationReply("a1", "m1@example.com")));
    EXPECT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
    test.store.setServerURL("https://elsewhere.example.com");
    EXPECT_FALSE(test.store.pendingCompanyRegistration());
}

}
