#include <map>
#include <set>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/Random/RandomSetup.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/Staff.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto today = "2026-03-10";

struct Sent {
    const char* method;
    std::string path;
    std::string body;
    std::string code; // that the member's own sight of the company lets one expect; empty: accepted
};

template <class Reason>
std::string codeOf(const std::optional<Reason>& shape, const std::optional<Reason>& reason)
{
    const auto& first = shape ? shape : reason;
    return first ? std::string{SetupRefusal::of(*first).code} : std::string{};
}

/// What the window would send, and what it would say of it by the snapshot that it holds.
struct AsSeen {
    const LedgerSnapshot& seen;

    Sent operator()(const AccountCreate& command) const
    {
        const auto ground = AccountRules::groundOf(seen);
        const auto shape = AccountRules::whyNotShaped(command);
        const bool made = !shape && AccountRules::alreadyCreated(command, ground);
        return {"POST", "/v1/accounts", Json::encode(command),
                made ? "" : codeOf(shape, AccountRules::whyNotCreate(command, ground))};
    }
    Sent operator()(const RandomSetup::AccountChange& change) const
    {
        const auto history = AccountRules::historyOf(change.id, seen);
        const auto reason = AccountRules::whyNotUpdate(change.id, change.update, AccountRules::groundOf(seen), history);
        return {"PATCH", "/v1/accounts/" + change.id, Json::encode(change.update),
                codeOf(AccountRules::whyNotShaped(change.update), reason)};
    }
    Sent operator()(const CategoryCreate& command) const
    {
        const auto shape = CategoryRules::whyNotShaped(command);
        const auto reason = CategoryRules::whyNotCreate(command, seen.currentMember, seen.categories);
        const bool made = !shape && reason == CategoryRules::Refusal::nameTaken &&
                          CategoryRules::alreadyCreated(command, seen.categories);
        return {"POST", "/v1/categories", Json::encode(command), made ? "" : codeOf(shape, reason)};
    }
    Sent operator()(const RandomSetup::CategoryChange& change) const
    {
        const auto reason = CategoryRules::whyNotUpdate(change.id, change.update, seen.currentMember, seen.categories);
        return {"PATCH", "/v1/categories/" + change.id, Json::encode(change.update),
                codeOf(CategoryRules::whyNotShaped(change.update), reason)};
    }
    Sent operator()(const CategoryReorder& command) const
    {
        const auto reason = CategoryRules::whyNotReorder(command, seen.currentMember, seen.categories);
        return {"POST", "/v1/categories/reorder", Json::encode(command),
                codeOf(CategoryRules::whyNotShaped(command), reason)};
    }
    Sent operator()(const FinancialSettingsCommand& command) const
    {
        const FinancialSettingsRules::Ground ground{.member = seen.currentMember,
                                                    .settings = seen.financialSettings,
                                                    .earliestEntryDay =
                                                        OpeningBalancePolicy::earliestVisibleTransactionDay(seen),
                                                    .latestEntryDay = EntryDays::latest(today)};
        return {"POST", "/v1/financial-settings/commands", Json::encode(command),
                codeOf(FinancialSettingsRules::whyNotShaped(command), FinancialSettingsRules::whyNot(command, ground))};
    }
};

/// Several members who set the company up and record entries in turns, over HTTP.
class Walk {
public:
    explicit Walk(std::uint32_t seed) : m_setup(seed), m_entries(seed)
    {
        std::vector<AccountGrant> grants;
        for (const auto* account : {"bank", "branch", "float", "refunds", "closed", "hidden"}) // none on "vault"
            grants.push_back(Staff::every(account));
        Staff::set(m_service, "guest", "partner", {"viewCompany", "manageCompany"}, std::move(grants));
        m_service.write([](Connection& connection) {
            connection.execute(R"(UPDATE members SET permissions = '["manageCompany"]' WHERE id = 'mira')");
            connection.execute("UPDATE companies SET bookkeeping_start_date = NULL");
        });
        for (const auto* member : {"guest", "mira", "rudi", "gone"})
            m_tokens[member] = m_service.tokenOf(member);
    }

    void step(int number, std::map<std::string, int>& accepted, std::set<std::string>& refused)
    {
        if (number % 3 == 0)
            post(number);
        else
            setUp(accepted, refused);
        ASSERT_EQ(m_service.problems(), "");
    }

private:
    LedgerSnapshot sightOf(const std::string& member)
    {
        return *Json::decode<LedgerSnapshot>(m_client.send("GET", "/v1/snapshot", m_tokens[member]).body);
    }

    void setUp(std::map<std::string, int>& accepted, std::set<std::string>& refused)
    {
        const auto actor = m_setup.actor();
        const auto before = sightOf(actor);
        const auto sent = std::visit(AsSeen{before}, m_setup.next(before));
        const auto answer = m_client.send(sent.method, sent.path, m_tokens[actor], sent.body);
        ASSERT_EQ(answer.code(), sent.code) << actor << " " << sent.path << " " << sent.body << "\n" << answer.body;
        if (answer.status == 200)
            ++accepted[sent.path.substr(0, sent.path.find('/', 4))];
        else
            ASSERT_EQ(sightOf(actor), before);
        refused.insert(answer.code());
    }

    void post(int number)
    {
        Books seen;
        for (const auto& entry : sightOf("guest").transactions)
            seen.entries.push_back(entry);
        auto input = m_entries.inputFor(seen);
        input.idempotencyKey = fmt::format("entry-{}", number);
        const auto answer = m_client.send("POST", "/v1/transactions", m_tokens[m_entries.actor()], Json::encode(input));
        ASSERT_LT(answer.status, 500) << answer.body;
    }

    TestService m_service;
    HttpClient m_client{m_service.port()};
    std::map<std::string, std::string> m_tokens;
    RandomSetup m_setup;
    RandomCommands m_entries;
};

TEST(SetupWalk, KeepsTheBooksWholeAndAgreesWithWhatMembersSee)
{
    std::map<std::string, int> accepted;
    std::set<std::string> refused;
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        Walk walk{seed};
        for (int number = 1; number <= 240; ++number) {
            SCOPED_TRACE(fmt::format("step {}", number));
            ASSERT_NO_FATAL_FAILURE(walk.step(number, accepted, refused));
        }
    }
    for (const auto* family : {"/v1/accounts", "/v1/categories", "/v1/financial-settings"})
        EXPECT_GE(accepted[family], 15) << family;
    for (const auto* code :
         {"forbidden", "validation_error", "not_found", "conflict", "account_archived", "nonzero_balance",
          "exclusive_operator", "history_acknowledgement_required", "CATEGORY_ARCHIVED", "CATEGORY_PARENT_INVALID",
          "CATEGORY_PARENT_INACTIVE", "CATEGORY_HAS_ACTIVE_CHILDREN", "financial_settings_revision_conflict",
          "financial_settings_initialized", "financial_start_date_conflict"})
        EXPECT_TRUE(refused.contains(code)) << code;
}

}

}
