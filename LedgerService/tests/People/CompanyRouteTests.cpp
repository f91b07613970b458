#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

/// "rudi" is an employee of the sample and owns "other"; "mira" owns the sample.
struct Companies {
    TestService service;

    Companies()
    {
        Staff::appoint(service);
        service.write([](Connection& connection) { foundSample(connection, "other"); });
        Staff::joinTo(service, "rudi", "other", "owner");
    }

    CompanyChoices choices(const std::string& memberID)
    {
        const auto answer = service.as(memberID, "GET", "/v1/me/companies");
        const auto decoded = Json::decode<CompanyChoices>(answer.body);
        EXPECT_TRUE(decoded.has_value()) << answer.body;
        return decoded.value_or(CompanyChoices{});
    }

    HttpAnswer enter(const std::string& token, const std::string& companyID)
    {
        return service.client().send("POST", "/v1/me/companies/switch", token,
                                     R"({"companyID":")" + companyID + R"("})");
    }

    void run(const std::string& statement)
    {
        service.write([&](Connection& connection) { connection.execute(statement); });
    }
};

}

TEST(OwnCompanies, AreThoseThatAreOpenToThePerson)
{
    Companies it;
    const CompanyChoices both{{{"sample", "Sample sample"}, {"other", "Sample other"}}, 1};
    EXPECT_EQ(it.choices("rudi"), both);
    EXPECT_EQ(it.choices("mira"), (CompanyChoices{{{"sample", "Sample sample"}}, 1}));
    const CompanyChoices one{{{"sample", "Sample sample"}}, 0};
    it.run("UPDATE companies SET approval_status = 'pending' WHERE id = 'other'");
    EXPECT_EQ(it.choices("rudi"), one);
    it.run("UPDATE companies SET approval_status = NULL WHERE id = 'other'");
    EXPECT_EQ(it.choices("rudi"), both);
    it.run("UPDATE members SET active = 0 WHERE company_id = 'other' AND id = 'rudi-too'");
    EXPECT_EQ(it.choices("rudi"), one);
}

