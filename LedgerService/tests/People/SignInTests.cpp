#include <array>

#include <gtest/gtest.h>

#include <boost/describe.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

struct AuthReply {
    std::string token;
    LedgerSnapshot snapshot;
};
BOOST_DESCRIBE_STRUCT(AuthReply, (), (token, snapshot))

HttpAnswer login(const TestService& service, const std::string& email, const std::string& password,
                 const std::string& from = "127.0.0.1")
{
    return service.clientFrom(from).send("POST", "/v1/auth/login", "",
                                         fmt::format(R"({{"email":"{}","password":"{}"}})", email, password));
}

void change(TestService& service, const std::string& statement)
{
    service.write([&](Connection& connection) { connection.execute(statement); });
}

}

TEST(SignIn, GivesATokenThatWorksUntilItIsHandedBack)
{
    TestService service;
    const auto answer = login(service, " Mira@Sample.example ", TestService::password);
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto reply = Json::decode<AuthReply>(answer.body);
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->snapshot.currentMember.id, "mira");
    EXPECT_GE(reply->token.size(), 43u) << "256 bits in Base64";

    auto client = service.client();
    EXPECT_EQ(client.send("GET", "/v1/snapshot", reply->token).status, 200);
    EXPECT_EQ(client.send("POST", "/v1/auth/logout", reply->token).body, R"({"ok":true})");
    EXPECT_EQ(client.send("GET", "/v1/snapshot", reply->token).code(), "unauthorized");
    EXPECT_EQ(client.send("POST", "/v1/auth/logout", reply->token).status, 401);
}

TEST(SignIn, TellsAWrongPasswordAndAnUnknownAddressApartToNobody)
{
    TestService service;
    const auto wrong = login(service, "mira@sample.example", "an open secre");
    const auto unknown = login(service, "nobody@sample.example", TestService::password);
    EXPECT_EQ(wrong.status, 401);
    EXPECT_EQ(wrong.code(), "unauthorized");
    EXPECT_EQ(unknown.status, 401);
    EXPECT_EQ(unknown.body, wrong.body);
}

struct Closed {
    std::string name;
    std::string statement; // done to the database before
    std::string email;
    std::string code;
};

class ClosedSignIn : public testing::TestWithParam<Closed> {};

TEST_P(ClosedSignIn, IsRefusedAtTheDoorAndWithAnEarlierToken)
{
    TestService service;
    const auto member = GetParam().email.substr(0, GetParam().email.find('@'));
    const auto token = service.tokenOf(member);
    change(service, GetParam().statement);
    const auto answer = login(service, GetParam().email, TestService::password);
    EXPECT_EQ(answer.status, GetParam().code == "unauthorized" ? 401 : 403);
    EXPECT_EQ(answer.code(), GetParam().code);
    auto client = service.client();
    EXPECT_EQ(client.send("GET", "/v1/snapshot", token).code(), GetParam().code);
    EXPECT_EQ(client.send("POST", "/v1/auth/logout", token).status, 200) << "a token can always be handed back";
    EXPECT_EQ(client.send("GET", "/v1/snapshot", token).code(), "unauthorized");
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, ClosedSignIn,
    testing::Values(Closed{"InactiveMember", "UPDATE members SET active = 0", "gone@sample.example", "inactive_member"},
                    Closed{"Pending", "UPDATE companies SET approval_status = 'pending'", "mira@sample.example",
                           "company_pending"},
                    Closed{"UnknownReview", "UPDATE companies SET approval_status = 'on hold'", "mira@sample.example",
                           "company_pending"},
                    Closed{"Rejected", "UPDATE companies SET approval_status = 'rejected'", "mira@sample.example",
                           "company_rejected"},
                    Closed{"DemonstrationSwitchedOff", "UPDATE companies SET demo_locale = 'en-US', demo_version = 1",
                           "mira@sample.example", "unauthorized"}),
    [](const auto& each) { return each.param.name; });

