#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

/// "mira" of the sample invites "rudi" of the company "other".
struct Inviting {
    TestService service;
    std::string invited = service.tokenOf("rudi", prepared());

    const char* prepared()
    {
        service.write([](Connection& connection) { foundSample(connection, "other"); });
        Staff::appoint(service);
        return "other";
    }

    HttpAnswer invite(const std::string& by, const Invite& body)
    {
        return service.as(by, "POST", "/v1/invites", Json::encode(body));
    }

    /// A code that must have been made.
    std::string codeOf(const HttpAnswer& answer)
    {
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<InviteResponse>(answer.body).value_or(InviteResponse{}).code;
    }

    std::string code() { return codeOf(invite("mira", rudi())); }

    static Invite rudi()
    {
        return {"Rudi", " Rudi@Other.example ", "finance", {}, {"viewDividends"}, {{"bank", {"view", "income"}}}};
    }

    HttpAnswer accept(const std::string& code, const std::string& token)
    {
        const auto body = Json::encode(InvitationAcceptance{.code = code, .locale = "id"});
        return service.client().send("POST", "/v1/invites/accept", token, body);
    }

    HttpAnswer preview(const std::string& code, const std::string& token)
    {
        return service.client().send("POST", "/v1/me/invitation", token, Json::encode(InvitationLookup{code}));
    }

    std::vector<PendingInvitation> pending(const std::string& by = "mira")
    {
        const auto list = Json::decode<InvitationListResponse>(service.as(by, "GET", "/v1/invites").body);
        EXPECT_TRUE(list.has_value());
        return list ? list->invitations : std::vector<PendingInvitation>{};
    }

    HttpAnswer revoke(const std::string& id, const std::string& by = "mira")
    {
        return service.as(by, "POST", "/v1/invites/" + id + "/revoke");
    }
};

std::string lowered(std::string code)
{
    std::string typed;
    for (const char each : code) {
        if (each != '-')
            typed += each >= 'A' && each <= 'F' ? static_cast<char>(each - 'A' + 'a') : each;
    }
    return "  " + typed + "\n";
}

}

TEST(Invitations, OpenTheCompanyToThePersonTheyWereMadeFor)
{
    Inviting it;
    const auto code = it.code();
    const auto shown = Json::decode<InvitationPreview>(it.preview(lowered(code), it.invited).body);
    ASSERT_TRUE(shown.has_value());
    EXPECT_EQ(*shown, (InvitationPreview{"Sample sample", "rudi@other.example"}));
    const auto answer = it.accept(code, it.invited);
    const auto opened = Json::decode<AuthResponse>(answer.body);
    ASSERT_TRUE(opened.has_value()) << answer.body;
    EXPECT_EQ(opened->snapshot.company.id, "sample");
    const auto& member = opened->snapshot.currentMember;
    EXPECT_EQ(member.userID, "rudi-of-other");
    EXPECT_EQ(member.role, "finance");
    EXPECT_EQ(member.locale, "id-ID");
    EXPECT_EQ(member.permissions, (std::vector<std::string>{"viewDividends"}));
    EXPECT_EQ(member.accountGrants, (std::vector<AccountGrant>{{"bank", {"view", "income"}}}));
    EXPECT_EQ(opened->snapshot.accounts.size(), 1u);

    auto client = it.service.client();
    EXPECT_EQ(client.send("GET", "/v1/snapshot", it.invited).status, 200) << "the reply may have been lost";
    EXPECT_EQ(client.send("GET", "/v1/snapshot", opened->token).status, 200);
    EXPECT_TRUE(it.pending().empty());
    EXPECT_EQ(it.service.snapshotOf("mira").members.size(), 5u);
    EXPECT_EQ(it.service.problems(), "");
}

TEST(Invitations, AreNotForTheMembersOfADemonstration)
{
    Inviting it;
    auto visitor = Inviting::rudi();
    visitor.email = " Rudi@EN-0a1b.demo.tallyfold.example";
    EXPECT_EQ(it.invite("mira", visitor).code(), "validation_error");
    const auto code = it.code();
    it.service.write([](Connection& connection) { // an invitation that was made before these were refused
        for (const auto* table : {"users", "invitations"})
            connection.execute(fmt::format(
                "UPDATE {} SET email = 'rudi@en.demo.tallyfold.example' WHERE email = 'rudi@other.example'", table));
    });
    EXPECT_EQ(it.preview(code, it.invited).code(), "invalid_invitation");
    EXPECT_EQ(it.accept(code, it.invited).code(), "invalid_invitation");
}

