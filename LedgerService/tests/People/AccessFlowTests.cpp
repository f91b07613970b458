#include <algorithm>
#include <filesystem>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

using namespace std::chrono_literals;

constexpr auto newPassword = "a fresh secret";

/// The six digits of a letter's subject.
std::string codeIn(const std::string& letter)
{
    const auto at = letter.find("Subject: ");
    const auto digits = letter.find_first_of("0123456789", at);
    return letter.substr(digits, 6);
}

std::string other(const std::string& code)
{
    return code == "000000" ? "000001" : "000000";
}

/// Steps of the flow as a client takes them, in English.
struct Flow {
    explicit Flow(const std::function<void(ServerOptions&)>& adjust = [](ServerOptions&) {}) : service(adjust) {}

    HttpAnswer post(const std::string& path, const std::string& body, const std::string& token = "",
                    const std::string& from = "127.0.0.1")
    {
        return service.clientFrom(from).send("POST", path, token, body);
    }

    HttpAnswer start(const std::string& email, const std::string& purpose = "reset", const std::string& code = "",
                     const std::string& from = "127.0.0.1")
    {
        return post("/v1/auth/access/start", Json::encode(AccessStart{email, code, purpose, "en-US"}), "", from);
    }

    /// A challenge that must have been made.
    std::string challenge(const std::string& email, const std::string& purpose = "reset", const std::string& code = "")
    {
        const auto answer = start(email, purpose, code);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<AccessChallenge>(answer.body).value_or(AccessChallenge{}).challengeID;
    }

    HttpAnswer verify(const std::string& challengeID, const std::string& code)
    {
        return post("/v1/auth/access/verify", Json::encode(AccessCode{challengeID, code}));
    }

    AccessVerification verified(const std::string& challengeID, const std::string& code)
    {
        const auto answer = verify(challengeID, code);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<AccessVerification>(answer.body).value_or(AccessVerification{});
    }

    HttpAnswer complete(const std::string& challengeID, const std::string& ticket,
                        const std::string& password = newPassword, const std::string& name = "")
    {
        return post("/v1/auth/access/complete",
                    Json::encode(AccessCompletion{challengeID, ticket, name, password, "id-ID"}));
    }

    HttpAnswer login(const std::string& email, const std::string& password)
    {
        return post("/v1/auth/login", Json::encode(Login{email, password}));
    }

    int snapshot(const std::string& token) { return service.client().send("GET", "/v1/snapshot", token).status; }

    std::string invite(const std::string& email)
    {
        Staff::appoint(service);
        const Invite invite{"Lan", email, "finance", {}, {}, {{"bank", {"view"}}}};
        const auto answer = service.as("mira", "POST", "/v1/invites", Json::encode(invite));
        service.write([](Connection& connection) { connection.execute("DELETE FROM mails"); }); // the code is enough
        return Json::decode<InviteResponse>(answer.body).value_or(InviteResponse{}).code;
    }

    /// The code of the first letter whose subject has one.
    std::string mailedCode(std::size_t letters = 1)
    {
        for (const auto& letter : service.mails(letters)) {
            if (const auto code = codeIn(letter);
                std::ranges::all_of(code, [](char each) { return each >= '0' && each <= '9'; }) &&
                letter.contains(code + " is your code"))
                return code;
        }
        ADD_FAILURE() << "no letter with a code came";
        return {};
    }

    std::int64_t count(const std::string& table)
    {
        std::int64_t rows = 0;
        service.write(
            [&](Connection& connection) { Query{connection, "SELECT COUNT(*) FROM " + table}.into(rows).next(); });
        return rows;
    }

    TestService service;
};

}

