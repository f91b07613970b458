#include <algorithm>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Operations/People/CreateCompany.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/accounts";

/// The sample in which guest, who sees the whole company, also manages it and holds every right on its accounts.
class AccountRoutes : public testing::Test {
protected:
    AccountRoutes()
    {
        std::vector<AccountGrant> grants;
        for (const auto& each : SampleBooks::books().accounts)
            grants.push_back(Staff::every(each.id));
        Staff::set(m_service, "guest", "partner", {"viewCompany", "manageCompany"}, std::move(grants));
        m_service.write([](Connection& connection) { foundSample(connection, "other"); });
    }
    ~AccountRoutes() override { EXPECT_EQ(m_service.problems(), ""); }

    HttpAnswer create(const AccountCreate& command, const std::string& by = "guest")
    {
        return m_service.as(by, "POST", path, Json::encode(command));
    }
    HttpAnswer change(const std::string& id, const std::string& body, const std::string& by = "guest")
    {
        return m_service.as(by, "PATCH", fmt::format("{}/{}", path, id), body);
    }
    const Account& account(const std::string& name)
    {
        m_seen = m_service.snapshotOf("guest");
        const auto found = std::ranges::find(m_seen.accounts, name, &Account::name);
        return found == m_seen.accounts.end() ? m_none : *found;
    }
    std::string post(const std::string& by, TransactionInput input, const std::string& key)
    {
        input.idempotencyKey = key;
        return m_service.as(by, "POST", "/v1/transactions", Json::encode(input)).code();
    }

    TestService m_service;
    LedgerSnapshot m_seen;
    Account m_none;
};

AccountCreate drawer()
{
    AccountCreate command;
    command.name = " Kas kecil ";
    command.currencies = {"IDR", "USD"};
    command.purpose = "employee";
    command.operatorMemberID = "rudi";
    command.returnAccountID = "vault";
    command.fundingMemberIDs = {{"mira"}};
    return command;
}

}

