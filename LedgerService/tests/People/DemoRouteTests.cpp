#include <array>
#include <functional>
#include <latch>
#include <map>
#include <thread>
#include <vector>

#include <boost/describe.hpp>
#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Identity/Sessions/DemoCompanies.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
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

void offer(ServerOptions& options)
{
    options.policy.demonstration = DemonstrationMode::shared;
}

HttpAnswer enter(const TestService& service, const std::string& body)
{
    return service.client().send("POST", "/v1/demo", "", body);
}

AuthReply entered(const TestService& service, const std::string& body)
{
    const auto answer = enter(service, body);
    auto reply = Json::decode<AuthReply>(answer.body);
    EXPECT_TRUE(reply.has_value()) << answer.body.substr(0, 200);
    return reply.value_or(AuthReply{});
}

}

TEST(Demonstration, LetsEachProfileInWithItsOwnRights)
{
    TestService service{offer};
    std::map<std::string, std::size_t> entriesSeen;
    std::map<std::string, bool> records;
    for (const auto profile : DemoIdentity::profiles) {
        const auto reply = entered(service, fmt::format(R"({{"locale":"en-US","profile":"{}"}})", profile));
        entriesSeen.emplace(profile, reply.snapshot.transactions.size());
        records.emplace(profile, reply.snapshot.currentMember.canRecord());
        EXPECT_EQ(service.client().send("GET", "/v1/snapshot", reply.token).status, 200);
    }
    EXPECT_GT(entriesSeen["owner"], 200u);
    EXPECT_EQ(entriesSeen["admin"], entriesSeen["owner"]);
    EXPECT_LT(entriesSeen["employee"], entriesSeen["owner"] / 2) << "sees the float only";
    EXPECT_GT(entriesSeen["employee"], 0u);
    EXPECT_TRUE(records["finance"] && records["employee"]);
    EXPECT_EQ(service.problems(), "");
}

TEST(Demonstration, HasOneCompanyALanguageHoweverManyComeAtOnce)
{
    TestService service{offer};
    std::array<std::string, 4> companies;
    {
        std::vector<std::jthread> visitors;
        for (auto& company : companies)
            visitors.emplace_back(
                [&] { company = entered(service, R"({"locale":"id","profile":"owner"})").snapshot.company.id; });
    }
    EXPECT_FALSE(companies[0].empty());
    EXPECT_EQ(companies, (std::array{companies[0], companies[0], companies[0], companies[0]}));
    const auto vietnamese = entered(service, R"({"locale":"vi-VN","profile":"owner"})").snapshot.company;
    EXPECT_NE(vietnamese.id, companies[0]);
    EXPECT_EQ(vietnamese.demo->locale, "vi-VN");
    EXPECT_EQ(entered(service, R"({"profile":"admin"})").snapshot.company.demo->locale, "zh-CN");
}

TEST(Demonstration, TakesThePublicPasswordEvenBeforeAnyoneHasEntered)
{
    TestService service{offer};
    const auto login = [&](std::string_view email) {
        return service.client().send("POST", "/v1/auth/login", "",
                                     fmt::format(R"({{"email":"{}","password":"{}"}})", email, DemoIdentity::password));
    };
    const auto answer = login("dewi.anggraini@en.demo.tallyfold.example");
    const auto reply = Json::decode<AuthReply>(answer.body);
    ASSERT_TRUE(reply.has_value()) << answer.body.substr(0, 200);
    EXPECT_EQ(reply->snapshot.company.demo->locale, "en-US");
    EXPECT_EQ(login("nobody@en.demo.tallyfold.example").status, 401);
    EXPECT_EQ(login("nobody@fr.demo.tallyfold.example").status, 401);
}

TEST(Demonstration, IsRefusedWhereItIsNotOfferedOrNotKnown)
{
    TestService closed;
    const auto refused = enter(closed, R"({"profile":"owner"})");
    EXPECT_EQ(refused.status, 403);
    EXPECT_EQ(refused.code(), "forbidden");
    TestService service{[](ServerOptions& options) {
        offer(options);
        options.policy.limits.demonstrationsPerAddress = 1;
    }};
    EXPECT_EQ(enter(service, R"({"profile":"auditor"})").code(), "validation_error");
    EXPECT_EQ(enter(service, R"({"locale":"en-US"})").code(), "validation_error");
    EXPECT_EQ(enter(service, R"({"profile":"owner"})").status, 200);
    EXPECT_EQ(enter(service, R"({"profile":"owner"})").status, 429);
}