TEST(AccessFlow, SetsANewPasswordAndEndsAllOtherTokens)
{
    Flow flow;
    const auto before = flow.service.tokenOf("mira");
    const auto rudis = flow.service.tokenOf("rudi");
    const auto challenge = flow.challenge(" Mira@sample.example ");
    const auto verification = flow.verified(challenge, flow.mailedCode());
    EXPECT_TRUE(verification.existingAccount);
    EXPECT_EQ(verification.companyName, std::nullopt);
    EXPECT_EQ(verification.email, "mira@sample.example");
    EXPECT_EQ(flow.complete(challenge, verification.ticket, "short").code(), "validation_error");
    EXPECT_EQ(flow.snapshot(before), 200) << "nothing has happened yet";
    const auto opened = Json::decode<AuthResponse>(flow.complete(challenge, verification.ticket).body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->snapshot.currentMember.id, "mira");
    EXPECT_EQ(flow.snapshot(opened->token), 200);
    EXPECT_EQ(flow.snapshot(before), 401);
    EXPECT_EQ(flow.snapshot(rudis), 200);
    EXPECT_EQ(flow.login("mira@sample.example", TestService::password).status, 401);
    EXPECT_EQ(flow.login("mira@sample.example", newPassword).status, 200);
    EXPECT_EQ(flow.complete(challenge, verification.ticket).code(), "invalid_verification") << "once";
}

TEST(AccessFlow, ActivatesAnInvitedPersonOnce)
{
    Flow flow;
    const auto invitation = flow.invite("lan@pho.example");
    const auto challenge = flow.challenge("lan@pho.example", "join", invitation);
    const auto letters = flow.service.mails(1);
    ASSERT_FALSE(letters.empty());
    const auto subject = letters[0].substr(letters[0].find("Your Tallyfold code is "));
    const auto verification = flow.verified(challenge, subject.substr(23, 6));
    EXPECT_FALSE(verification.existingAccount);
    EXPECT_EQ(verification.companyName, "Sample sample");
    EXPECT_EQ(flow.complete(challenge, verification.ticket).code(), "validation_error") << "nobody without a name";
    const auto opened =
        Json::decode<AuthResponse>(flow.complete(challenge, verification.ticket, newPassword, "Lan").body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->snapshot.company.id, "sample");
    EXPECT_EQ(opened->snapshot.currentMember.name, "Lan");
    EXPECT_EQ(opened->snapshot.currentMember.locale, "id-ID");
    EXPECT_EQ(flow.start("lan@pho.example", "join", invitation).code(), "invalid_invitation");
    EXPECT_EQ(flow.login("lan@pho.example", newPassword).status, 200);
    EXPECT_EQ(flow.service.problems(), "");
}

TEST(AccessFlow, LetsSomebodyWithAPasswordJoinWithIt)
{
    Flow flow;
    flow.service.write([](Connection& connection) { foundSample(connection, "other"); });
    const auto before = flow.service.tokenOf("rudi", "other");
    const auto challenge = flow.challenge("rudi@other.example", "join", flow.invite("rudi@other.example"));
    const auto letter = flow.service.mails(1).at(0);
    const auto code = letter.substr(letter.find("Your Tallyfold code is ") + 23, 6);
    const auto verification = flow.verified(challenge, code);
    EXPECT_TRUE(verification.existingAccount);
    EXPECT_EQ(flow.complete(challenge, verification.ticket, "another one").code(), "unauthorized");
    const auto opened = Json::decode<AuthResponse>(
        flow.complete(challenge, verification.ticket, TestService::password, "Not Rudi").body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->snapshot.company.id, "sample");
    EXPECT_EQ(opened->snapshot.currentMember.userID, "rudi-of-other");
    EXPECT_EQ(flow.snapshot(before), 200) << "the password is the same";
}

