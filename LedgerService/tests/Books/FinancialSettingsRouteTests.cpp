#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/financial-settings/commands";

/// The sample managed by guest, without a confirmed start. Its earliest entries are of 2026-01-01.
class FinancialSettingsRoute : public testing::Test {
protected:
    FinancialSettingsRoute()
    {
        m_service.write([](Connection& connection) {
            connection.execute(
                R"(UPDATE members SET permissions = '["viewCompany","manageCompany"]' WHERE id = 'guest')");
            connection.execute("UPDATE companies SET bookkeeping_start_date = NULL");
        });
    }
    ~FinancialSettingsRoute() override { EXPECT_EQ(m_service.problems(), ""); }

    HttpAnswer send(const FinancialSettingsCommand& command, const std::string& by = "guest")
    {
        return m_service.as(by, "POST", path, Json::encode(command));
    }
    FinancialSettings settings() { return *m_service.snapshotOf("rudi").financialSettings; }
    void startWith(const std::string& column, const std::string& value)
    {
        m_service.write([&](Connection& connection) {
            connection.execute(fmt::format("UPDATE companies SET {} = {}", column, value));
        });
    }

    TestService m_service;
};

FinancialSettingsCommand initialize(const std::string& day, const std::string& key, int revision = 1)
{
    FinancialSettingsCommand command;
    command.action = "initialize";
    command.expectedRevision = revision;
    command.idempotencyKey = key;
    command.bookkeepingStartDate = day;
    command.initializationMode = "openingBalances";
    return command;
}

FinancialSettingsCommand configure(bool contributions, bool dividends, const std::string& key, int revision)
{
    FinancialSettingsCommand command;
    command.action = "configure";
    command.expectedRevision = revision;
    command.idempotencyKey = key;
    command.contributionsEnabled = contributions;
    command.dividendsEnabled = dividends;
    return command;
}

TEST_F(FinancialSettingsRoute, ConfirmsTheStartOnce)
{
    EXPECT_EQ(send(initialize("2026-01-02", "k")).code(), "financial_start_date_conflict");
    EXPECT_EQ(send(initialize("2026-02-30", "k")).code(), "validation_error");
    EXPECT_EQ(send(initialize("2026-03-12", "k")).code(), "validation_error") << "in the future";
    EXPECT_EQ(send(initialize("0026-01-01", "k")).code(), "validation_error") << "a mistyped year";
    auto early = SampleBooks::income();
    early.date = "0026-03-01";
    EXPECT_EQ(m_service.as("mira", "POST", "/v1/transactions", Json::encode(early)).code(),
              "financial_before_start_date")
        << "it would hold the start back for ever";
    EXPECT_EQ(send(initialize("2026-01-01", "k", 0)).code(), "financial_settings_revision_conflict");
    EXPECT_EQ(send(initialize("2026-01-01", "k"), "mira").code(), "forbidden");
    EXPECT_EQ(send(initialize("2026-01-01", "k"), "gone").code(), "inactive_member");
    EXPECT_EQ(settings().revision, 1);

    const auto answer = send(initialize("2026-01-01", "k"));
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto after = settings();
    EXPECT_EQ(Json::decode<FinancialSettings>(answer.body), after);
    EXPECT_EQ(after.revision, 2);
    EXPECT_EQ(after.bookkeepingStartDate, "2026-01-01");
    EXPECT_EQ(after.initializedAt, "2026-03-10T09:30:00.000Z");

    EXPECT_EQ(send(initialize("2026-01-01", "k")).body, answer.body) << "sent again";
    EXPECT_EQ(send(initialize("2025-12-31", "k")).code(), "idempotency_conflict");
    EXPECT_EQ(send(initialize("2026-01-01", "other")).code(), "financial_settings_revision_conflict");
    EXPECT_EQ(send(initialize("2026-01-01", "other", 2)).code(), "financial_settings_initialized");
}

TEST_F(FinancialSettingsRoute, SetsBothSwitchesOnTheRevisionThatWasSeen)
{
    auto half = configure(true, false, "k", 1);
    half.dividendsEnabled.reset();
    EXPECT_EQ(send(half).code(), "validation_error");
    EXPECT_EQ(
        m_service.as("guest", "POST", path, R"({"action":"reset","expectedRevision":1,"idempotencyKey":"k"})").code(),
        "validation_error");
    ASSERT_EQ(send(configure(true, false, "k", 1)).status, 200);
    EXPECT_EQ(send(configure(false, true, "late", 1)).code(), "financial_settings_revision_conflict");
    const auto after = settings();
    EXPECT_TRUE(after.contributionsEnabled);
    EXPECT_FALSE(after.dividendsEnabled);
    EXPECT_EQ(after.featuresConfigured, true);
    EXPECT_EQ(after.revision, 2);
    startWith("settings_revision", "2147483647");
    EXPECT_EQ(send(configure(false, true, "last", 2147483647)).code(), "financial_settings_revision_limit");
}

TEST_F(FinancialSettingsRoute, BindsEntriesAndOpeningsToTheStart)
{
    const auto post = [&](TransactionInput input, const std::string& day, const std::string& key) {
        input.date = day;
        input.idempotencyKey = key;
        return m_service.as("mira", "POST", "/v1/transactions", Json::encode(input)).code();
    };
    ASSERT_EQ(send(initialize("2025-12-15", "k")).status, 200);
    EXPECT_EQ(post(SampleBooks::income(), "2025-12-14", "a"), "financial_before_start_date");
    EXPECT_EQ(post(SampleBooks::income(), "2025-12-15", "b"), "");
    EXPECT_EQ(post(SampleBooks::opening(), "2026-01-01", "c"), "financial_opening_date_mismatch");
    EXPECT_EQ(post(SampleBooks::opening(), "2025-12-15", "d"), "");
    EXPECT_EQ(post(SampleBooks::opening(), "2025-12-15", "e"), "financial_opening_exists");
}

}

}