TEST(Demonstration, LetsNobodyInWhoWasDeactivated)
{
    TestService service{offer};
    EXPECT_EQ(enter(service, R"({"profile":"partner"})").status, 200);
    service.write([](Connection& connection) {
        connection.execute("UPDATE members SET active = 0 WHERE demo_profile = 'partner'");
    });
    EXPECT_EQ(enter(service, R"({"profile":"partner"})").code(), "inactive_member");
    EXPECT_EQ(enter(service, R"({"profile":"owner"})").status, 200);
}

TEST(Demonstration, GivesEachVisitorACompanyForADay)
{
    TestService service{[](ServerOptions& options) {
        options.policy.demonstration = DemonstrationMode::visitors;
        options.policy.limits.visits = 3;
        options.policy.limits.visitsPerAddress = 4;
    }};
    const auto one = entered(service, R"({"locale":"en-US","profile":"owner"})");
    const auto other = entered(service, R"({"locale":"en-US","profile":"finance"})");
    EXPECT_NE(one.snapshot.company.id, other.snapshot.company.id);
    EXPECT_EQ(one.snapshot.company.demo, other.snapshot.company.demo);
    EXPECT_EQ(one.snapshot.company.name, other.snapshot.company.name);
    EXPECT_GT(one.snapshot.transactions.size(), 200u);
    const auto login =
        fmt::format(R"({{"email":"{}","password":"{}"}})", one.snapshot.currentMember.email, DemoIdentity::password);
    EXPECT_EQ(service.client().send("POST", "/v1/auth/login", "", login).status, 401) << "nobody else gets in";
    EXPECT_EQ(service.problems(), "");

    service.moveClock(std::chrono::hours{23});
    const auto late = entered(service, R"({"profile":"owner"})");
    EXPECT_EQ(enter(service, R"({"profile":"owner"})").code(), "rate_limited") << "there are three";
    EXPECT_EQ(enter(service, R"({"profile":"owner"})").status, 429);
    service.moveClock(std::chrono::minutes{61});
    const auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value());
    EXPECT_EQ(DemoCompanies::sweep(**database, service.clock()()), 2);
    EXPECT_EQ(service.client().send("GET", "/v1/snapshot", one.token).status, 401);
    EXPECT_EQ(service.client().send("GET", "/v1/snapshot", late.token).status, 200);
    EXPECT_EQ(service.problems(), "");
    std::string left;
    {
        const auto loan = (*database)->borrow();
        for (const auto* table :
             {"entries", "legs", "members", "users", "sessions", "entry_fragments", "audit_records"}) {
            std::int64_t rows = 0;
            Query query{*loan, fmt::format("SELECT COUNT(*) FROM {} WHERE {} LIKE '%{}%'", table,
                                           std::string_view{table} == "users"             ? "id"
                                           : std::string_view{table} == "entry_fragments" ? "text"
                                           : std::string_view{table} == "audit_records"   ? "scope"
                                                                                          : "company_id",
                                           one.snapshot.company.id)};
            query.into(rows).next();
            left += fmt::format("{} ", rows);
        }
    }
    EXPECT_EQ(left, "0 0 0 0 0 0 0 ");
    entered(service, R"({"profile":"owner"})");
    EXPECT_EQ(service.problems(), "");
}

/// Several processes that serve the same books sweep at the same moments.
TEST(Demonstration, IsSweptByTwoAtOnceAndCountedOnce)
{
    TestService service{[](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::visitors; }};
    for (int visits = 0; visits < 3; ++visits)
        entered(service, R"({"profile":"owner"})");
    service.moveClock(std::chrono::hours{25});
    std::array<int, 2> swept{};
    std::latch ready{2};
    {
        std::vector<std::jthread> sweepers;
        for (auto& count : swept)
            sweepers.emplace_back([&] {
                const auto database = Database::open(service.databaseFile());
                ready.arrive_and_wait();
                count = DemoCompanies::sweep(**database, service.clock()());
            });
    }
    EXPECT_EQ(swept[0] + swept[1], 3);
    EXPECT_EQ(service.problems(), "");
}

TEST(Demonstration, IsSweptAlthoughSomebodyHasJoinedARealCompany)
{
    TestService service{[](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::visitors; }};
    const auto joined = entered(service, R"({"profile":"owner"})").snapshot;
    entered(service, R"({"profile":"owner"})");
    service.moveClock(std::chrono::hours{25});
    auto member = joined.currentMember;
    const auto person = member.userID;
    member.accountGrants.emplace();
    member.selectedCategoryIDs.reset();
    service.write([&](Connection& connection) {
        MemberRepository::insert(connection, "sample", member, std::nullopt, "2026-03-10T08:00:00.000Z");
        UserRepository::writeCurrentCompany(connection, person, joined.company.id);
    });
    const auto database = Database::open(service.databaseFile());
    EXPECT_EQ(DemoCompanies::sweep(**database, service.clock()()), 2);
    const auto loan = (*database)->borrow();
    const auto kept = UserRepository::find(*loan, person);
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->currentCompanyID, std::nullopt);
    EXPECT_EQ(service.problems(), "");
}

