#include "LedgerCore/Domain/Imports/ImportDryRun.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Lines = std::vector<std::string>;

/// A bank with USD and JPY, the member's float with 50.00 and a till; books that start on 2026-01-01.
SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"USD", "JPY"}).account("till", {"USD"}).employeeAccount("float", {"USD"}, "m1");
    builder.grantAll().balance("float", "USD", 5'000);
    builder.category("rent", "expense", "Rent").category("sales", "income", "Sales");
    FinancialSettings settings;
    settings.bookkeepingStartDate = "2026-01-01";
    return builder.settings(settings);
}

LedgerImportPlan planOf(std::string_view rows, const LedgerSnapshot& held)
{
    return LedgerImportCSV::plan(LedgerImportCSV::templateText() + std::string{rows}, held);
}

/// "line key: text" of every refusal.
Lines refused(std::string_view rows, const LedgerSnapshot& held = books().build())
{
    const auto plan = planOf(rows, held);
    EXPECT_EQ(plan.issues, std::vector<LedgerImportIssue>{});
    Lines said;
    for (const auto& each : ImportDryRun::run(plan, VisibleBooks{held}, "2026-03-10"))
        said.push_back(std::to_string(each.line) + " " + std::string{ImportDryRun::key(each)} + ": " +
                       each.problem.message("en"));
    return said;
}

}

TEST(ImportDryRun, NamesTheRowsThatTheBooksWouldRefuse)
{
    const auto longNote = std::string(2'001, 'n');
    EXPECT_EQ(refused("2026-01-01,Opening,bank,USD,100,,,,,\n"
                      "\n"
                      "2026-01-01,Opening,bank,USD,200,,,,,\n"
                      "2026-01-02,Opening,till,USD,5,,,,,\n"
                      "2026-01-03,Income,bank,USD,1,Sales," +
                      longNote +
                      ",,,\n"
                      "2026-03-11,Income,bank,USD,1,Sales,,,,\n"
                      "2026-03-12,Income,bank,USD,1,Sales,,,,\n"),
              (Lines{"4 openingExists: This account already has an active opening balance in this currency. Check the "
                     "original record.",
                     "5 openingDay: Opening balances are recorded on the bookkeeping start date.",
                     "6 noteTooLong: The note cannot be longer than 2,000 characters.",
                     "8 inFuture: The day cannot be later than tomorrow."}));
}

TEST(ImportDryRun, CarriesTheBalancesFromRowToRow)
{
    EXPECT_EQ(refused("2026-01-05,Expense,float,USD,50,Rent,,,,\n"
                      "2026-01-05,Expense,float,USD,0.01,Rent,,,,\n"
                      "2026-01-06,Transfer,bank,USD,30,,,float,,\n"
                      "2026-01-07,Transfer,float,USD,30.00,,,bank,,\n"
                      "2026-01-07,Expense,float,USD,1,Rent,,,,\n"),
              (Lines{"3 insufficientFunds: Insufficient petty cash. Available balance in this currency: USD 0.00",
                     "6 insufficientFunds: Insufficient petty cash. Available balance in this currency: USD 0.00"}));
    EXPECT_EQ(
        refused("2026-01-05,Income,bank,JPY,9000000000000,Sales,,,,\n"
                "2026-01-05,Exchange,bank,USD,1,,,bank,JPY,1\n"
                "2026-01-05,Expense,bank,JPY,1,Rent,,,,\n"
                "2026-01-05,Exchange,bank,USD,1,,,bank,JPY,1\n"),
        (Lines{"3 balanceLimit: The balance would exceed the supported range. The limit is JPY 9,000,000,000,000."}));
}

TEST(ImportDryRun, CountsWhatARowMovesOnceItIsMended)
{
    // Only the first row is wrong: dated rightly, it pays for the second.
    EXPECT_EQ(refused("2026-03-12,Transfer,bank,USD,30,,,float,,\n"
                      "2026-03-12,Expense,float,USD,80,Rent,,,,\n")
                  .size(),
              2);
    EXPECT_EQ(refused("2026-03-12,Expense,float,USD,80,Rent,,,,\n").size(), 2); // the day and the money
}

TEST(ImportDryRun, TakesUpAFileThatWasStoppedHalfWay)
{
    auto held = books().build();
    constexpr std::string_view rows = "2026-01-01,Opening,bank,USD,100,,,,,\n"
                                      "2026-01-05,Expense,float,USD,50,Rent,,,,\n"
                                      "2026-01-05,Expense,float,USD,1,Rent,,,,\n";
    const auto plan = planOf(rows, held);
    for (std::size_t at = 0; at < 2; ++at) {
        LedgerTransaction recorded;
        recorded.id = plan.inputs.at(at).idempotencyKey;
        recorded.kind = plan.inputs[at].kind;
        recorded.date = plan.inputs[at].date;
        recorded.legs = {
            {*(plan.inputs[at].kind == "opening" ? plan.inputs[at].targetAccountID : plan.inputs[at].sourceAccountID),
             "USD", 1}};
        held.transactions.push_back(recorded);
    }
    held.accounts[2].balances["USD"] = 0;
    EXPECT_EQ(refused(rows, held),
              (Lines{"4 insufficientFunds: Insufficient petty cash. Available balance in this currency: USD 0.00"}));
}

TEST(ImportDryRun, SaysNothingOfWhatItCannotKnow)
{
    auto held = books().expense("e1", "2026-01-03", "float", "USD", 100).build();
    held.accounts[2].balances.clear(); // entries move it, but what it holds is not told
    EXPECT_EQ(refused("2026-01-05,Expense,float,USD,50,Rent,,,,\n", held), Lines{});
    held.transactions.clear();
    EXPECT_EQ(refused("2026-01-05,Expense,float,USD,50,Rent,,,,\n", held).size(), 1);
}
