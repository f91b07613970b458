#include <filesystem>
#include <fstream>
#include <ranges>

#include <boost/describe.hpp>
#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Audit/AuditSeals.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Operations/People/ManagePeople.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/SampleSections.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

struct ShownRecord {
    std::int64_t number = 0;
    std::string at;
    std::optional<std::string> memberID;
    std::string origin;
    std::string kind;
    std::optional<std::string> record;
    std::optional<std::string> digest;
};
BOOST_DESCRIBE_STRUCT(ShownRecord, (), (number, at, memberID, origin, kind, record, digest))

struct ShownPage {
    std::vector<ShownRecord> records;
    std::optional<std::int64_t> next;
};
BOOST_DESCRIBE_STRUCT(ShownPage, (), (records, next))

/// The sample company with an owner, "mira".
class Audited : public testing::Test {
protected:
    void SetUp() override { run({"UPDATE members SET role = 'owner' WHERE id = 'mira'"}); }

    void run(const std::vector<std::string>& statements)
    {
        service.write([&](Connection& connection) {
            for (const auto& each : statements)
                connection.execute(each);
        });
    }

    /// Changes what nobody may change.
    void tamper(const std::string& statement)
    {
        service.write([&](Connection& connection) {
            std::vector<std::string> triggers;
            {
                std::string sql;
                Query query{connection, "SELECT sql FROM sqlite_master WHERE type = 'trigger'"};
                query.into(sql);
                while (query.next())
                    triggers.push_back(sql);
            }
            connection.execute("DROP TRIGGER audit_records_stay");
            connection.execute("DROP TRIGGER audit_records_last");
            connection.execute(statement);
            for (const auto& each : triggers)
                connection.execute(each);
        });
    }

    ShownPage page(const std::string& query = "")
    {
        const auto answer = service.as("mira", "GET", "/v1/audit" + query);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<ShownPage>(answer.body).value_or(ShownPage{});
    }

    /// The company's records, the last first: kind, member, subject of a founding, and what stands now.
    std::string told(const std::string& companyID)
    {
        std::string lines;
        service.write([&](Connection& connection) {
            auto records = AuditTrail::after(connection, companyID, 0, 100);
            for (const auto& each : std::views::reverse(records)) {
                const bool founded = each.kind == AuditKind::companyFounded;
                lines +=
                    fmt::format("{} {} {} {}\n", each.kind, each.memberID.value_or("-"),
                                founded ? each.record.value_or("-") : "-", founded ? "-" : each.after.value_or("-"));
            }
        });
        return lines;
    }

    LedgerTransaction post(const TransactionInput& input)
    {
        const auto answer = service.as("mira", "POST", "/v1/transactions", Json::encode(input));
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<LedgerTransaction>(answer.body).value_or(LedgerTransaction{});
    }

    /// The seal of a day after the sample's.
    void seal(const std::string& stamp)
    {
        service.write([&](Connection& connection) { AuditSeals{service.files()}.sealDayBefore(connection, stamp); });
    }

    TestService service;
};

}

TEST_F(Audited, CommandsLeaveWhoDidWhatWhenAndFromWhere)
{
    const auto entry = post(SampleBooks::income());
    const auto records = page().records;
    ASSERT_EQ(records.size(), 2U); // with the founding of the company
    EXPECT_EQ(records[0].number, 2);
    EXPECT_EQ(records[0].at, "2026-03-10T09:30:00.000Z");
    EXPECT_EQ(records[0].memberID, "mira");
    EXPECT_EQ(records[0].origin, "127.0.0.1");
    EXPECT_EQ(records[0].kind, "POST /v1/transactions");
    EXPECT_EQ(records[0].record, entry.id);
    EXPECT_EQ(records[0].digest, AuditTrail::digestOf(entry));
    EXPECT_EQ(records[1].kind, "company-founded");
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, RefusalsAndRepetitionsLeaveNothing)
{
    post(SampleBooks::income());
    post(SampleBooks::income()); // its key came before
    auto unsound = SampleBooks::income(-1);
    unsound.idempotencyKey = "other";
    EXPECT_EQ(service.as("mira", "POST", "/v1/transactions", Json::encode(unsound)).status, 400);
    auto poor = SampleBooks::expense(900'000'000);
    poor.idempotencyKey = "poor";
    EXPECT_EQ(service.as("guest", "POST", "/v1/transactions", Json::encode(poor)).status, 403);
    EXPECT_EQ(page().records.size(), 2U);
}