TEST(Demonstration, ThatIsSweptWhileItIsReadEndsWithoutTheEntriesOfOthers)
{
    TestService service{[](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::visitors; }};
    const auto seen = entered(service, R"({"profile":"owner"})").snapshot;
    const auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value());
    auto answer = SnapshotReader::answer(**database, seen.company.id, seen.currentMember.id, {});
    ASSERT_TRUE(answer.has_value());
    service.moveClock(std::chrono::hours{25});
    ASSERT_EQ(DemoCompanies::sweep(**database, service.clock()()), 1);
    EXPECT_THROW(answer->more(), std::runtime_error) << "a list that just ends would pass for the whole";

    service.write([](Connection& connection) { foundSample(connection, "founded-since"); }); // takes its place
    EXPECT_THROW(answer->more(), std::runtime_error);
}

/// One that cannot go is tried again and keeps none of the others.
TEST(Demonstration, IsSweptBesideOneThatCannotBe)
{
    TestService service{[](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::visitors; }};
    const auto stuck = entered(service, R"({"profile":"owner"})").snapshot;
    service.moveClock(std::chrono::hours{1});
    entered(service, R"({"profile":"owner"})");
    const auto database = Database::open(service.databaseFile());
    service.write([&](Connection& connection) {
        connection.execute("CREATE TABLE holders (user_id TEXT NOT NULL REFERENCES users (id))");
        connection.execute(fmt::format("INSERT INTO holders VALUES ('{}')", stuck.currentMember.userID));
    });
    service.moveClock(std::chrono::hours{25});
    EXPECT_EQ(DemoCompanies::sweep(**database, service.clock()()), 1);
    service.write([](Connection& connection) { connection.execute("DROP TABLE holders"); });
    EXPECT_EQ(DemoCompanies::sweep(**database, service.clock()()), 1);
    EXPECT_EQ(service.problems(), "");
}

TEST(Demonstration, TakesOnlySoManyChangesFromAVisitor)
{
    const auto rename = [](const TestService& service, const std::string& token) {
        return service.client().send("PATCH", "/v1/me/profile", token, R"({"name":"Dewi"})").code();
    };
    const auto visited = [](ServerOptions& options) { options.policy.demonstration = DemonstrationMode::visitors; };
    TestService usual{visited};
    EXPECT_EQ(rename(usual, entered(usual, R"({"profile":"owner"})").token), "")
        << "the books it begins with are not counted out";

    TestService full{[&](ServerOptions& options) {
        visited(options);
        options.policy.limits.visitChanges = 0;
    }};
    const auto visitor = entered(full, R"({"profile":"owner"})");
    EXPECT_EQ(rename(full, visitor.token), "rate_limited");
    const auto seen = full.client().send("GET", "/v1/snapshot", visitor.token);
    EXPECT_EQ(Json::decode<LedgerSnapshot>(seen.body).value().currentMember.name, visitor.snapshot.currentMember.name);
    EXPECT_EQ(rename(full, full.tokenOf("mira")), "") << "a company that is no demonstration";
    EXPECT_EQ(full.client().send("POST", "/v1/auth/logout", visitor.token).status, 200);
    EXPECT_EQ(full.problems(), "");
}

TEST(Demonstration, CountsWhatAVisitorLeavesByEnteringTheCompanyAgain)
{
    const auto found = [](int changes, const std::function<void(TestService&, const AuthReply&)>& visit) {
        TestService service{[changes](ServerOptions& options) {
            options.policy.demonstration = DemonstrationMode::visitors;
            options.policy.limits.visitChanges = changes;
        }};
        visit(service, entered(service, R"({"profile":"owner"})"));
    };
    int founding = 0;
    found(5'000, [&](TestService& service, const AuthReply& visitor) {
        service.write([&](Connection& connection) {
            Query query{connection, "SELECT last_sequence FROM companies WHERE id = :company"};
            query.bind("company", visitor.snapshot.company.id).into(founding).next();
        });
    });
    found(founding + 1, [](TestService& service, const AuthReply& visitor) {
        const auto again = [&] {
            return service.client()
                .send("POST", "/v1/me/companies/switch", visitor.token,
                      R"({"companyID":")" + visitor.snapshot.company.id + R"("})")
                .code();
        };
        EXPECT_EQ(again(), "");
        EXPECT_EQ(again(), "rate_limited") << "each time leaves a token and a record";
    });
}

}
