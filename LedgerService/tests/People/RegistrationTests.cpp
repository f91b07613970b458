#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Identity/AccessFlow/PersonRegistration.h"
#include "LedgerService/Operations/People/ManagePeople.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

Registration lan()
{
    return {.name = " Nguyễn Thị Lan ",
            .email = " Lan@Pho.example ",
            .password = "mật khẩu dài",
            .companyName = "Phở Lan",
            .countries = {"VN"},
            .invitationCode = std::nullopt};
}

HttpAnswer apply(const TestService& service, const Registration& registration, const std::string& from = "127.0.0.1")
{
    return service.clientFrom(from).send("POST", "/v1/auth/register", "", Json::encode(registration));
}

HttpAnswer login(const TestService& service, const Registration& registration)
{
    return service.client().send("POST", "/v1/auth/login", "",
                                 Json::encode(Login{registration.email, registration.password}));
}

/// Goes on with the code that was mailed.
HttpAnswer activate(const TestService& service, const PendingCompanyRegistration& pending, const Registration& invited)
{
    const auto post = [&](const std::string& step, const std::string& body) {
        return service.client().send("POST", "/v1/auth/access/" + step, "", body);
    };
    std::string code;
    for (const auto& letter : service.mails(2)) { // one of them tells of the invitation
        constexpr std::string_view says = "Subject: Your Tallyfold code is ";
        if (const auto at = letter.find(says); at != std::string::npos)
            code = letter.substr(at + says.size(), 6);
    }
    const auto verified =
        Json::decode<AccessVerification>(post("verify", Json::encode(AccessCode{pending.applicationID, code})).body);
    return post("complete",
                Json::encode(AccessCompletion{pending.applicationID, verified.value_or(AccessVerification{}).ticket,
                                              invited.name, invited.password, "vi-VN"}));
}

void openTo(ServerOptions& options)
{
    options.policy.registration = RegistrationMode::open;
}

/// What the operator does beside the service.
std::string operate(const TestService& service,
                    const std::function<ManagePeople::Refused(Connection& connection)>& command)
{
    const auto database = Database::openExisting(service.databaseFile());
    const auto loan = (*database)->borrow();
    return command(*loan).value_or("");
}

}

TEST(Registration, LeavesTheDemonstrationsAddressesAlone)
{
    TestService service{openTo};
    auto squatter = lan();
    squatter.email = "Dewi.Anggraini@en.demo.tallyfold.example";
    EXPECT_EQ(apply(service, squatter).code(), "validation_error");
}

TEST(Registration, WaitsForTheOperator)
{
    TestService service;
    const auto pending = Json::decode<PendingCompanyRegistration>(apply(service, lan()).body);
    ASSERT_TRUE(pending.has_value());
    EXPECT_EQ(pending->status, "pending");
    EXPECT_EQ(pending->companyName, "Phở Lan");
    EXPECT_EQ(pending->email, "lan@pho.example");
    EXPECT_FALSE(pending->applicationID.empty());
    EXPECT_EQ(login(service, lan()).code(), "company_pending");
    const auto letter = service.mails(1).at(0);
    EXPECT_NE(letter.find("To: <lan@pho.example>\r\n"), std::string::npos);
    EXPECT_NE(letter.find("Content-Language: vi-VN\r\n"), std::string::npos);
    EXPECT_EQ(letter.find("Lan "), std::string::npos) << "a stranger's words are not sent on";

    const auto decide = [&](auto decision) {
        return operate(service, [&](Connection& connection) { return decision(connection, pending->applicationID); });
    };
    EXPECT_EQ(decide(ManagePeople::reject), "");
    EXPECT_EQ(login(service, lan()).code(), "company_rejected");
    EXPECT_EQ(decide(ManagePeople::approve), "");
    EXPECT_NE(decide(ManagePeople::approve), "") << "twice";
    const auto opened = Json::decode<AuthResponse>(login(service, lan()).body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->snapshot.company.name, "Phở Lan");
    EXPECT_EQ(opened->snapshot.company.approvalStatus, "approved");
    EXPECT_EQ(opened->snapshot.currentMember.role, "owner");
    EXPECT_EQ(opened->snapshot.currentMember.name, "Nguyễn Thị Lan");
    EXPECT_EQ(opened->snapshot.currentMember.locale, "vi-VN");
    EXPECT_EQ(service.problems(), "");
}