TEST_F(AccountRoutes, MakeAFloatThatItsPeopleCanUseAtOnce)
{
    const auto answer = create(drawer());
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto reply = Json::decode<LedgerSnapshot>(answer.body);
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->accounts.back().name, "Kas kecil");
    const auto made = account("Kas kecil");
    EXPECT_EQ(made.operatorMemberID, "rudi");

    auto funding = SampleBooks::funding(30'000);
    funding.targetAccountID = made.id;
    EXPECT_EQ(post("mira", funding, "f"), "");
    auto spending = SampleBooks::expense(10'000);
    spending.sourceAccountID = made.id;
    EXPECT_EQ(post("rudi", spending, "s"), "");
    EXPECT_EQ(post("mira", spending, "m"), "not_found") << "who fills a float does not look into it";
    auto returning = SampleBooks::returning(20'000);
    returning.sourceAccountID = made.id;
    EXPECT_EQ(post("rudi", returning, "r"), "");
}

TEST_F(AccountRoutes, AnswerACommandSentTwiceByWhatItMade)
{
    ASSERT_EQ(create(drawer()).status, 200);
    const auto made = account("Kas kecil");
    auto funding = SampleBooks::funding(30'000);
    funding.targetAccountID = made.id;
    ASSERT_EQ(post("mira", funding, "f"), "");
    const auto again = create(drawer());
    EXPECT_EQ(again.status, 200) << again.body;
    EXPECT_EQ(std::ranges::count(Json::decode<LedgerSnapshot>(again.body)->accounts, "Kas kecil", &Account::name), 1);
    auto other = drawer();
    other.currencies = {"VND"};
    EXPECT_EQ(create(other).code(), "conflict");
    EXPECT_EQ(create(drawer(), "mira").code(), "forbidden");
}

TEST_F(AccountRoutes, RefuseHostileBodiesWithoutMakingAnything)
{
    const auto before = m_service.snapshotOf("guest");
    auto crowded = drawer();
    for (int number = 0; number < 10'000; ++number)
        crowded.currencies.push_back(fmt::format("X{:04}", number));
    EXPECT_EQ(create(crowded).code(), "validation_error");
    std::ranges::fill(crowded.currencies, "IDR");
    EXPECT_EQ(create(crowded).code(), "validation_error");
    for (const auto& name : {std::string{}, std::string{"\u3000\u00A0\u2003"}, std::string{"a\nb"},
                             std::string{"\x1B[31m"}, std::string{"a\xC3"}, std::string(100'000, 'x')}) {
        auto command = drawer();
        command.name = name;
        EXPECT_EQ(create(command).code(), "validation_error") << name.substr(0, 20);
    }
    auto foreign = drawer();
    foreign.operatorMemberID = "rudi-of-other";
    EXPECT_EQ(create(foreign).code(), "not_found");
    for (const auto* body : {"{}", "[]", R"({"name":"a","currencies":"IDR"})", R"({"name":"a","currencies":[1]})",
                             R"({"name":"a","currencies":["IDR"],"fundingMemberIDs":[null]})"})
        EXPECT_EQ(m_service.as("guest", "POST", path, body).code(), "validation_error") << body;
    EXPECT_EQ(change("no%20such", "{}").code(), "not_found");
    EXPECT_EQ(m_service.snapshotOf("guest"), before);
}

TEST_F(AccountRoutes, StayWithinTheCompanyAndWhatTheMemberSees)
{
    ASSERT_EQ(create(drawer()).status, 200);
    const auto id = account("Kas kecil").id;
    auto client = m_service.client();
    m_service.write([](Connection& connection) {
        connection.execute(R"(UPDATE members SET permissions = '["manageCompany"]' WHERE id = 'mira')");
    });
    const auto stranger = m_service.tokenOf("mira", "other");
    EXPECT_EQ(client.send("PATCH", fmt::format("{}/{}", path, id), stranger, R"({"name":"mine"})").code(), "not_found");
    EXPECT_EQ(change("hidden", R"({"name":"mine"})", "mira").code(), "not_found") << "mira does not see it";
    AccountCreate same;
    same.name = "hidden";
    same.currencies = {"IDR"};
    EXPECT_EQ(create(same, "mira").status, 200) << "a refusal would tell its name";
    auto returning = drawer();
    returning.name = "Second";
    returning.returnAccountID = "hidden";
    EXPECT_EQ(create(returning, "mira").code(), "not_found");
}

TEST_F(AccountRoutes, ArchiveWhatIsEmptyAndTakeItBack)
{
    EXPECT_EQ(change("bank", R"({"archived":true})").code(), "nonzero_balance");
    EXPECT_EQ(change("branch", R"({"archived":true})").status, 200);
    EXPECT_EQ(change("branch", R"({"archived":true})").status, 200) << "sent again";
    EXPECT_EQ(change("branch", R"({"name":"Branch 2"})").code(), "account_archived");
    EXPECT_EQ(post("mira", SampleBooks::transfer(), "t"), "account_archived");
    EXPECT_EQ(change("branch", R"({"archived":false,"name":"Branch 2"})").status, 200);
    EXPECT_EQ(post("mira", SampleBooks::transfer(), "t"), "");
    EXPECT_EQ(change("branch", R"({"archived":true})").code(), "nonzero_balance");
}

TEST_F(AccountRoutes, HandAFloatOverWithItsHistory)
{
    ASSERT_EQ(post("mira", SampleBooks::funding(20'000), "f"), "");
    EXPECT_EQ(change("float", R"({"operatorMemberID":""})").code(), "exclusive_operator");
    EXPECT_EQ(change("float", R"({"operatorMemberID":"mira"})").code(), "history_acknowledgement_required");
    EXPECT_EQ(change("float", R"({"operatorMemberID":"gone","acknowledgeHistoryAccess":true})").code(),
              "validation_error");
    ASSERT_EQ(change("float", R"({"operatorMemberID":"mira","acknowledgeHistoryAccess":true})").status, 200);
    EXPECT_EQ(change("float", R"({"operatorMemberID":"mira"})").status, 200) << "it is mira's already";
    auto spending = SampleBooks::expense(5'000);
    spending.sourceAccountID = "float";
    EXPECT_EQ(post("rudi", spending, "r"), "not_found");
    EXPECT_EQ(post("mira", spending, "m"), "");
    EXPECT_EQ(m_service.snapshotOf("rudi").account("float"), nullptr);
    EXPECT_EQ(change("float", R"({"purpose":"operating"})").code(), "nonzero_balance");
}

TEST_F(AccountRoutes, AreNoWayToRightsThatTheGiverDoesNotHold)
{
    Staff::set(m_service, "mira", "finance", {"manageCompany"},
               {{"bank", {"view"}}, {"float", {"view"}}, Staff::every("branch")});
    const auto before = m_service.snapshotOf("guest");
    for (const auto* body : {R"({"operatorMemberID":"mira","acknowledgeHistoryAccess":true})",
                             R"({"operatorMemberID":"rudi","acknowledgeHistoryAccess":true})"})
        EXPECT_EQ(change("bank", body, "mira").code(), "forbidden") << body;
    EXPECT_EQ(change("float", R"({"fundingMemberIDs":["mira"]})", "mira").code(), "forbidden");
    EXPECT_EQ(m_service.snapshotOf("guest"), before);
    EXPECT_EQ(change("branch", R"({"operatorMemberID":"rudi"})", "mira").status, 200) << "mira holds all of this";
    const auto after = m_service.snapshotOf("guest").members;
    EXPECT_TRUE(std::ranges::find(after, "rudi", &Member::id)->can("income", "branch"));
}

TEST_F(AccountRoutes, AskBeforeOthersSeeANewCurrency)
{
    EXPECT_EQ(change("branch", R"({"addCurrencies":["JPY"]})").code(), "validation_error");
    ASSERT_EQ(change("branch", R"({"addCurrencies":["JPY"],"acknowledgeCurrencyAccess":true})").status, 200);
    EXPECT_EQ(change("branch", R"({"addCurrencies":["JPY","IDR"]})").status, 200) << "nothing new";
    EXPECT_EQ(account("branch").currencies, (std::vector<std::string>{"IDR", "JPY"}));
}

TEST_F(AccountRoutes, GiveEveryoneANewTagAndOnlyThoseWhoMaySeeTheAccount)
{
    auto client = m_service.client();
    const auto tagOf = [&](const std::string& member) {
        return client.send("GET", "/v1/snapshot", m_service.tokenOf(member)).header("etag");
    };
    const auto before = std::pair{tagOf("mira"), tagOf("guest")};
    AccountCreate command;
    command.name = "Reserve";
    command.currencies = {"IDR"};
    ASSERT_EQ(create(command).status, 200);
    EXPECT_NE(tagOf("mira"), before.first);
    EXPECT_NE(tagOf("guest"), before.second);
    EXPECT_EQ(m_service.snapshotOf("mira").account(account("Reserve").id), nullptr);
}

/// Everything that a new company needs is done by its owner over HTTP.
TEST(FoundedCompany, IsSetUpFromNothing)
{
    TestService service;
    CreateCompany::Order order;
    order.companyName = "Pelabuhan";
    order.ownerName = "Dewi";
    order.ownerEmail = "dewi@pelabuhan.example";
    order.password = "kata sandi yang panjang";
    order.locale = "id-ID";
    {
        Connection connection{service.databaseFile(), Connection::Access::readWrite};
        ASSERT_TRUE(CreateCompany::carryOut(connection, order).has_value());
    }
    auto client = service.client();
    const auto signedIn =
        client.send("POST", "/v1/auth/login", "", Json::encode(Login{order.ownerEmail, order.password}));
    ASSERT_EQ(signedIn.status, 200) << signedIn.body;
    const auto token = Json::decode<AuthResponse>(signedIn.body)->token;
    const auto send = [&](const char* to, const std::string& body) {
        auto answer = client.send("POST", to, token, body);
        EXPECT_EQ(answer.status, 200) << to << " " << body << answer.body;
        return answer.body;
    };
    send("/v1/financial-settings/commands",
         R"({"action":"initialize","expectedRevision":0,"idempotencyKey":"s1","bookkeepingStartDate":"2026-02-01",)"
         R"("initializationMode":"openingBalances"})");
    send(path, R"({"name":"Bank","currencies":["IDR","USD"]})");
    const auto opened = Json::decode<LedgerSnapshot>(send(path, R"({"name":"Kas","currencies":["IDR"]})"));
    const auto category = Json::decode<CategoryCreationResponse>(
        send("/v1/categories", R"({"kind":"income","names":{"id-ID":"Penjualan"},"symbol":"shop"})"));
    const auto& bank = opened->accounts.front().id;
    send("/v1/transactions", fmt::format(R"({{"kind":"opening","date":"2026-02-01","note":"","currency":"IDR",)"
                                         R"("amountMinor":500000,"targetAccountID":"{}","attachmentIDs":[],)"
                                         R"("idempotencyKey":"e1"}})",
                                         bank));
    send("/v1/transactions", fmt::format(R"({{"kind":"income","date":"2026-03-10","note":"","currency":"IDR",)"
                                         R"("amountMinor":20000,"targetAccountID":"{}","categoryID":"{}",)"
                                         R"("attachmentIDs":[],"idempotencyKey":"e2"}})",
                                         bank, category->createdCategoryID));
    send("/v1/transactions", fmt::format(R"({{"kind":"transfer","date":"2026-03-10","note":"","currency":"IDR",)"
                                         R"("amountMinor":7000,"sourceAccountID":"{}","targetAccountID":"{}",)"
                                         R"("attachmentIDs":[],"idempotencyKey":"e3"}})",
                                         bank, opened->accounts.back().id));
    const auto books = Json::decode<LedgerSnapshot>(client.send("GET", "/v1/snapshot", token).body);
    EXPECT_EQ(books->account(bank)->balance("IDR"), 513'000);
    EXPECT_EQ(service.problems(), "");
}

}