TEST(AccessFlow, TellsNobodyWhoIsRegistered)
{
    Flow flow;
    const auto shape = [](HttpAnswer answer) {
        const auto id = Json::decode<AccessChallenge>(answer.body).value_or(AccessChallenge{}).challengeID;
        return fmt::format("{} {} bytes", answer.status, answer.body.size()) + (id.empty() ? " no id" : "");
    };
    flow.service.write([](Connection& connection) {
        connection.execute("UPDATE users SET deactivated_at = '2026' WHERE id = 'guest-of-sample'");
    });
    const auto known = shape(flow.start("mira@sample.example"));
    EXPECT_EQ(flow.count("access_challenges"), 1);
    EXPECT_EQ(flow.count("attempts"), 3);
    EXPECT_EQ(shape(flow.start("nobody@sample.example")), known);
    EXPECT_EQ(flow.count("access_challenges"), 2) << "the same is written";
    EXPECT_EQ(flow.count("attempts"), 5) << "one scope is that of the client's address";
    EXPECT_EQ(shape(flow.start("guest@sample.example")), known);
    EXPECT_EQ(shape(flow.start("mira@en.demo.tallyfold.example")), known);
    flow.service.moveClock(1s);
    EXPECT_EQ(shape(flow.start("rudi@sample.example")), known);
    EXPECT_EQ(flow.service.mails(2).size(), 2u) << "to mira and rudi alone";
    EXPECT_EQ(flow.verify("made-up", "123456").body,
              flow.verify(flow.challenge("nobody@sample.example"), "123456").body);
    EXPECT_EQ(flow.start("nobody@sample.example", "join", "ABC").body,
              flow.start("mira@sample.example", "join", "ABC").body);
    EXPECT_EQ(flow.start("mira@sample.example", "party").code(), "validation_error");
    EXPECT_EQ(flow.start("mira").code(), "validation_error");
}

TEST(AccessFlow, TakesACodeFiveTimesAndForFifteenMinutesAndOnce)
{
    Flow flow{[](ServerOptions& options) { options.policy.limits.codesPerPerson = 20; }};
    const auto first = flow.challenge("mira@sample.example");
    const auto code = flow.mailedCode();
    for (int at = 0; at < 4; ++at)
        EXPECT_EQ(flow.verify(first, other(code)).code(), "invalid_verification");
    const auto ticket = flow.verified(first, " " + code + " ").ticket;
    EXPECT_EQ(flow.verify(first, code).code(), "invalid_verification") << "used";
    EXPECT_EQ(flow.complete(first, "made-up").code(), "invalid_verification");
    EXPECT_EQ(flow.complete("made-up", ticket).code(), "invalid_verification");
    flow.service.moveClock(15min);
    EXPECT_EQ(flow.complete(first, ticket).code(), "invalid_verification") << "too late";

    const auto wrong = flow.challenge("rudi@sample.example");
    const auto rudis = codeIn(flow.service.mails(2).back());
    for (int at = 0; at < 5; ++at)
        EXPECT_EQ(flow.verify(wrong, other(rudis)).code(), "invalid_verification");
    EXPECT_EQ(flow.verify(wrong, rudis).code(), "invalid_verification") << "the sixth";

    flow.service.moveClock(1s);
    const auto late = flow.challenge("rudi@sample.example");
    const auto latest = codeIn(flow.service.mails(3).back());
    EXPECT_EQ(flow.verify(wrong, latest).code(), "invalid_verification") << "of another challenge";
    flow.service.moveClock(15min);
    EXPECT_EQ(flow.verify(late, latest).code(), "invalid_verification");
    EXPECT_EQ(flow.challenge("mira@sample.example").empty(), false);
    EXPECT_EQ(flow.count("access_challenges"), 1) << "what has expired is swept";
}

TEST(AccessFlow, IsCompletedOnceByTwoAtTheSameTime)
{
    Flow flow;
    const auto challenge = flow.challenge("mira@sample.example");
    const auto ticket = flow.verified(challenge, flow.mailedCode()).ticket;
    std::array<HttpAnswer, 2> answers;
    {
        std::vector<std::jthread> both;
        for (auto& answer : answers)
            both.emplace_back([&] { answer = flow.complete(challenge, ticket); });
    }
    EXPECT_EQ(std::ranges::count(answers, 200, &HttpAnswer::status), 1);
    EXPECT_EQ(std::ranges::count_if(answers, [](const auto& each) { return each.code() == "invalid_verification"; }),
              1);
}

TEST(AccessFlow, KeepsANewPasswordAlsoWhenNoCompanyIsOpen)
{
    Flow flow;
    const auto challenge = flow.challenge("mira@sample.example");
    const auto ticket = flow.verified(challenge, flow.mailedCode()).ticket;
    flow.service.write(
        [](Connection& connection) { connection.execute("UPDATE companies SET approval_status = 'pending'"); });
    EXPECT_EQ(flow.complete(challenge, ticket).code(), "company_pending");
    EXPECT_EQ(flow.login("mira@sample.example", newPassword).code(), "company_pending");
    EXPECT_EQ(flow.login("mira@sample.example", TestService::password).code(), "unauthorized");
}