TEST(SignIn, OpensTheCompanyOfTheLastSignInAmongThoseThatAreOpen)
{
    TestService service;
    service.write([](Connection& connection) {
        foundSample(connection, "other");
        connection.execute("INSERT INTO members SELECT company_id, 'mira-too', 'mira-of-sample', 9, name, role, "
                           "account_ids, locale, active, permissions, account_grants, selected_category_ids, "
                           "transaction_colors, demo_profile, '2026-02-01T08:00:00.000Z' FROM members "
                           "WHERE company_id = 'other' AND id = 'mira'");
    });
    const auto companyNow = [&] {
        return Json::decode<AuthReply>(login(service, "mira@sample.example", TestService::password).body)
            ->snapshot.company.id;
    };
    EXPECT_EQ(companyNow(), "sample");
    change(service, "UPDATE users SET current_company_id = 'other' WHERE id = 'mira-of-sample'");
    EXPECT_EQ(companyNow(), "other");
    change(service, "UPDATE companies SET approval_status = 'rejected' WHERE id = 'other'");
    EXPECT_EQ(companyNow(), "sample");
}

TEST(SignIn, LimitsGuessesByAddressUntilTheWindowEnds)
{
    TestService service{[](ServerOptions& options) {
        options.policy.limits.signInsPerPerson = 2;
        options.policy.limits.signInsPerAddress = 5;
    }};
    const auto guess = [&](const std::string& email) { return login(service, email, "wrong").status; };
    EXPECT_EQ(guess("mira@sample.example"), 401);
    EXPECT_EQ(guess("MIRA@sample.example"), 401);
    const auto refused = login(service, "mira@sample.example", TestService::password);
    EXPECT_EQ(refused.status, 429) << "even the right password waits";
    EXPECT_EQ(refused.code(), "rate_limited");
    EXPECT_EQ(refused.header("retry-after"), "900");
    service.write([&](Connection&) { // it neither writes nor waits for those who do
        EXPECT_EQ(guess("mira@sample.example"), 429);
    });
    EXPECT_EQ(login(service, "mira@sample.example", TestService::password, "127.0.0.2").status, 200)
        << "nobody is locked out by guesses from elsewhere";

    EXPECT_EQ(login(service, "rudi@sample.example", TestService::password).status, 200) << "others are not held up";
    EXPECT_EQ(guess("a@sample.example"), 401);
    EXPECT_EQ(guess("b@sample.example"), 401);
    EXPECT_EQ(guess("c@sample.example"), 429) << "the sixth from this machine";

    service.moveClock(std::chrono::minutes{15});
    EXPECT_EQ(login(service, "mira@sample.example", TestService::password).status, 200);
}

TEST(SignIn, ForgetsFailedGuessesOnceThePasswordIsRight)
{
    TestService service{[](ServerOptions& options) { options.policy.limits.signInsPerPerson = 2; }};
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(login(service, "mira@sample.example", "wrong").status, 401);
        EXPECT_EQ(login(service, "mira@sample.example", TestService::password).status, 200);
    }
}

TEST(SignIn, LetsStrangersGuessTogetherOnlySoOftenAndLocksNobodyOutOfWhereTheyAre)
{
    TestService service{[](ServerOptions& options) { options.policy.limits.strangersPerPerson = 3; }};
    const auto mira = [&](const std::string& password, const std::string& from) {
        return login(service, "mira@sample.example", password, from).status;
    };
    EXPECT_EQ(mira(TestService::password, "127.0.0.9"), 200) << "known from now on";
    for (const std::string from : {"127.0.0.2", "127.0.0.3", "127.0.0.4"})
        EXPECT_EQ(mira("wrong", from), 401) << from;
    EXPECT_EQ(mira(TestService::password, "127.0.0.5"), 429) << "a stranger as long as nothing else is known";
    EXPECT_EQ(mira("wrong", "127.0.0.9"), 401);
    EXPECT_EQ(mira(TestService::password, "127.0.0.9"), 200);
    EXPECT_EQ(login(service, "rudi@sample.example", TestService::password, "127.0.0.5").status, 200);
    for (const std::string from : {"127.0.0.2", "127.0.0.3", "127.0.0.4"})
        EXPECT_EQ(login(service, "nobody@sample.example", "wrong", from).status, 401);
    EXPECT_EQ(login(service, "nobody@sample.example", "wrong", "127.0.0.5").status, 429) << "nobody is no exception";

    service.moveClock(std::chrono::hours{24});
    EXPECT_EQ(mira(TestService::password, "127.0.0.5"), 200);
}

