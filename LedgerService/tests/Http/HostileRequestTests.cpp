#include <cstdlib>
#include <map>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerService/testing/Random/RandomRequests.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

/// TALLYFOLD_HOSTILE_REQUESTS asks for more of them, TALLYFOLD_HOSTILE_SEED for others.
std::uint32_t numberFrom(const char* variable, std::uint32_t usual)
{
    const char* const text = std::getenv(variable);
    return text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : usual;
}

bool isFailure(int status)
{
    return status >= 500 && status != 501 && status != 503;
}

}

TEST(HostileRequests, AreAnsweredOrEndedAndLeaveTheServiceWhole)
{
    TestService service{[](ServerOptions& options) {
        options.limits.header = std::chrono::milliseconds{500};
        options.limits.body = std::chrono::milliseconds{500};
    }};
    const auto seed = numberFrom("TALLYFOLD_HOSTILE_SEED", 20'261'122);
    const auto count = numberFrom("TALLYFOLD_HOSTILE_REQUESTS", 700);
    RandomRequests requests{seed, {service.tokenOf("mira"), service.tokenOf("guest"), service.tokenOf("gone")}};
    std::map<int, std::uint32_t> answers;
    for (std::uint32_t number = 0; number < count; ++number) {
        const auto bytes = requests.next();
        auto client = service.client();
        client.write(bytes);
        client.finishSending();
        const auto answer = client.sendRaw("");
        ++answers[answer.status];
        ASSERT_FALSE(isFailure(answer.status))
            << "seed " << seed << ", request " << number << ": " << bytes.substr(0, 400) << "\n"
            << answer.body;
        if (answer.status >= 400 && !answer.body.empty())
            EXPECT_FALSE(answer.code().empty()) << bytes.substr(0, 400) << "\n" << answer.body;
        if (number % 100 == 0)
            ASSERT_EQ(service.client().send("GET", "/health/ready").status, 200) << number;
    }
    std::string told;
    for (const auto& [status, times] : answers)
        told += fmt::format("{}: {}, ", status, times);
    for (const int status : {0, 200, 400, 401, 403, 404, 405, 431, 501})
        EXPECT_GT(answers[status], 0U) << "the requests reach less than they should: " << told;
    EXPECT_EQ(service.problems(), "");
    EXPECT_EQ(service.as("mira", "GET", "/v1/snapshot").status, 200);
}

TEST(HostileRequests, WithTextsThatNoDatabaseKeepsAreRefusedEverywhereAlike)
{
    struct Row {
        const char* method;
        const char* path;
        const char* body;
    };
    constexpr Row rows[] = {
        {"POST", "/v1/auth/login", R"({"email":"a\u0000b","password":"an open secret"})"},
        {"POST", "/v1/transactions",
         R"({"kind":"income","date":"2026-03-10","note":"","currency":"IDR","amountMinor":5,"targetAccountID":"bank",
             "categoryID":"sales","attachmentIDs":[],"idempotencyKey":"a\u0000b"})"},
        {"POST", "/v1/transactions/sale/attachments", R"({"attachmentIDs":["\\\u0000"]})"},
        {"POST", "/v1/me/companies", R"({"companyName":"Toko","requestID":"\u0000"})"},
        {"GET", "/v1/audit?person=%FF", ""},
        {"GET", "/v1/audit?record=a%00b", ""},
        {"DELETE", "/v1/me/drafts/key?writer=%C3", ""},
    };
    TestService service;
    Staff::appoint(service);
    for (const auto& row : rows)
        EXPECT_EQ(service.as("mira", row.method, row.path, row.body).code(), "validation_error") << row.path;
    EXPECT_EQ(service.as("mira", "PATCH", "/v1/me/profile", R"({"name":"a\\u0000b"})").status, 200)
        << "a backslash, and letters after it";
    EXPECT_EQ(service.snapshotOf("mira").currentMember.name, R"(a\u0000b)");
}

TEST(HostileRequests, WithListsThatNoCommandNeedsAreRefusedWhoeverSendsThem)
{
    struct Row {
        const char* name;
        const char* by; // "rudi" may do none of this
        const char* method;
        const char* path;
        const char* body; // "{ids}" stands for the list
    };
    constexpr Row rows[] = {
        {"Invitation", "rudi", "POST", "/v1/invites",
         R"({"name":"A","email":"a@b.example","role":"employee","accountIDs":[{ids}],"permissions":[],
             "accountGrants":[]})"},
        {"Member", "mira", "PATCH", "/v1/members/rudi", R"({"accountIDs":[{ids}]})"},
        {"ActionsOfAGrant", "rudi", "PATCH", "/v1/members/rudi",
         R"({"accountGrants":[{"accountID":"bank","actions":[{ids}]}]})"},
        {"Funders", "mira", "POST", "/v1/accounts",
         R"({"name":"Box","currencies":["IDR"],"operatorMemberID":"rudi","purpose":"employee","returnAccountID":"bank",
             "fundingMemberIDs":[{ids}]})"},
        {"Receipts", "rudi", "POST", "/v1/transactions/sale/attachments", R"({"attachmentIDs":[{ids}]})"},
        {"Categories", "rudi", "POST", "/v1/categories/reorder",
         R"({"kind":"income","orderedIDs":[{ids}],"expectedIDs":[]})"},
    };
    TestService service;
    Staff::appoint(service);
    for (const auto& row : rows) {
        for (const bool differ : {true, false}) {
            std::string ids;
            for (int each = 0; each < 3'000; ++each)
                ids += fmt::format("{}\"{}\"", ids.empty() ? "" : ",", differ ? fmt::format("id-{}", each) : "mira");
            std::string body = row.body;
            body.replace(body.find("{ids}"), 5, ids);
            const auto answer = service.as(row.by, row.method, row.path, body);
            EXPECT_EQ(answer.code(), "validation_error") << row.name << " " << answer.body.substr(0, 200);
        }
    }
}

}