TEST_F(Audited, ReversalsReceiptsAndSignInsLeaveTheirs)
{
    EXPECT_EQ(service.as("mira", "POST", "/v1/transactions/sale/reverse", Json::encode(SampleBooks::reversal())).status,
              200);
    const auto uploaded = service.as("mira", "POST", "/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf()));
    const auto receipt = Json::decode<Attachment>(uploaded.body).value_or(Attachment{});
    EXPECT_EQ(
        service
            .as("mira", "POST", "/v1/transactions/opening-bank/attachments", Json::encode(AttachmentLink{{receipt.id}}))
            .status,
        200);
    const auto login = fmt::format(R"({{"email":"mira@sample.example","password":"{}"}})", TestService::password);
    EXPECT_EQ(service.clientFrom("127.0.0.2").send("POST", "/v1/auth/login", "", login).status, 200);
    EXPECT_EQ(service.as("mira", "POST", "/v1/auth/logout").status, 200);
    std::string told;
    for (const auto& each : page().records)
        told += fmt::format("{} {} {}\n", each.kind, each.origin, each.digest ? "entry" : each.record.value_or("-"));
    EXPECT_EQ(told, fmt::format("sign-out 127.0.0.1 -\n"
                                "sign-in 127.0.0.2 -\n"
                                "POST /v1/transactions/{{id}}/attachments 127.0.0.1 opening-bank\n"
                                "POST /v1/attachments 127.0.0.1 {}\n"
                                "POST /v1/transactions/{{id}}/reverse 127.0.0.1 entry\n"
                                "company-founded service sample\n",
                                receipt.id));
    const auto body = service.as("mira", "GET", "/v1/audit?limit=3").body;
    EXPECT_NE(body.find(R"("after":{"attachmentIDs":[)"), std::string::npos) << body;
    EXPECT_NE(body.find(R"("before":{"attachmentIDs":[]})"), std::string::npos) << body;
    EXPECT_EQ(body.find(TestService::password), std::string::npos);
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, ChangesTellHowARecordStoodBefore)
{
    struct Case {
        std::string method;
        std::string path;
        std::string body;
        std::string before;
        std::string after;
    };
    const std::array cases{
        Case{"PATCH", "/v1/me/category-preferences", R"({"categoryID":"rent","selected":true})", R"("selected":false)",
             R"("selected":true)"},
        Case{"PATCH", "/v1/members/rudi", R"({"role":"finance"})", R"("role":"employee")", R"("role":"finance")"},
        Case{"PATCH", "/v1/accounts/bank", R"({"name":"Bank Dua"})", R"("name":"bank")", R"("name":"Bank Dua")"},
        Case{"PATCH", "/v1/categories/rent", R"({"archived":true})", R"("archived":false)", R"("archived":true)"},
        Case{"PATCH", "/v1/settings", R"({"name":"Toko Baru"})", R"("name":"Sample sample")", R"("name":"Toko Baru")"},
        Case{"PATCH", "/v1/company/transaction-colors", R"({"kind":"income","colorID":"teal"})", R"("colorID":"")",
             R"("colorID":"teal")"},
        Case{"PATCH", "/v1/me/profile", R"({"name":"Mira Baru"})", R"("name":"mira")", R"("name":"Mira Baru")"},
    };
    for (const auto& each : cases) {
        ASSERT_EQ(service.as("mira", each.method, each.path, each.body).status, 200) << each.path;
        const auto told = service.as("mira", "GET", "/v1/audit?limit=1").body;
        const auto after = told.find(R"("after":)");
        ASSERT_NE(after, std::string::npos) << told;
        EXPECT_LT(told.find(each.before, told.find(R"("before":)")), after) << told;
        EXPECT_NE(told.find(each.after, after), std::string::npos) << told;
    }
}

TEST_F(Audited, RightsThatFollowFromAnAccountAreToldForEachMember)
{
    Staff::appoint(service);
    ASSERT_EQ(service.as("mira", "PATCH", "/v1/accounts/branch", R"({"operatorMemberID":"rudi"})").status, 200);
    const auto answer = service.as("mira", "GET", "/v1/audit?kind=member-rights-changed").body;
    const auto told = Json::decode<ShownPage>(answer).value_or(ShownPage{}).records;
    ASSERT_EQ(told.size(), 1U) << answer;
    EXPECT_EQ(told.front().record, "rudi");
    EXPECT_EQ(told.front().memberID, "mira");
    EXPECT_TRUE(answer.contains(R"("before":{"accountGrants":[{"accountID":"branch","actions":["view"]}]})")) << answer;
    EXPECT_TRUE(answer.contains(R"("after":{"accountGrants":[{"accountID":"branch","actions":["view","income",)"))
        << answer;
    ASSERT_EQ(service.as("mira", "POST", "/v1/accounts", R"({"name":"Kas","currencies":["IDR"]})").status, 200);
    std::string gained;
    for (const auto& each : page("?kind=member-rights-changed").records)
        gained += each.record.value_or("") + " ";
    EXPECT_EQ(gained, "gone guest mira rudi ") << "all who lead the company, the last one first";
    EXPECT_EQ(service.problems(), "");
}

TEST(AuditOfSections, TellsHowWhatAChangeIsMadeToStoodBefore)
{
    using namespace SampleSections;
    SectionService service;
    service.write(
        [](Connection& connection) { connection.execute("UPDATE members SET role = 'owner' WHERE id = 'mira'"); });
    const auto last = [&] { return service.as("mira", "GET", "/v1/audit?limit=1").body; };
    const auto told = [&](std::string_view record, std::string_view before, std::string_view after) {
        const auto text = last();
        const auto middle = text.find(R"("after":)");
        const auto start = text.find(R"("before":)");
        EXPECT_NE(text.find(record), std::string::npos) << text;
        EXPECT_TRUE(start < middle && middle != std::string::npos) << text;
        EXPECT_LT(text.find(before, start), middle) << text;
        EXPECT_NE(text.find(after, middle), std::string::npos) << text;
    };
    const auto ann = service.added(participant("Ann", 10'000));
    EXPECT_EQ(last().find(R"("before":)"), std::string::npos) << "nothing stood there";
    auto rename = participant("Anna", 10'000);
    rename.participantID = ann;
    EXPECT_EQ(service.submit("mira", rename).status, 200);
    told(ann, R"("name":"Ann")", R"("name":"Anna")");
    const auto batch = service.added(allocation(1'000, {{ann, 10'000}}));
    auto cancel = dividend(DividendAction::cancelBatch);
    cancel.batchID = batch;
    EXPECT_EQ(service.submit("mira", cancel).status, 200);
    told(batch, R"("cancelled":false)", R"("cancelled":true)");
    auto hide = dividend(DividendAction::setVisibility);
    hide.showInSidebar = false;
    EXPECT_EQ(service.submit("mira", hide).status, 200);
    told("", R"("showInSidebar":true)", R"("showInSidebar":false)");
    const auto dewi = service.added(owner("Dewi"));
    const auto paid = service.added(contribution(dewi, 5'000));
    auto undo = capital(CapitalAction::reverse);
    undo.contributionID = paid;
    EXPECT_EQ(service.submit("mira", undo).status, 200);
    const auto page = service.as("mira", "GET", "/v1/audit?limit=2").body;
    EXPECT_NE(page.find(paid), std::string::npos) << page;
    EXPECT_NE(page.find(R"("reversedBy":)"), std::string::npos) << page;
}

TEST_F(Audited, PasswordsAndTheOperatorsDecisionsLeaveTheirs)
{
    const auto change = fmt::format(R"({{"currentPassword":"{}","newPassword":"another one"}})", TestService::password);
    ASSERT_EQ(service.as("rudi", "POST", "/v1/me/password", change).status, 200);
    Connection connection{service.databaseFile()};
    EXPECT_EQ(ManagePeople::deactivate(connection, "rudi@sample.example"), std::nullopt);
    EXPECT_EQ(ManagePeople::reactivate(connection, "rudi@sample.example"), std::nullopt);
    EXPECT_EQ(ManagePeople::reset(connection, "rudi@sample.example", std::nullopt), std::nullopt);
    EXPECT_EQ(ManagePeople::reject(connection, "sample"), std::nullopt);
    EXPECT_EQ(ManagePeople::approve(connection, "sample"), std::nullopt);
    EXPECT_NE(ManagePeople::setTimeZone(connection, "sample", "Asia/Nowhere"), std::nullopt);
    EXPECT_EQ(ManagePeople::setTimeZone(connection, "sample", "Pacific/Kiritimati"), std::nullopt);
    EXPECT_EQ(CompanyRepository::timeZone(connection, "sample"), "Pacific/Kiritimati");
    std::string told;
    for (const auto& each : page().records)
        told += fmt::format("{} {} {} {}\n", each.kind, each.origin, each.memberID.value_or("-"), *each.record);
    EXPECT_EQ(told, "company-zone-changed operator - sample\n"
                    "company-approved operator - sample\n"
                    "company-rejected operator - sample\n"
                    "password-reset operator - rudi\n"
                    "person-reactivated operator - rudi\n"
                    "person-deactivated operator - rudi\n"
                    "password-changed 127.0.0.1 rudi rudi\n"
                    "company-founded service - sample\n");
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, TheTrailIsForOwnersPagedAndFiltered)
{
    for (int each = 0; each < 5; ++each) {
        auto input = SampleBooks::income();
        input.idempotencyKey = std::to_string(each);
        post(input);
    }
    EXPECT_EQ(service.as("guest", "GET", "/v1/audit").status, 403);
    EXPECT_EQ(service.client().send("GET", "/v1/audit").status, 401);
    const auto first = page("?limit=4");
    ASSERT_EQ(first.records.size(), 4U);
    ASSERT_EQ(first.next, 3);
    const auto second = page("?limit=4&below=3");
    ASSERT_EQ(second.records.size(), 2U);
    EXPECT_EQ(second.next, std::nullopt);
    const auto fromAbove = page("?limit=4&below=9223372036854775807");
    EXPECT_EQ(fromAbove.records.size(), 4U) << "past the last there is nothing to look at";
    EXPECT_EQ(fromAbove.next, 3);
    EXPECT_EQ(page("?person=mira").records.size(), 5U);
    EXPECT_EQ(page("?person=rudi").records.size(), 0U);
    EXPECT_EQ(page("?kind=POST%20%2fv1%2Ftransactions").records.size(), 5U);
    EXPECT_EQ(page("?record=" + first.records[2].record.value_or("")).records.size(), 1U);
    EXPECT_EQ(page("?day=2026-03-10&kind=company-founded").records.size(), 0U);
    EXPECT_EQ(page("?day=2026-01-01").records.size(), 1U);
    for (const auto* query : {"?limit=0", "?limit=501", "?below=x", "?day=yesterday", "?kind=%zz", "?day=&day="})
        EXPECT_EQ(service.as("mira", "GET", std::string{"/v1/audit"} + query).status, 400) << query;
}

TEST_F(Audited, APageEndsBeforeItFillsTheMemory)
{
    constexpr int count = 200;
    service.write([](Connection& connection) {
        AuditRecord record;
        record.at = "2026-03-10T09:30:00.000Z";
        record.origin = AuditOrigin::service;
        record.kind = "POST /v1/accounts";
        record.memberID = "rudi";
        record.after = Json::encode(std::vector<std::string>(3'000, "id")); // 15 kB, which are kept
        for (int each = 0; each < count; ++each)
            AuditTrail::append(connection, "sample", record);
    });
    int shown = 0;
    std::string query = "?limit=500&person=rudi";
    while (!query.empty()) {
        const auto answer = service.as("mira", "GET", "/v1/audit" + query);
        ASSERT_EQ(answer.status, 200) << answer.body;
        EXPECT_LT(answer.body.size(), 2'000'000U);
        const auto part = Json::decode<ShownPage>(answer.body).value_or(ShownPage{});
        shown += static_cast<int>(part.records.size());
        query = part.next ? fmt::format("?limit=500&person=rudi&below={}", *part.next) : "";
    }
    EXPECT_EQ(shown, count) << "the pages lead to all of them";
}

TEST_F(Audited, KeepsTheSizeAndADigestOfWhatIsTooLongToBeKept)
{
    AuditFilter filter;
    filter.limit = 1;
    const auto keep = [&](std::size_t bytes) {
        service.write([&](Connection& connection) {
            AuditRecord record;
            record.at = "2026-03-10T09:30:00.000Z";
            record.origin = AuditOrigin::service;
            record.kind = "POST /v1/accounts";
            record.before = Json::encode(std::string(bytes, 'x'));
            record.after = "7";
            AuditTrail::append(connection, "sample", record);
        });
        Connection connection{service.databaseFile(), Connection::Access::readOnly};
        return AuditTrail::page(connection, "sample", filter).records.front();
    };
    const auto whole = keep(AuditTrail::mostTold - 2);
    EXPECT_EQ(whole.before->size(), AuditTrail::mostTold);
    const auto one = keep(AuditTrail::mostTold - 1);
    EXPECT_TRUE(one.before->starts_with(R"({"omittedBytes":16385,"digest":")")) << *one.before;
    EXPECT_LT(one.before->size(), 120U);
    EXPECT_EQ(one.after, "7");
    EXPECT_NE(keep(AuditTrail::mostTold).before, one.before) << "another text has another digest";
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, WhatAPersonDoesInOneCompanyIsToldThereAlone)
{
    service.write([](Connection& connection) {
        foundSample(connection, "other");
        connection.execute("UPDATE members SET role = 'owner' WHERE id = 'mira'");
    });
    Staff::joinTo(service, "rudi", "other", "employee");
    const auto rudi = service.tokenOf("rudi");
    auto client = service.client();
    EXPECT_EQ(client.send("POST", "/v1/me/companies", rudi, R"({"companyName":"Rudis secret","requestID":"1"})").status,
              200);
    EXPECT_EQ(client.send("POST", "/v1/me/companies/switch", rudi, R"({"companyID":"other"})").status, 200);
    EXPECT_EQ(told("sample"), "company-founded - sample -\n") << "the token is still there";
    EXPECT_EQ(client.send("POST", "/v1/auth/logout", rudi).status, 200);
    EXPECT_EQ(told("sample"), "sign-out rudi - -\n"
                              "company-founded - sample -\n");
    EXPECT_EQ(told("other"), "sign-in rudi-too - -\n"
                             "company-founded - other -\n");
}

TEST_F(Audited, WhoJoinsAndWithWhichRightsIsToldInTheCompanyJoined)
{
    service.write([](Connection& connection) { foundSample(connection, "other"); });
    Staff::appoint(service);
    const auto invited = service.as("mira", "POST", "/v1/invites",
                                    R"({"name":"Rudi","email":"rudi@other.example","role":"finance","accountIDs":[],
                                        "permissions":[],"accountGrants":[{"accountID":"bank","actions":["view"]}]})");
    const auto code = Json::decode<InviteResponse>(invited.body).value_or(InviteResponse{}).code;
    const auto accepted = service.client().send("POST", "/v1/invites/accept", service.tokenOf("rudi", "other"),
                                                Json::encode(InvitationAcceptance{.code = code, .locale = "id"}));
    ASSERT_EQ(accepted.status, 200) << accepted.body;
    const auto joined = page("?kind=member-joined").records;
    ASSERT_EQ(joined.size(), 1U);
    EXPECT_EQ(joined[0].memberID, joined[0].record) << "the person did it, to the membership";
    EXPECT_EQ(joined[0].origin, "127.0.0.1");
    const auto shown = service.as("mira", "GET", "/v1/audit?kind=member-joined").body;
    EXPECT_NE(shown.find(R"("accountGrants":[{"accountID":"bank","actions":["view"]}])"), std::string::npos) << shown;
    EXPECT_EQ(told("other"), "company-founded - other -\n");
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, ANewNameIsToldInEveryCompanyThatShowsIt)
{
    service.write([](Connection& connection) { foundSample(connection, "other"); });
    Staff::joinTo(service, "rudi", "other", "employee");
    ASSERT_EQ(service.as("rudi", "PATCH", "/v1/me/profile", R"({"name":"Rudolf"})").status, 200);
    EXPECT_EQ(told("sample"), R"(PATCH /v1/me/profile rudi - {"name":"Rudolf"})"
                              "\ncompany-founded - sample -\n");
    EXPECT_EQ(told("other"), R"(PATCH /v1/me/profile rudi-too - {"name":"Rudolf"})"
                             "\ncompany-founded - other -\n");
}

TEST_F(Audited, OwnersReadNothingOfWhatTheyDoNotSee)
{
    run({"UPDATE members SET role = 'owner' WHERE id = 'guest'"}); // sees everything, "hidden" alone among others
    Staff::set(service, "rudi", "owner", {"manageCompany"}, {{"bank", {"view"}}});
    Staff::set(service, "guest", "owner", {"manageCompany", "viewCompany"}, {});
    const auto rename = [&](const std::string& accountID, const std::string& name) {
        const auto answer = service.as("guest", "PATCH", "/v1/accounts/" + accountID, R"({"name":")" + name + R"("})");
        EXPECT_EQ(answer.status, 200) << answer.body;
    };
    rename("hidden", "Secret payroll");
    rename("bank", "Shown bank");
    const auto trailOf = [&](const std::string& memberID) { return service.as(memberID, "GET", "/v1/audit").body; };
    EXPECT_TRUE(trailOf("guest").contains("Secret payroll"));
    EXPECT_FALSE(trailOf("rudi").contains("Secret payroll"));
    EXPECT_TRUE(trailOf("rudi").contains("Shown bank"));
    EXPECT_TRUE(trailOf("rudi").contains(R"("record":"hidden")")) << "that something was done stays told";
}

TEST_F(Audited, OwnersReadNoDigestByWhichAHiddenEntryCouldBeGuessed)
{
    Staff::set(service, "rudi", "owner", {"manageCompany"}, {{"branch", {"view"}}});
    post(SampleBooks::income());
    auto seen = SampleBooks::transfer();
    seen.idempotencyKey = "seen";
    post(seen);
    const auto digestsOf = [&](const std::string& memberID) {
        std::string digests;
        const auto answer = service.as(memberID, "GET", "/v1/audit?limit=500&kind=POST%20%2Fv1%2Ftransactions").body;
        EXPECT_FALSE(answer.contains("chain")) << answer;
        for (const auto& each : Json::decode<ShownPage>(answer).value_or(ShownPage{}).records)
            digests += each.digest ? "told " : "kept ";
        return digests;
    };
    EXPECT_EQ(digestsOf("mira"), "told told ");
    EXPECT_EQ(digestsOf("rudi"), "told kept ") << "the transfer reaches the branch, the income does not";

    std::string expected = "told kept ";
    for (int each = 0; each < 120; ++each) { // more than are looked up at once
        seen.idempotencyKey = fmt::format("seen {}", each);
        post(seen);
        expected = "told " + expected;
    }
    EXPECT_EQ(digestsOf("rudi"), expected);
}

TEST_F(Audited, OwnersReadOfATemplateWhatTheySawOfItThen)
{
    Staff::set(service, "rudi", "owner", {"manageCompany"}, {{"bank", {"view"}}});
    TemplateCreate command;
    command.name = "Rent";
    command.entry = {.kind = "expense",
                     .note = "still secret",
                     .categoryID = "rent",
                     .sourceAccountID = "bank",
                     .targetAccountID = {},
                     .currency = "IDR",
                     .targetCurrency = {},
                     .amountMinor = 25'000,
                     .targetAmountMinor = {}};
    command.idempotencyKey = "rent";
    const auto made = service.as("mira", "POST", "/v1/templates", Json::encode(command));
    ASSERT_EQ(made.status, 200) << made.body;
    const auto id = Json::decode<EntryTemplateList>(made.body).value().templates.front().id;
    auto entry = command.entry;
    const auto change = [&](const std::string& note, bool shared, int revision) {
        entry.note = note;
        const TemplateUpdate update{
            .name = "Rent", .shared = shared, .entry = entry, .recurrence = {}, .expectedRevision = revision};
        EXPECT_EQ(service.as("mira", "PATCH", "/v1/templates/" + id, Json::encode(update)).status, 200);
    };
    change("for all", true, 1);
    change("for all to see", true, 2);
    const auto trail = service.as("rudi", "GET", "/v1/audit").body;
    EXPECT_FALSE(trail.contains("still secret")) << trail;
    EXPECT_TRUE(trail.contains("for all to see")) << trail;
    EXPECT_EQ(service.as("mira", "POST", "/v1/templates/" + id + "/remove").status, 200);
    EXPECT_TRUE(service.as("rudi", "GET", "/v1/audit?limit=1").body.contains("for all to see")) << "it was shared";
}

TEST_F(Audited, BooksStaySoundWhenTheClockIsPutBack)
{
    post(SampleBooks::income());
    seal("2026-03-12T00:05:00.000Z");
    service.moveClock(-std::chrono::hours{20});
    auto later = SampleBooks::income();
    later.idempotencyKey = "put back";
    post(later);
    seal("2026-03-11T00:05:00.000Z");
    seal("2026-03-13T00:05:00.000Z");
    EXPECT_LT(page().records[0].at, page().records[1].at);
    EXPECT_EQ(service.problems(), "");
}

/// A later release may write kinds that this one cannot place: of those no more is told than that something was done.
TEST_F(Audited, KindsThatNobodyHasPlacedTellNothingButThemselves)
{
    AuditRecord record;
    record.at = "2026-03-10T09:00:00.000Z";
    record.memberID = "mira";
    record.kind = "POST /v1/payroll/commands";
    record.after = R"({"salaryMinor":9900000})";
    service.write([&](Connection& connection) { AuditTrail::append(connection, "sample", record); });
    const auto told = service.as("mira", "GET", "/v1/audit?limit=1").body;
    EXPECT_TRUE(told.contains("POST /v1/payroll/commands")) << told;
    EXPECT_FALSE(told.contains("salaryMinor")) << told;
}

TEST_F(Audited, NothingInTheTrailCanBeChangedOrRemoved)
{
    post(SampleBooks::income());
    EXPECT_ANY_THROW(run({"UPDATE audit_records SET origin = '10.0.0.1'"}));
    EXPECT_ANY_THROW(run({"DELETE FROM audit_records WHERE number = 1"}));
    EXPECT_EQ(service.problems(), "");
}

TEST_F(Audited, VerifyNamesRecordsThatWereChangedOrRemoved)
{
    for (const auto* key : {"a", "b", "c"}) {
        auto input = SampleBooks::income();
        input.idempotencyKey = key;
        post(input);
    }
    tamper("UPDATE audit_records SET origin = '10.0.0.1' WHERE number = 2");
    EXPECT_EQ(service.problems(), "company sample: audit record 2: is not what was written\n");
    tamper("UPDATE audit_records SET origin = '127.0.0.1' WHERE number = 2");
    EXPECT_EQ(service.problems(), "");
    tamper("DELETE FROM audit_records WHERE number = 3");
    const auto problems = service.problems();
    EXPECT_NE(problems.find("company sample: audit record 3: is missing, with those up to 3\n"), std::string::npos);
    EXPECT_NE(problems.find("the audit trail does not tell of it\n"), std::string::npos) << problems;
}

TEST_F(Audited, VerifyNamesEntriesThatAreNotWhatWasRecorded)
{
    const auto entry = post(SampleBooks::income());
    const auto receipt = service.as("mira", "POST", "/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf()));
    const auto id = Json::decode<Attachment>(receipt.body).value_or(Attachment{}).id;
    service.as("mira", "POST", "/v1/transactions/" + entry.id + "/attachments", Json::encode(AttachmentLink{{id}}));
    service.as("mira", "POST", "/v1/transactions/" + entry.id + "/reverse", Json::encode(SampleBooks::reversal()));
    EXPECT_EQ(service.problems(), ""); // reversed and given receipts it is what was recorded
    run({fmt::format("UPDATE entries SET date = '2026-03-09' WHERE id = '{}'", entry.id),
         fmt::format("UPDATE entry_fragments SET text = replace(text, '\"date\":\"2026-03-10\"', "
                     "'\"date\":\"2026-03-09\"') WHERE text LIKE '{{\"id\":\"{}\"%'",
                     entry.id)});
    const auto problems = service.problems();
    const auto named = fmt::format("company sample: entry {}: is not what the audit trail tells\n", entry.id);
    EXPECT_NE(problems.find(named), std::string::npos) << problems;
}

TEST_F(Audited, ASealTellsTrailsThatWereMadeAnew)
{
    post(SampleBooks::income());
    seal("2026-03-11T00:05:00.000Z");
    seal("2026-03-11T00:15:00.000Z"); // is there already
    auto later = SampleBooks::income();
    later.idempotencyKey = "later";
    post(later);
    seal("2026-03-12T00:05:00.000Z");
    const AuditSeals seals{service.files()};
    EXPECT_EQ(seals.names(), (std::vector<std::string>{"2026-03-10.seal", "2026-03-11.seal"}));
    EXPECT_EQ(service.problems(), "");
    tamper("UPDATE audit_records SET origin = '10.0.0.1' WHERE number = 2");
    service.write([](Connection& connection) { // who can write can also chain
        std::vector<AuditRecord> records = AuditTrail::after(connection, "sample", 0, 10);
        std::vector<std::string> triggers;
        connection.execute("DROP TRIGGER audit_records_stay");
        std::string previous;
        for (const auto& each : records) {
            previous = AuditTrail::chained(previous, "sample", each);
            Query{connection, "UPDATE audit_records SET chain = :chain WHERE number = :number AND scope = 'sample'"}
                .bind("chain", previous)
                .bind("number", each.number)
                .run();
        }
        connection.execute("CREATE TRIGGER audit_records_stay BEFORE UPDATE ON audit_records "
                           "BEGIN SELECT RAISE(ABORT, 'the audit trail is only added to'); END");
    });
    EXPECT_EQ(service.problems(), "company sample: audit record 2: is not the one of seal 2026-03-10.seal\n"
                                  "company sample: audit record 3: is not the one of seal 2026-03-11.seal\n");
    std::filesystem::remove(seals.path() / "2026-03-10.seal");
    EXPECT_NE(service.problems().find("seal 2026-03-11.seal: does not follow the one before"), std::string::npos);
}

TEST_F(Audited, TheTrailGoesWithItsCompany)
{
    service.write([](Connection& connection) {
        AuditRecord record;
        record.at = "2026-03-10T00:00:00.000Z";
        record.origin = "service";
        record.kind = "sign-in";
        AuditTrail::append(connection, "gone", record);
        connection.execute("DELETE FROM audit_records WHERE scope = 'gone'");
    });
    EXPECT_EQ(service.problems(), "");
}

/// Digests of entries are of this text: another form of it would make every trail look changed.
TEST(AuditDigests, AreOfEntriesInTheFormInWhichTheyWereAlwaysWritten)
{
    LedgerTransaction entry;
    entry.id = "e";
    entry.kind = "transfer";
    entry.date = "2026-03-10";
    entry.note = "n";
    entry.createdAt = "s";
    entry.memberID = "m";
    entry.categoryID = "c";
    entry.legs = {{"a", "IDR", -5}, {"b", "IDR", 5}};
    entry.attachmentIDs = {"r"};
    entry.originalTransactionID = "o";
    entry.externalReference = "x";
    entry.transferPurpose = "funding";
    entry.distributionKind = "d";
    entry.participantName = "p";
    entry.dividendMovementID = "v";
    entry.capitalContributionID = "k";
    EXPECT_EQ(AuditTrail::digestOf(entry),
              AuditTrail::digestOf(
                  std::string_view{R"({"id":"e","kind":"transfer","date":"2026-03-10","note":"n","createdAt":"s",)"
                                   R"("memberID":"m","categoryID":"c","legs":[{"accountID":"a","currency":"IDR",)"
                                   R"("amountMinor":-5},{"accountID":"b","currency":"IDR","amountMinor":5}],)"
                                   R"("attachmentIDs":["r"],"originalTransactionID":"o","externalReference":"x",)"
                                   R"("transferPurpose":"funding","distributionKind":"d","participantName":"p",)"
                                   R"("dividendMovementID":"v","capitalContributionID":"k"})"}));
}

}