TEST(Registration, SignsInAtOnceWhereItIsOpen)
{
    TestService service{openTo};
    const auto opened = Json::decode<AuthResponse>(apply(service, lan()).body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(service.client().send("GET", "/v1/snapshot", opened->token).status, 200);
    const auto again = apply(service, lan());
    EXPECT_EQ(again.status, 409);
    EXPECT_EQ(again.code(), "email_exists");
}

TEST(Registration, IsRefusedWhereItIsClosedButForTheInvited)
{
    TestService service{[](ServerOptions& options) { options.policy.registration = RegistrationMode::closed; }};
    EXPECT_EQ(apply(service, lan()).code(), "forbidden");
    auto invited = lan();
    invited.companyName = "";
    invited.countries.clear();
    invited.invitationCode = "00000-00000-00000-00000";
    EXPECT_EQ(apply(service, invited).code(), "invalid_invitation");

    Staff::appoint(service);
    const Invite invite{"Lan", "lan@pho.example", "finance", {}, {}, {{"bank", {"view"}}}};
    const auto made =
        Json::decode<InviteResponse>(service.as("mira", "POST", "/v1/invites", Json::encode(invite)).body);
    ASSERT_TRUE(made.has_value());
    invited.invitationCode = made->code;
    auto other = invited;
    other.email = "hoa@pho.example";
    EXPECT_EQ(apply(service, other).code(), "invalid_invitation") << "made for another address";
    const auto answer = apply(service, invited);
    EXPECT_EQ(answer.body.find("token"), std::string::npos) << "whoever has the code need not read the mail";
    EXPECT_EQ(login(service, invited).status, 401) << "nor has taken the address";
    const auto pending = Json::decode<PendingCompanyRegistration>(answer.body);
    ASSERT_TRUE(pending.has_value()) << answer.body;
    EXPECT_EQ(pending->companyName, service.snapshotOf("mira").company.name);
    const auto opened = Json::decode<AuthResponse>(activate(service, *pending, invited).body);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->snapshot.company.id, "sample");
    EXPECT_EQ(opened->snapshot.currentMember.role, "finance");
    EXPECT_EQ(opened->snapshot.accounts.size(), 1u);
    EXPECT_EQ(apply(service, invited).code(), "email_exists");
    EXPECT_EQ(service.problems(), "");
}

TEST(Registration, TakesOnlyWhatPeopleAndCompaniesCanBeCalled)
{
    TestService service{[](ServerOptions& options) {
        openTo(options);
        options.policy.limits.registrationsPerAddress = 1000;
    }};
    const auto refused = [&](auto change) {
        auto registration = lan();
        change(registration);
        return apply(service, registration).code();
    };
    for (const std::string& name : {std::string{}, std::string{" "}, std::string{"a\nb"}, std::string{"a\u202Eb"},
                                    std::string(121, 'a'), std::string{"a\0b", 3}}) {
        EXPECT_EQ(refused([&](Registration& each) { each.name = name; }), "validation_error") << name;
        EXPECT_EQ(refused([&](Registration& each) { each.companyName = name; }), "validation_error") << name;
    }
    for (const std::string& email :
         {std::string{"lan"}, std::string{"lan@pho.example\r\nBcc: a@b.c"}, std::string{"<lan@pho.example>"}})
        EXPECT_EQ(refused([&](Registration& each) { each.email = email; }), "validation_error") << email;
    EXPECT_EQ(refused([](Registration& each) { each.password = "1234567"; }), "validation_error");
    EXPECT_EQ(refused([](Registration& each) { each.password = std::string(1025, 'a'); }), "validation_error");
    EXPECT_EQ(refused([](Registration& each) { each.countries = {"Vietnam"}; }), "validation_error");
    EXPECT_EQ(refused([](Registration& each) { each.countries = {"VN", "ID", "VN"}; }), "validation_error");
    EXPECT_EQ(refused([](Registration& each) {
                  each.countries.clear();
                  for (char second = 'A'; second <= 'U'; ++second)
                      each.countries.push_back(std::string{'X', second});
              }),
              "validation_error");
    EXPECT_EQ(apply(service, lan()).status, 200) << "nothing was left behind";
}

