#include <algorithm>
#include <array>
#include <latch>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

struct Company {
    TestService service;

    Company() { Staff::appoint(service); }

    HttpAnswer change(const std::string& by, const std::string& id, const std::string& body)
    {
        return service.as(by, "PATCH", "/v1/members/" + id, body);
    }

    Member member(const std::string& id)
    {
        Member found;
        service.write([&](Connection& connection) {
            found = MemberRepository::find(connection, "sample", id).value_or(Member{});
        });
        return found;
    }
};

}

TEST(Members, GetTheRightsThatTheyAreGivenAtOnce)
{
    Company it;
    auto client = it.service.client();
    const auto rudi = it.service.tokenOf("rudi");
    const auto before = client.send("GET", "/v1/snapshot", rudi).header("etag");
    const auto answer = it.change("mira", "rudi",
                                  R"({"role":"finance","permissions":["viewCapital","viewCapital"],
                                      "accountGrants":[{"accountID":"bank","actions":["view","income"]}]})");
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto reply = Json::decode<LedgerSnapshot>(answer.body);
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->currentMember.id, "mira");
    EXPECT_EQ(std::ranges::find(reply->members, "rudi", &Member::id)->role, "finance");
    const auto after =
        client.send("GET", "/v1/snapshot", rudi, "", "If-None-Match: " + before + "\r\nA-IM: entries\r\n");
    EXPECT_EQ(after.status, 200) << "other rights, so the whole";
    const auto seen = Json::decode<LedgerSnapshot>(after.body);
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->currentMember.permissions, (std::vector<std::string>{"viewCapital"}));
    ASSERT_EQ(seen->accounts.size(), 1u);
    EXPECT_EQ(seen->accounts.front().id, "bank");
    EXPECT_EQ(it.service.problems(), "");
}

TEST(Members, LoseTheirTokensWhenTheyAreDeactivated)
{
    Company it;
    const std::vector tokens{it.service.tokenOf("rudi"), it.service.tokenOf("rudi")};
    EXPECT_EQ(it.change("guest", "rudi", R"({"active":false})").status, 200);
    EXPECT_EQ(it.change("mira", "rudi", R"({"active":true})").status, 200);
    auto client = it.service.client();
    for (const auto& token : tokens)
        EXPECT_EQ(client.send("GET", "/v1/snapshot", token).code(), "unauthorized") << "coming back revives no token";
    EXPECT_EQ(it.service.as("rudi", "GET", "/v1/snapshot").status, 200);
}

