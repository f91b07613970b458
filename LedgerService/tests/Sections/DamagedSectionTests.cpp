#include <string>
#include <vector>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleSections.h"

// What the service answers once somebody has changed the rows of a section past it.

namespace LedgerService {

namespace {

using namespace SampleSections;

void change(SectionService& service, const std::string& statement)
{
    service.write([&](Connection& connection) { connection.execute(statement); });
}

struct Damage {
    std::string name;
    std::string statement;
};

/// Damages a section in one currency: what is asked in that one is refused with this code and changes nothing.
template <class Command>
void expectRefusals(SectionService& service, const Damage& damage, const char* code,
                    const std::vector<Command>& refused, const Command& inAnotherCurrency)
{
    const auto before = service.snapshotOf("mira");
    change(service, damage.statement);
    for (const auto& command : refused) {
        const auto answer = service.submit("mira", command);
        EXPECT_EQ(answer.status, 409) << damage.name << ": " << command.action;
        EXPECT_EQ(answer.code(), code) << damage.name << ": " << command.action;
    }
    const auto after = service.snapshotOf("mira");
    EXPECT_EQ(after.capital->revision, before.capital->revision) << damage.name;
    EXPECT_EQ(after.dividends->revision, before.dividends->revision) << damage.name;
    EXPECT_EQ(after.account("bank")->balances, before.account("bank")->balances) << damage.name;
    EXPECT_EQ(service.submit("mira", inAnotherCurrency).code(), "") << damage.name << ": other currencies do";
}

}

TEST(DamagedSections, TakeNoMoreContributionsInTheCurrencyThatDoesNotVerify)
{
    const Damage damages[] = {
        {"an amount below zero", "UPDATE capital_contributions SET amount_minor = -1000 WHERE reversal_of IS NULL"},
        {"an owner who is none", "UPDATE capital_contributions SET participant_id = 'nobody'"},
        {"a reversal of another amount", "UPDATE capital_contributions SET amount_minor = -1 WHERE amount_minor = -70"},
        {"a baseline over a contribution", "UPDATE capital_baselines SET through_date = '2026-03-10'"},
    };
    for (const auto& damage : damages) {
        SectionService service;
        const auto ann = service.added(owner("Ann"));
        auto history = capital(CapitalAction::setBaseline);
        history.currency = "IDR";
        history.throughDate = "2025-12-31";
        history.entries = {{ann, "", 500}};
        const auto baseline = service.added(history);
        const auto paid = service.added(contribution(ann, 1'000));
        auto undone = capital(CapitalAction::reverse);
        undone.contributionID = service.added(contribution(ann, 70));
        service.added(undone);

        history.replacesID = baseline;
        auto reversal = undone;
        reversal.contributionID = paid;
        expectRefusals(service, damage, "capital_integrity", {contribution(ann, 5), reversal, history},
                       contribution(ann, 5, "bank", "USD"));
    }
}

TEST(DamagedSections, AllocatePayAndUndoNothingInTheCurrencyThatDoesNotVerify)
{
    const Damage damages[] = {
        {"paid past the line", "UPDATE dividend_movements SET amount_minor = 1001 WHERE kind = 'payment'"},
        {"given back past the advance", "UPDATE dividend_movements SET amount_minor = 301 WHERE kind = 'return'"},
        {"a movement of nobody", "UPDATE dividend_movements SET participant_id = 'nobody' WHERE kind = 'return'"},
        {"lines that do not add up", "UPDATE dividend_batches SET amount_minor = 1001 WHERE amount_minor = 1000"},
    };
    for (const auto& damage : damages) {
        SectionService service;
        const auto ann = service.added(participant("Ann", 10'000));
        const auto batch = service.added(allocation(1'000, {{ann, 10'000}}));
        const auto unpaid = service.added(allocation(7, {{ann, 10'000}}));
        const auto paid = service.added(payment(batch, ann, 400));
        auto returning = dividend(DividendAction::returnAdvance);
        returning.advanceID = service.added(advanceTo(ann, 300));
        returning.amountMinor = 100;
        returning.accountID = "bank";
        returning.currency = "IDR";
        service.added(returning);

        auto cancellation = dividend(DividendAction::cancelBatch);
        cancellation.batchID = unpaid;
        auto reversal = dividend(DividendAction::reverse);
        reversal.movementID = paid;
        expectRefusals(service, damage, "dividend_integrity",
                       {allocation(5, {{ann, 10'000}}), payment(batch, ann, 1), advanceTo(ann, 1), returning,
                        cancellation, reversal},
                       advanceTo(ann, 5, "bank", "USD"));
    }
}

TEST(DamagedSections, AreTakenAsTheyWereReadUntilTheServiceStartsAgain)
{
    SectionService service;
    const auto ann = service.added(owner("Ann"));
    service.added(contribution(ann, 1'000));
    const auto dee = service.added(participant("Dee", 10'000));
    const auto batch = service.added(allocation(1'000, {{dee, 10'000}}));
    service.added(payment(batch, dee, 400));
    for (int at = 0; at < 40; ++at) { // enough that the sections are worth knowing
        auto renamed = owner(fmt::format("Ann {}", at));
        renamed.participantID = ann;
        ASSERT_EQ(service.submit("mira", renamed).status, 200);
        auto called = participant(fmt::format("Dee {}", at), 10'000);
        called.participantID = dee;
        ASSERT_EQ(service.submit("mira", called).status, 200);
    }
    service.capital();
    change(service, "UPDATE capital_contributions SET amount_minor = -1000");
    change(service, "UPDATE dividend_movements SET amount_minor = 1001");
    EXPECT_EQ(service.submit("mira", contribution(ann, 5)).code(), "");
    EXPECT_EQ(service.submit("mira", payment(batch, dee, 5)).code(), "");

    service.stop();
    const TestService again{[&](ServerOptions& options) {
        options.databaseFile = service.databaseFile();
        options.files = service.files();
    }};
    const auto token = service.tokenOf("mira");
    const auto post = [&](const char* path, auto command, int revision) {
        command.expectedRevision = revision;
        command.idempotencyKey = "again";
        return again.client().send("POST", path, token, Json::encode(command)).code();
    };
    EXPECT_EQ(post("/v1/capital/commands", contribution(ann, 5), 43), "capital_integrity");
    EXPECT_EQ(post("/v1/dividends/commands", payment(batch, dee, 5), 44), "dividend_integrity");
}

}