TEST(Registration, HappensOnceHoweverManyTryAtTheSameTime)
{
    TestService service{openTo};
    std::array<int, 3> statuses{};
    {
        std::vector<std::jthread> tries;
        for (auto& status : statuses)
            tries.emplace_back([&] { status = apply(service, lan()).status; });
    }
    std::ranges::sort(statuses);
    EXPECT_EQ(statuses, (std::array{200, 409, 409}));
}

TEST(Registration, IsLimitedByAddress)
{
    TestService service{[](ServerOptions& options) { options.policy.limits.registrationsPerAddress = 1; }};
    EXPECT_EQ(apply(service, lan()).status, 200);
    auto another = lan();
    another.email = "hoa@pho.example";
    EXPECT_EQ(apply(service, another).status, 429);
    EXPECT_EQ(apply(service, another, "127.0.0.2").status, 200);
}

TEST(Operators, KeepPeopleOutAndLetThemInAgain)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    const auto status = [&] { return service.client().send("GET", "/v1/snapshot", token).status; };
    const auto signIn = [&](const std::string& password) {
        return service.client().send("POST", "/v1/auth/login", "",
                                     Json::encode(Login{"mira@sample.example", password}));
    };
    const auto mira = [&](auto command) {
        return operate(service, [&](Connection& connection) { return command(connection, "Mira@sample.example"); });
    };
    EXPECT_EQ(status(), 200);
    EXPECT_EQ(mira(ManagePeople::deactivate), "");
    EXPECT_EQ(status(), 401);
    EXPECT_EQ(signIn(TestService::password).code(), "inactive_member");
    EXPECT_EQ(mira(ManagePeople::reactivate), "");
    EXPECT_EQ(status(), 401) << "the token stays ended";
    EXPECT_EQ(signIn(TestService::password).status, 200);

    const auto reset = [&](const std::optional<std::string>& password) {
        return operate(service, [&](Connection& connection) {
            return ManagePeople::reset(connection, "mira@sample.example", password);
        });
    };
    EXPECT_NE(reset("short"), "");
    EXPECT_EQ(reset(std::nullopt), "");
    EXPECT_EQ(signIn(TestService::password).status, 401);
    EXPECT_EQ(reset("quite another one"), "");
    EXPECT_EQ(signIn("quite another one").status, 200);
    EXPECT_NE(operate(service,
                      [](Connection& connection) { return ManagePeople::deactivate(connection, "nobody@x.example"); }),
              "");
    EXPECT_NE(operate(service, [](Connection& connection) { return ManagePeople::approve(connection, "none"); }), "");
}

TEST(Operators, ListCompaniesAndPeople)
{
    TestService service;
    EXPECT_EQ(apply(service, lan()).status, 200);
    const auto run = [&](const std::string& arguments) {
        const TemporaryFolder folder;
        const auto output = folder.file("output");
        const auto status = std::system(fmt::format("{} {} --database {} > {} 2>&1", TALLYFOLD_SERVICE_PROGRAM,
                                                    arguments, service.databaseFile(), output)
                                            .c_str());
        std::ifstream file{output};
        return fmt::format("{} {}", WEXITSTATUS(status),
                           std::string{std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}});
    };
    const auto companies = run("companies list");
    EXPECT_EQ(companies.substr(0, 27), "0 sample\tapproved\t2026-01-0") << companies;
    EXPECT_NE(companies.find("\tpending\t2026-03-10\tPhở Lan\tlan@pho.example\n"), std::string::npos) << companies;
    const auto users = run("users list");
    EXPECT_NE(users.find("lan@pho.example\tactive\t2026-03-10\tNguyễn Thị Lan\n"), std::string::npos) << users;
    EXPECT_EQ(run("users deactivate --email lan@pho.example").front(), '0');
    EXPECT_EQ(run("users reset --email nobody@x.example").front(), '1');
    EXPECT_NE(run("users list").find("lan@pho.example\tdeactivated"), std::string::npos);
    EXPECT_NE(run("companies approve").front(), '0') << "which one?";
}

}