TEST(AccessFlow, SaysWhenNoMailCanBeSentToAnybody)
{
    Flow without{[](ServerOptions& options) { options.mail.spoolFolder.clear(); }};
    const auto known = without.start("mira@sample.example");
    EXPECT_EQ(known.status, 503);
    EXPECT_EQ(known.code(), "mail_unavailable");
    EXPECT_EQ(without.start("nobody@sample.example").body, known.body);

    Flow down{[](ServerOptions& options) {
        options.mail.spoolFolder.clear();
        options.mail.smtp.url = "smtp://127.0.0.1:1";
    }};
    EXPECT_EQ(down.start("mira@sample.example").code(), "mail_unavailable");
    EXPECT_EQ(down.start("nobody@sample.example").code(), "mail_unavailable");
    EXPECT_EQ(down.login("mira@sample.example", TestService::password).status, 200) << "the rest goes on";
}

TEST(AccessFlow, LimitsLettersToOnePersonButNotFromWhereThePersonIs)
{
    Flow flow{[](ServerOptions& options) {
        options.policy.limits.codesPerPerson = 2;
        options.policy.limits.strangersCodesPerPerson = 3;
    }};
    const auto from = [&](const std::string& place, const std::string& email) {
        return flow.start(email, "reset", "", place).status;
    };
    EXPECT_EQ(
        flow.post("/v1/auth/login", Json::encode(Login{"mira@sample.example", TestService::password}), "", "127.0.0.9")
            .status,
        200);
    for (const std::string email : {"mira@sample.example", "nobody@sample.example"}) {
        EXPECT_EQ(from("127.0.0.1", email), 200);
        EXPECT_EQ(from("127.0.0.1", email), 200);
        EXPECT_EQ(from("127.0.0.1", email), 429) << email;
        EXPECT_EQ(from("127.0.0.2", email), 200);
        EXPECT_EQ(from("127.0.0.3", email), 429) << email;
    }
    EXPECT_EQ(from("127.0.0.9", "mira@sample.example"), 200);
}

TEST(PasswordChange, EndsAllOtherTokensOfThePerson)
{
    Flow flow;
    const auto here = flow.service.tokenOf("mira");
    const auto there = flow.service.tokenOf("mira");
    const auto change = [&](const std::string& current, const std::string& next, const std::string& token) {
        return flow.post("/v1/me/password", Json::encode(PasswordChange{current, next}), token);
    };
    const auto wrong = change("wrong", newPassword, here);
    EXPECT_EQ(wrong.status, 400) << "a 401 would end the client's session";
    EXPECT_EQ(wrong.code(), "invalid_verification");
    EXPECT_EQ(change(TestService::password, "short", here).code(), "validation_error");
    EXPECT_EQ(change(TestService::password, newPassword, "made-up").code(), "unauthorized");
    EXPECT_EQ(flow.snapshot(there), 200);
    EXPECT_EQ(change(TestService::password, newPassword, here).body, R"({"ok":true})");
    EXPECT_EQ(flow.snapshot(here), 200);
    EXPECT_EQ(flow.snapshot(there), 401);
    EXPECT_EQ(flow.login("mira@sample.example", newPassword).status, 200);
    EXPECT_NE(flow.service.mails(1).at(0).find("To: <mira@sample.example>\r\n"), std::string::npos);
}

TEST(PasswordChange, CountsWrongPasswordsAsGuesses)
{
    Flow flow{[](ServerOptions& options) { options.policy.limits.signInsPerPerson = 2; }};
    const auto token = flow.service.tokenOf("mira");
    const auto guess = [&] {
        return flow.post("/v1/me/password", Json::encode(PasswordChange{"wrong", newPassword}), token).status;
    };
    EXPECT_EQ(guess(), 400);
    EXPECT_EQ(guess(), 400);
    EXPECT_EQ(guess(), 429);
    EXPECT_EQ(flow.login("mira@sample.example", TestService::password).status, 429);
}

}