TEST(SignIn, DoesNotCountSignInsFromNewPlacesAsGuesses)
{
    TestService service{[](ServerOptions& options) { options.policy.limits.strangersPerPerson = 2; }};
    for (int place = 2; place < 22; ++place)
        EXPECT_EQ(login(service, "mira@sample.example", TestService::password, fmt::format("127.0.0.{}", place)).status,
                  200);
    std::int64_t kept = 0;
    service.write(
        [&](Connection& connection) { Query{connection, "SELECT COUNT(*) FROM known_places"}.into(kept).next(); });
    EXPECT_EQ(kept, 16) << "the latest";
}

TEST(SignIn, KeepsOutWhomTheOperatorDeactivatedAndWhoHasNoPassword)
{
    TestService service;
    change(service, "UPDATE users SET deactivated_at = '2026-03-01T00:00:00.000Z' WHERE id = 'mira-of-sample'");
    change(service, "UPDATE users SET password_hash = NULL WHERE id = 'rudi-of-sample'");
    EXPECT_EQ(login(service, "mira@sample.example", TestService::password).code(), "inactive_member");
    EXPECT_EQ(login(service, "mira@sample.example", "wrong").code(), "unauthorized");
    EXPECT_EQ(login(service, "rudi@sample.example", "").code(), "unauthorized");
}

TEST(SignIn, IssuesNoTokenForAPasswordThatIsChangedWhileItIsLookedAt)
{
    TestService service;
    const std::string body = R"({"email":"mira@sample.example","password":"an open secret"})";
    const auto ask =
        fmt::format("POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nContent-Length: {}\r\n\r\n{}", body.size(), body);
    std::array hashes{Password::hash(TestService::password), Password::hash(TestService::password)};
    const auto changeHash = [&] { // to another one of the same password; whether the attempt is counted already
        std::int64_t tried = 0;
        service.write([&](Connection& connection) {
            Query{connection, "SELECT COUNT(*) FROM attempts"}.into(tried).next();
            Query{connection, "UPDATE users SET password_hash = :hash"}.bind("hash", hashes.front()).run();
        });
        std::swap(hashes.front(), hashes.back());
        return tried > 0;
    };
    int status = 200;
    for (int round = 0; round < 20 && status == 200; ++round) { // it is 200 when the change came too early or too late
        change(service, "DELETE FROM attempts");
        auto client = service.client();
        client.write(ask);
        while (!changeHash())
            continue;
        status = client.sendRaw("").status;
    }
    EXPECT_EQ(status, 401);
}

TEST(SignIn, SweepsEndedAttemptsAFewAtATime)
{
    TestService service;
    change(service, "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) "
                    "INSERT INTO attempts SELECT 'old:' || i, '2026-01-01T00:00:00.000Z', 1 FROM n");
    EXPECT_EQ(login(service, "nobody@sample.example", "wrong").status, 401);
    std::int64_t left = 0;
    service.write([&](Connection& connection) {
        Query query{connection, "SELECT COUNT(*) FROM attempts WHERE scope LIKE 'old:%'"};
        query.into(left).next();
    });
    EXPECT_LT(left, 100);
    EXPECT_GT(left, 50);
}

TEST(SignIn, EndsSessionsWhenTheirTimeIsOver)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    service.moveClock(std::chrono::hours{24} - std::chrono::seconds{1});
    EXPECT_EQ(client.send("GET", "/v1/snapshot", token).status, 200);
    service.moveClock(std::chrono::seconds{1});
    EXPECT_EQ(client.send("GET", "/v1/snapshot", token).code(), "unauthorized");
    EXPECT_EQ(client.send("GET", "/v1/snapshot", "made-up").code(), "unauthorized");
    EXPECT_EQ(client.send("GET", "/v1/snapshot").code(), "unauthorized");
}

}
