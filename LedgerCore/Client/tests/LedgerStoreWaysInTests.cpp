#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

using Store = LedgerStore;

const auto books = snapshot().account("bank", {"USD"}).grantAll();
const std::string opened = books.signInJson();

/// One request on the way in, and what the service answers when it lets a person go on.
struct Step {
    std::string route;
    std::string body; // as it goes over the wire
    std::string reply = opened;
};

struct WayIn {
    const char* name;
    std::function<QCoro::Task<Result<void>>(Store&)> run;
    std::vector<Step> steps;
    bool opens = true; // the books, in the end
};

void PrintTo(const WayIn& way, std::ostream* stream)
{
    *stream << way.name;
}

const std::vector<WayIn> ways{
    {"Login",
     [](Store& store) { return store.login("m1@example.com", "secret"); },
     {{"POST v1/auth/login", R"({"email":"m1@example.com","password":"secret"})"}}},
    {"LoginAndAcceptInvitation",
     [](Store& store) { return store.loginAndAcceptInvitation("m1@example.com", "secret", "ABC"); },
     {{"POST v1/auth/login", R"({"email":"m1@example.com","password":"secret"})"},
      {"POST v1/invites/accept", R"({"code":"ABC","locale":"en-US"})"}}},
    {"RegisterCompany",
     [](Store& store) {
         return store.registerCompany({.name = "Rini",
                                       .email = "r@x.id",
                                       .password = "secret",
                                       .companyName = "Kopi",
                                       .countries = {"ID", "VN"},
                                       .invitationCode = "ABC"});
     },
     {{"POST v1/auth/register",
       R"({"name":"Rini","email":"r@x.id","password":"secret","companyName":"Kopi","countries":["ID","VN"],)"
       R"("invitationCode":"ABC"})"}}},
    {"StartAccess",
     [](Store& store) { return outcomeOf(store.startAccess("r@x.id", "ABC", "join")); },
     {{"POST v1/auth/access/start", R"({"email":"r@x.id","invitationCode":"ABC","purpose":"join","locale":"en-US"})",
       R"({"challengeID":"ch"})"}},
     false},
    {"VerifyAccess",
     [](Store& store) { return outcomeOf(store.verifyAccess("ch", "123456")); },
     {{"POST v1/auth/access/verify", R"({"challengeID":"ch","code":"123456"})",
       R"({"ticket":"ti","existingAccount":false,"email":"r@x.id"})"}},
     false},
    {"CompleteAccess",
     [](Store& store) { return store.completeAccess("ch", "ti", "Rini", "secret"); },
     {{"POST v1/auth/access/complete",
       R"({"challengeID":"ch","ticket":"ti","name":"Rini","password":"secret","locale":"en-US"})"}}},
    {"StartDemo",
     [](Store& store) { return store.startDemo("vi-VN", "finance"); },
     {{"POST v1/demo", R"({"locale":"vi-VN","profile":"finance"})"}}},
};

class LedgerStoreWaysIn : public testing::TestWithParam<WayIn> {
protected:
    LedgerStoreWaysIn()
    {
        for (const auto& step : GetParam().steps)
            test.server.answer(step.route, ServerReply::json(step.reply));
    }

    QCoro::Task<Result<void>> run() { return GetParam().run(test.store); }
    [[nodiscard]] const Step& last() const { return GetParam().steps.back(); }
    void expectNobodySignedIn() const
    {
        EXPECT_FALSE(test.store.snapshot());
        EXPECT_TRUE(test.credentials.sessions.empty());
        EXPECT_FALSE(test.store.isBusy());
    }

    StoreUnderTest test;
};

TEST_P(LedgerStoreWaysIn, SendWhatTheServiceAsksForAndOpenTheBooks)
{
    ASSERT_TRUE(resultOf(run()));
    const auto& sent = test.server.requests();
    ASSERT_GE(sent.size(), GetParam().steps.size());
    EXPECT_EQ(sent.front().header("authorization"), "");
    for (std::size_t at = 0; at < GetParam().steps.size(); ++at) {
        EXPECT_EQ(sent[at].method + ' ' + sent[at].path.substr(1), GetParam().steps[at].route);
        EXPECT_EQ(sent[at].body, GetParam().steps[at].body);
    }
    EXPECT_EQ(test.store.snapshot() != nullptr, GetParam().opens);
    EXPECT_EQ(test.credentials.sessions.size(), GetParam().opens ? 1U : 0U);
    EXPECT_FALSE(test.store.errorMessage());
}

TEST_P(LedgerStoreWaysIn, SendNothingWhileBusy)
{
    test.server.replace(last().route, ServerReply::parked());
    auto first = run();
    waitUntil([&] { return test.server.parkedCount() == 1; });
    const auto sent = test.server.requests().size();
    EXPECT_EQ(resultOf(run()), failed(clientError(ClientCode::busy)));
    EXPECT_EQ(test.store.errorMessage(), "The previous action is still being processed. Please wait.");
    EXPECT_EQ(test.server.requests().size(), sent);
}

TEST_P(LedgerStoreWaysIn, OpenNoSecondSession)
{
    test.signIn(books);
    const auto held = test.store.snapshot();
    const auto sent = test.server.requests().size();
    EXPECT_EQ(resultOf(run()),
              GetParam().opens ? failed(clientError(ClientCode::alreadyAuthenticated)) : Result<void>{});
    EXPECT_EQ(test.server.requests().size(), sent + (GetParam().opens ? 0 : 1));
    EXPECT_EQ(test.store.snapshot(), held);
}

TEST_P(LedgerStoreWaysIn, PublishARefusalAndOpenNothing)
{
    test.server.replace(last().route, ServerReply::error(403, "forbidden"));
    EXPECT_EQ(resultOf(run()), failed(APIError{403, "forbidden", "not for people"}));
    EXPECT_EQ(test.store.errorMessage(), "You do not have permission to perform this action.");
    expectNobodySignedIn();
}

TEST_P(LedgerStoreWaysIn, AreSilentWhenTheyAreGivenUp)
{
    test.server.replace(last().route, ServerReply::parked());
    auto running = run();
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(running)), failed(Cancelled{}));
    EXPECT_FALSE(test.store.errorMessage());
    expectNobodySignedIn();
}

TEST_P(LedgerStoreWaysIn, SayWhenTheOutcomeIsUnknown)
{
    test.server.replace(last().route, ServerReply::cutShort(last().reply));
    const auto outcome = resultOf(run());
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(isOutcomeUnknown(outcome.error()));
    EXPECT_EQ(test.server.requests(last().route).size(), 1U) << "never sent twice by itself";
    EXPECT_TRUE(test.store.errorMessage());
    expectNobodySignedIn();
}

INSTANTIATE_TEST_SUITE_P(Ways, LedgerStoreWaysIn, testing::ValuesIn(ways),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreLogout, WaitsForNothingAndForgetsWhatIsKept)
{
    StoreUnderTest test;
    test.credentials.sessions[test.server.url()] = {"of-another-window", false};
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_TRUE(test.credentials.sessions.empty()) << "who signs out means this computer";
    EXPECT_TRUE(test.server.requests().empty()) << "nobody was signed in here";

    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::parked());
    auto refreshing = test.store.refresh(true);
    EXPECT_EQ(resultOf(test.store.logout()), failed(clientError(ClientCode::busy)));
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_FALSE(test.credentials.sessions.empty());
}

}