TEST(Members, HaveNothingTakenThatTheyWereStillSendingWhenTheyWereDeactivated)
{
    TestService service{[](ServerOptions& options) { options.limits.uncountedBytes = 0; }};
    Staff::appoint(service);
    Staff::set(service, "rudi", "employee", {}, {Staff::every("bank")});
    const auto before = service.snapshotOf("mira").transactions;
    const auto activate = [&](bool active) {
        const auto body = fmt::format(R"({{"active":{}}})", active);
        EXPECT_EQ(service.as("mira", "PATCH", "/v1/members/rudi", body).status, 200);
    };
    const auto sendWhile = [&](const std::string& path, const std::string& body) {
        const auto whole =
            fmt::format("POST {} HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\nContent-Length: {}\r\n\r\n{}", path,
                        service.tokenOf("rudi"), body.size(), body);
        auto slow = service.client();
        slow.write(whole.substr(0, whole.size() - 10));
        service.waitForUnfinished(body.size() - 10);
        activate(false);
        const auto code = slow.sendRaw(whole.substr(whole.size() - 10)).code();
        activate(true);
        return code;
    };
    EXPECT_EQ(sendWhile("/v1/transactions", Json::encode(SampleBooks::income())), "unauthorized");
    EXPECT_EQ(sendWhile("/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf(90'000))), "unauthorized");
    EXPECT_FALSE(ReceiptFolder{service.files()}.isThere()) << "nor is its file kept";
    EXPECT_EQ(service.snapshotOf("mira").transactions, before);
    EXPECT_EQ(service.problems(), "");
}

struct RefusedChange {
    const char* name;
    const char* by;
    const char* member;
    const char* body;
    int status;
    const char* code;
};

class MemberRefusal : public testing::TestWithParam<RefusedChange> {};

TEST_P(MemberRefusal, ChangesNothing)
{
    Company it;
    const auto before = it.member(GetParam().member);
    const auto answer = it.change(GetParam().by, GetParam().member, GetParam().body);
    EXPECT_EQ(answer.status, GetParam().status) << answer.body;
    EXPECT_EQ(answer.code(), GetParam().code);
    EXPECT_EQ(it.member(GetParam().member), before);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, MemberRefusal,
    testing::Values(
        RefusedChange{"ByAnEmployee", "rudi", "rudi", R"({"role":"owner"})", 403, "forbidden"},
        RefusedChange{"OfNobodyByAnEmployee", "rudi", "nobody", R"({})", 403, "forbidden"},
        RefusedChange{"OfNobody", "mira", "nobody", R"({})", 404, "not_found"},
        RefusedChange{"OfAnOwner", "guest", "mira", R"({"active":false})", 403, "forbidden"},
        RefusedChange{"BeyondWhatIsHeld", "guest", "rudi", R"({"permissions":["exportData"]})", 403, "forbidden"},
        RefusedChange{"OfOneself", "guest", "guest", R"({"permissions":["manageCompany","exportData"]})", 403,
                      "forbidden"},
        RefusedChange{"OnAHiddenAccount", "guest", "rudi",
                      R"({"accountGrants":[{"accountID":"vault","actions":["view"]}]})", 404, "not_found"},
        RefusedChange{"OfTheLastOwner", "mira", "mira", R"({"role":"employee"})", 409, "conflict"},
        RefusedChange{"OfTheLastOwnersPresence", "mira", "mira", R"({"active":false})", 409, "conflict"},
        RefusedChange{"ToNoRole", "mira", "rudi", R"({"role":"king"})", 400, "validation_error"},
        RefusedChange{"ToNoAction", "mira", "rudi", R"({"accountGrants":[{"accountID":"bank","actions":["fly"]}]})",
                      400, "validation_error"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Members, OfAnotherCompanyAreNotFound)
{
    Company it;
    it.service.write([](Connection& connection) {
        foundSample(connection, "other");
        connection.execute("UPDATE members SET id = 'stranger' WHERE company_id = 'other' AND id = 'guest'");
    });
    const auto answer = it.change("mira", "stranger", R"({"active":false})");
    EXPECT_EQ(answer.status, 404);
    EXPECT_EQ(answer.body, it.change("mira", "nobody", R"({"active":false})").body);
}

TEST(Members, KeepOneOwnerWhenTwoSendEachOtherAway)
{
    for (int round = 0; round < 5; ++round) {
        Company it;
        const auto whole = it.member("mira");
        Staff::set(it.service, "guest", "owner", *whole.permissions, *whole.accountGrants);
        std::array<int, 2> status{};
        std::latch together{2};
        const auto send = [&](std::size_t at, const std::string& token, const std::string& victim) {
            auto client = it.service.client();
            together.arrive_and_wait();
            status[at] = client.send("PATCH", "/v1/members/" + victim, token, R"({"active":false})").status;
        };
        const auto mira = it.service.tokenOf("mira");
        const auto guest = it.service.tokenOf("guest");
        {
            const std::jthread one{[&] { send(0, mira, "guest"); }};
            const std::jthread other{[&] { send(1, guest, "mira"); }};
        }
        EXPECT_NE(it.member("mira").active, it.member("guest").active);
        EXPECT_EQ(std::ranges::count(status, 200), 1);
    }
}

TEST(Members, KeepWhatTheGiverDoesNotSee)
{
    Company it;
    Staff::set(it.service, "rudi", "employee", {"viewCapital"}, {{"vault", {"view"}}, {"bank", {"view"}}});
    const auto answer = it.change("guest", "rudi", R"({"accountGrants":[{"accountID":"bank","actions":["income"]}]})");
    EXPECT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(it.member("rudi").accountGrants, (std::vector<AccountGrant>{{"bank", {"income"}}, {"vault", {"view"}}}));
    EXPECT_EQ(it.member("rudi").permissions, (std::vector<std::string>{"viewCapital"}));
}

TEST(Profile, RenamesThePersonInEveryCompany)
{
    Company it;
    it.service.write([](Connection& connection) { foundSample(connection, "other"); });
    Staff::joinTo(it.service, "rudi", "other", "employee");
    auto client = it.service.client();
    const auto there = it.service.tokenOf("mira", "other");
    const auto tag = client.send("GET", "/v1/snapshot", there).header("etag");
    const auto answer = it.service.as("rudi", "PATCH", "/v1/me/profile", R"({"name":" Rudi Hartono "})");
    ASSERT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(Json::decode<LedgerSnapshot>(answer.body).value_or(LedgerSnapshot{}).currentMember.name, "Rudi Hartono");
    const auto changed = client.send("GET", "/v1/snapshot", there, "", "If-None-Match: " + tag + "\r\n");
    ASSERT_EQ(changed.status, 200) << "the other company changed too";
    EXPECT_NE(changed.body.find("Rudi Hartono"), std::string::npos);
    for (const auto* body : {R"({"name":""})", R"({"name":"two\nlines"})", R"({})"})
        EXPECT_EQ(it.service.as("rudi", "PATCH", "/v1/me/profile", body).code(), "validation_error") << body;
}

TEST(CategoryPreferences, AreTheMembersOwn)
{
    Company it;
    const auto select = [&](const char* id, bool selected) {
        return it.service.as("rudi", "PATCH", "/v1/me/category-preferences",
                             Json::encode(CategorySelection{id, selected}));
    };
    EXPECT_EQ(select("rent", true).status, 200);
    EXPECT_EQ(select("sales", true).status, 200);
    EXPECT_EQ(select("rent", true).status, 200);
    EXPECT_EQ(it.service.snapshotOf("rudi").currentMember.selectedCategoryIDs,
              (std::vector<std::string>{"sales", "rent"}));
    EXPECT_EQ(select("rent", false).status, 200);
    EXPECT_EQ(select("fax", true).code(), "CATEGORY_ARCHIVED");
    EXPECT_EQ(select("fax", false).status, 200) << "what was archived since can be put away";
    EXPECT_EQ(select("nothing", true).status, 404);
    EXPECT_EQ(it.member("rudi").selectedCategoryIDs, (std::vector<std::string>{"sales"}));
    EXPECT_EQ(it.member("mira").selectedCategoryIDs, std::nullopt);
}

}