TEST(Invitations, AnswerWithTheTokenEvenToWhoWantsLittle)
{
    Inviting it;
    const auto body = Json::encode(InvitationAcceptance{.code = it.code(), .locale = ""});
    const auto answer =
        it.service.client().send("POST", "/v1/invites/accept", it.invited, body, "Prefer: return=minimal\r\n");
    EXPECT_TRUE(Json::decode<AuthResponse>(answer.body).has_value()) << answer.body;
}

TEST(Invitations, AreInvalidForOneReasonToEverybodyElse)
{
    Inviting it;
    const auto code = it.code();
    const auto elsewhere = it.service.tokenOf("guest", "other");
    const auto wrong = it.accept("00000-00000-00000-00000", it.invited);
    EXPECT_EQ(wrong.status, 400);
    EXPECT_EQ(wrong.code(), "invalid_invitation");
    EXPECT_EQ(it.preview(code, elsewhere).body, wrong.body) << "made for another address";
    EXPECT_EQ(it.accept(code, elsewhere).body, wrong.body);
    EXPECT_EQ(it.accept("", it.invited).body, wrong.body);

    const auto again = it.code(); // takes the place of the first
    EXPECT_EQ(it.accept(code, it.invited).body, wrong.body);
    ASSERT_EQ(it.pending().size(), 1u);
    EXPECT_EQ(it.revoke(it.pending().front().id).status, 200);
    EXPECT_EQ(it.accept(again, it.invited).body, wrong.body) << "revoked";
}

TEST(Invitations, EndAtTheirTime)
{
    Inviting it;
    const auto code = it.code();
    it.service.write([](Connection& connection) {
        connection.execute("UPDATE invitations SET expires_at = '2026-03-10T09:30:00.000Z'");
    });
    EXPECT_EQ(it.preview(code, it.invited).code(), "invalid_invitation");
    EXPECT_EQ(it.accept(code, it.invited).code(), "invalid_invitation");
    ASSERT_EQ(it.pending().size(), 1u);
    EXPECT_EQ(it.pending().front().status, "expired");
}

TEST(Invitations, AreWorthNothingOnceTheirMakerCouldNotGiveThem)
{
    Inviting it;
    const auto code =
        it.codeOf(it.invite("guest", {"Rudi", "rudi@other.example", "employee", {}, {}, {{"bank", {"income"}}}}));
    Staff::set(it.service, "guest", "admin", {"manageCompany"}, {{"bank", {"view"}}});
    EXPECT_EQ(it.accept(code, it.invited).code(), "invalid_invitation");
    Staff::set(it.service, "guest", "admin", {"manageCompany"}, {{"bank", {"income"}}});
    EXPECT_EQ(it.preview(code, it.invited).status, 200);
    it.service.write([](Connection& connection) {
        connection.execute("UPDATE members SET active = 0 WHERE company_id = 'sample' AND id = 'guest'");
    });
    EXPECT_EQ(it.accept(code, it.invited).code(), "invalid_invitation");
}

TEST(Invitations, AreNotRevokedOnceUsed)
{
    Inviting it;
    const auto code = it.code();
    const auto id = it.pending().front().id;
    const auto opened = Json::decode<AuthResponse>(it.accept(code, it.invited).body);
    ASSERT_TRUE(opened.has_value());
    const auto refused = it.revoke(id);
    EXPECT_EQ(refused.status, 409);
    EXPECT_EQ(refused.code(), "invitation_used");
    EXPECT_EQ(it.accept(code, it.service.tokenOf("guest", "other")).code(), "invalid_invitation") << "used";
    EXPECT_EQ(it.revoke("unknown").status, 404);
    EXPECT_EQ(it.invite("mira", Inviting::rudi()).code(), "email_exists");
}