TEST(OwnCompanies, AreEnteredWithATokenOfTheirOwn)
{
    Companies it;
    const auto token = it.service.tokenOf("rudi");
    const auto tagOfMira = [&] { return it.service.as("mira", "GET", "/v1/snapshot").header("etag"); };
    const auto before = tagOfMira();
    const auto answer = it.enter(token, "other");
    EXPECT_EQ(tagOfMira(), before) << "of the company that is left nothing has changed";
    const auto opened = Json::decode<AuthResponse>(answer.body);
    ASSERT_TRUE(opened.has_value()) << answer.body;
    EXPECT_EQ(opened->snapshot.company.id, "other");
    EXPECT_EQ(opened->snapshot.currentMember.id, "rudi-too");
    auto client = it.service.client();
    EXPECT_EQ(Json::decode<LedgerSnapshot>(client.send("GET", "/v1/snapshot", token).body)->company.id, "sample")
        << "the reply may have been lost";
    EXPECT_EQ(client.send("POST", "/v1/auth/logout", token).status, 200);
    EXPECT_EQ(client.send("GET", "/v1/snapshot", token).status, 401);
    EXPECT_EQ(Json::decode<LedgerSnapshot>(client.send("GET", "/v1/snapshot", opened->token).body)->company.id,
              "other");
    const auto login =
        client.send("POST", "/v1/auth/login", "",
                    std::string{R"({"email":"rudi@sample.example","password":")"} + TestService::password + R"("})");
    EXPECT_EQ(Json::decode<AuthResponse>(login.body).value_or(AuthResponse{}).snapshot.company.id, "other")
        << "the company of the last visit";
}

struct ClosedCompany {
    const char* name;
    const char* statement;
    int status;
    const char* code;
};

class SwitchRefusal : public testing::TestWithParam<ClosedCompany> {};

TEST_P(SwitchRefusal, KeepsTheTokenAlive)
{
    Companies it;
    it.run(GetParam().statement);
    const auto token = it.service.tokenOf("rudi");
    const auto answer = it.enter(token, "other");
    EXPECT_EQ(answer.status, GetParam().status);
    EXPECT_EQ(answer.code(), GetParam().code);
    EXPECT_EQ(it.service.client().send("GET", "/v1/snapshot", token).status, 200);
}

INSTANTIATE_TEST_SUITE_P(
    Switches, SwitchRefusal,
    testing::Values(ClosedCompany{"NotAMember", "DELETE FROM members WHERE company_id = 'other' AND id = 'rudi-too'",
                                  404, "not_found"},
                    ClosedCompany{"Deactivated",
                                  "UPDATE members SET active = 0 WHERE company_id = 'other' AND id = 'rudi-too'", 403,
                                  "inactive_member"},
                    ClosedCompany{"Pending", "UPDATE companies SET approval_status = 'pending' WHERE id = 'other'", 403,
                                  "company_pending"},
                    ClosedCompany{"Rejected", "UPDATE companies SET approval_status = 'rejected' WHERE id = 'other'",
                                  403, "company_rejected"},
                    ClosedCompany{"ADemonstrationThatIsNotOffered",
                                  "UPDATE companies SET demo_locale = 'en-US', demo_version = 1 WHERE id = 'other'",
                                  404, "not_found"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(CompanySettings, AreForThoseWhoManage)
{
    Companies it;
    const auto change = [&](const char* by, const char* body) {
        return it.service.as(by, "PATCH", "/v1/settings", body);
    };
    EXPECT_EQ(change("rudi", R"({"name":"Mine"})").code(), "forbidden");
    EXPECT_EQ(change("rudi", R"({"countries":[]})").code(), "forbidden");
    const auto answer = change("mira", R"({"name":" Pelabuhan Makmur ","countries":["ID","VN"]})");
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto company = it.service.snapshotOf("rudi").company;
    EXPECT_EQ(company.name, "Pelabuhan Makmur");
    EXPECT_EQ(company.countries, (std::vector<std::string>{"ID", "VN"}));
    for (const auto* body : {R"({"name":" "})", R"({"countries":["id"]})", R"({"countries":["ID","ID"]})",
                             R"({"locale":"fr-FR"})", R"({"name":7})"})
        EXPECT_EQ(change("mira", body).code(), "validation_error") << body;
    EXPECT_EQ(change("mira", "{}").status, 200);
    EXPECT_EQ(it.service.snapshotOf("mira").company, company);
}

TEST(CompanySettings, LetEverybodyChooseTheirLanguage)
{
    Companies it;
    EXPECT_EQ(it.service.as("rudi", "PATCH", "/v1/settings", R"({"locale":"vi-VN"})").status, 200);
    EXPECT_EQ(it.service.snapshotOf("rudi").currentMember.locale, "vi-VN");
    EXPECT_NE(it.service.snapshotOf("mira").currentMember.locale, "vi-VN");
}

TEST(TransactionColors, AreChosenForTheWholeCompany)
{
    Companies it;
    const auto choose = [&](const char* by, const char* body) {
        return it.service.as(by, "PATCH", "/v1/company/transaction-colors", body);
    };
    EXPECT_EQ(choose("rudi", R"({"kind":"income","colorID":"rose"})").code(), "forbidden");
    EXPECT_EQ(choose("mira", R"({"kind":"income","colorID":"rose"})").status, 200);
    EXPECT_EQ(choose("mira", R"({"kind":"refund","colorID":"ink"})").status, 200);
    EXPECT_EQ(choose("mira", R"({"kind":"income","colorID":"teal"})").status, 200);
    EXPECT_EQ(it.service.snapshotOf("rudi").company.transactionColors,
              (TextMap{{"income", "teal"}, {"refund", "ink"}}));
    EXPECT_EQ(choose("mira", R"({"kind":"gift","colorID":"teal"})").code(), "validation_error");
    EXPECT_EQ(choose("mira", R"({"kind":"income","colorID":"pink"})").code(), "validation_error");
    EXPECT_EQ(it.service.problems(), "");
}

namespace {

struct Applying {
    TestService service;
    std::string token = service.tokenOf("rudi");

    explicit Applying(RegistrationMode mode)
        : service{[mode](ServerOptions& options) { options.policy.registration = mode; }}
    {
    }

    HttpAnswer apply(const std::string& name, const std::string& requestID)
    {
        return service.client().send("POST", "/v1/me/companies", token,
                                     Json::encode(CompanyApplication{.companyName = name, .requestID = requestID}));
    }

    PendingCompanyRegistration applied(const std::string& name, const std::string& requestID)
    {
        const auto answer = apply(name, requestID);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<PendingCompanyRegistration>(answer.body).value_or(PendingCompanyRegistration{});
    }

    CompanyChoices choices()
    {
        const auto answer = service.client().send("GET", "/v1/me/companies", token);
        return Json::decode<CompanyChoices>(answer.body).value_or(CompanyChoices{});
    }
};

}

TEST(CompanyApplications, WaitForTheOperatorAndAreMadeOnce)
{
    Applying it{RegistrationMode::review};
    const auto pending = it.applied(" Toko Kedua ", "form-1");
    EXPECT_EQ(pending.status, "pending");
    EXPECT_EQ(pending.companyName, "Toko Kedua");
    EXPECT_EQ(pending.email, "rudi@sample.example");
    EXPECT_EQ(it.applied("Toko Kedua", "form-1"), pending) << "sent again";
    EXPECT_EQ(it.apply("Toko Ketiga", "form-1").code(), "idempotency_conflict");
    EXPECT_NE(it.applied("Toko Kedua", "form-2").applicationID, pending.applicationID);
    EXPECT_EQ(it.choices().companies.size(), 1u);
    const auto entered = it.service.client().send("POST", "/v1/me/companies/switch", it.token,
                                                  R"({"companyID":")" + pending.applicationID + R"("})");
    EXPECT_EQ(entered.code(), "company_pending");
    EXPECT_EQ(it.apply(" ", "form-3").code(), "validation_error");
    EXPECT_EQ(it.apply("Toko", "").code(), "validation_error");
    for (const auto* id : {"form-4", "form-5", "form-6"})
        it.applied("Toko", id);
    EXPECT_EQ(it.apply("Toko", "form-7").code(), "rate_limited");
    EXPECT_EQ(it.applied("Toko Kedua", "form-1"), pending) << "what was made stays known";
    EXPECT_EQ(it.service.problems(), "");
}

TEST(CompanyApplications, OpenAtOnceOrNotAtAllAsTheServiceSays)
{
    Applying open{RegistrationMode::open};
    const auto company = open.applied("Toko Kedua", "form-1");
    EXPECT_EQ(company.status, "approved");
    EXPECT_EQ(open.choices(),
              (CompanyChoices{{{"sample", "Sample sample"}, {company.applicationID, "Toko Kedua"}}, 1}));
    const auto entered = open.service.client().send("POST", "/v1/me/companies/switch", open.token,
                                                    R"({"companyID":")" + company.applicationID + R"("})");
    const auto opened = Json::decode<AuthResponse>(entered.body);
    ASSERT_TRUE(opened.has_value()) << entered.body;
    EXPECT_EQ(opened->snapshot.currentMember.role, "owner");
    EXPECT_EQ(opened->snapshot.currentMember.permissions->size(), Permission::all.size());
    EXPECT_EQ(open.service.problems(), "");

    Applying closed{RegistrationMode::closed};
    EXPECT_EQ(closed.apply("Toko Kedua", "form-1").code(), "forbidden");
}

}