TEST(Invitations, OpenTheCompanyOnceMoreToWhoJoinedByThem)
{
    Inviting it;
    const auto code = it.code();
    ASSERT_EQ(it.accept(code, it.invited).status, 200);
    const auto shown = it.preview(code, it.invited);
    EXPECT_EQ(Json::decode<InvitationPreview>(shown.body).value_or(InvitationPreview{}).companyName, "Sample sample")
        << shown.body;
    const auto again = Json::decode<AuthResponse>(it.accept(code, it.invited).body);
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(again->snapshot.company.id, "sample");
    EXPECT_EQ(it.service.snapshotOf("mira").members.size(), 5u) << "nobody joins twice";

    it.service.write([](Connection& connection) {
        connection.execute("UPDATE members SET active = 0 WHERE user_id = 'rudi-of-other' AND company_id = 'sample'");
    });
    EXPECT_EQ(it.accept(code, it.invited).code(), "inactive_member");
    EXPECT_EQ(it.service.problems(), "");
}

TEST(Invitations, StayWithinTheirCompany)
{
    Inviting it;
    it.code();
    const auto id = it.pending().front().id;
    const auto stranger = it.service.tokenOf("mira", "other");
    it.service.write([](Connection& connection) {
        connection.execute("UPDATE members SET role = 'owner' WHERE company_id = 'other' AND id = 'mira'");
    });
    auto client = it.service.client();
    EXPECT_EQ(client.send("GET", "/v1/invites", stranger).body, R"({"invitations":[]})");
    EXPECT_EQ(client.send("POST", "/v1/invites/" + id + "/revoke", stranger).status, 404);
    EXPECT_EQ(it.pending().size(), 1u);
}

struct RefusedInvite {
    const char* name;
    const char* by;
    Invite invite;
    int status;
    const char* code;
};

class InviteRefusal : public testing::TestWithParam<RefusedInvite> {};

TEST_P(InviteRefusal, LeavesNoInvitation)
{
    Inviting it;
    const auto answer = it.invite(GetParam().by, GetParam().invite);
    EXPECT_EQ(answer.status, GetParam().status) << answer.body;
    EXPECT_EQ(answer.code(), GetParam().code);
    EXPECT_TRUE(it.pending().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Invites, InviteRefusal,
    testing::Values(
        RefusedInvite{"ByAnEmployee", "rudi", {"X", "x@x.id", "employee", {}, {}, {}}, 403, "forbidden"},
        RefusedInvite{"ToMoreThanTheInviterHolds",
                      "guest",
                      {"X", "x@x.id", "employee", {}, {"viewCapital"}, {}},
                      403,
                      "forbidden"},
        RefusedInvite{"AnOwnerByAnAdministrator", "guest", {"X", "x@x.id", "owner", {}, {}, {}}, 403, "forbidden"},
        RefusedInvite{
            "ToAnAccountUnseen", "guest", {"X", "x@x.id", "employee", {}, {}, {{"vault", {"view"}}}}, 404, "not_found"},
        RefusedInvite{
            "ToNoAccount", "guest", {"X", "x@x.id", "employee", {}, {}, {{"moon", {"view"}}}}, 404, "not_found"},
        RefusedInvite{"InNoRole", "mira", {"X", "x@x.id", "king", {}, {}, {}}, 400, "validation_error"},
        RefusedInvite{"WithoutAName", "mira", {" ", "x@x.id", "employee", {}, {}, {}}, 400, "validation_error"},
        RefusedInvite{"WithoutAnAddress", "mira", {"X", "x", "employee", {}, {}, {}}, 400, "validation_error"},
        RefusedInvite{"OfAMember", "mira", {"X", "RUDI@sample.example", "employee", {}, {}, {}}, 409, "email_exists"},
        RefusedInvite{
            "OfAFormerMember", "mira", {"X", "gone@sample.example", "employee", {}, {}, {}}, 409, "email_exists"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Invitations, HaveALimitADay)
{
    Inviting it;
    auto client = it.service.client();
    const auto token = it.service.tokenOf("mira");
    HttpAnswer answer;
    int made = 0;
    for (; made < 150; ++made) {
        const Invite invite{"X", fmt::format("x{}@x.id", made % 3), "employee", {}, {}, {}};
        answer = client.send("POST", "/v1/invites", token, Json::encode(invite));
        if (answer.status != 200)
            break;
    }
    EXPECT_EQ(made, 100);
    EXPECT_EQ(answer.code(), "rate_limited");
    EXPECT_FALSE(answer.header("retry-after").empty());
    EXPECT_EQ(it.pending().size(), 3u);
}

}
