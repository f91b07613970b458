#include "LedgerCore/Domain/Dividends/DividendAccounting.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using enum DividendError;

DividendMovement movement(std::string id, std::string kind, std::int64_t amount, std::string date)
{
    DividendMovement made;
    made.id = std::move(id);
    made.kind = std::move(kind);
    made.participantID = "ann";
    made.currency = "USD";
    made.amountMinor = amount;
    made.date = std::move(date);
    if (made.kind == "payment" || made.kind == "application")
        made.batchID = "q1";
    if (made.kind == "return" || made.kind == "application")
        made.advanceID = "a1";
    return made;
}

void reverse(DividendState& state, std::size_t at, std::string date)
{
    auto reversal = state.movements.at(at);
    reversal.id = "r" + reversal.id;
    reversal.kind = "reversal";
    reversal.date = std::move(date);
    reversal.reversalOf = state.movements[at].id;
    reversal.batchID = reversal.advanceID = std::nullopt;
    state.movements[at].reversedBy = reversal.id;
    state.movements.push_back(std::move(reversal));
}

/// 1,000.00 allocated to Ann (600.00) and Bo; Ann had an advance of 100.00, of which 60.00 were applied and 40.00 given
/// back, and was paid 200.00.
DividendState section()
{
    DividendState state;
    state.participants = {{.id = "ann", .name = "Ann", .memberID = {}, .ratioBps = 6000},
                          {.id = "bo", .name = "Bo", .memberID = {}, .ratioBps = 4000}};
    state.batches = {{.id = "q1",
                      .period = "2024 Q1",
                      .currency = "USD",
                      .amountMinor = 100000,
                      .date = "2024-04-01",
                      .createdAt = "",
                      .lines = {{"ann", "Ann", 6000, 60000}, {"bo", "Bo", 4000, 40000}},
                      .cancelledDate = {}}};
    state.movements = {movement("a1", "advance", 10000, "2024-02-01"),
                       movement("m2", "application", 6000, "2024-04-01"), movement("m3", "return", 4000, "2024-04-02"),
                       movement("m4", "payment", 20000, "2024-05-01")};
    return state;
}

TEST(DividendAccounting, TellsALineApart)
{
    EXPECT_EQ(DividendAccounting::lineSummary("q1", "ann", section(), std::nullopt),
              (DividendLineSummary{60000, 6000, 20000, 34000}));
    EXPECT_EQ(DividendAccounting::lineSummary("q1", "ann", section(), "2024-04-30"),
              (DividendLineSummary{60000, 6000, 0, 54000}));
    EXPECT_EQ(DividendAccounting::unpaid("q1", "bo", section(), std::nullopt), 40000);
    EXPECT_EQ(DividendAccounting::unpaid("q1", "bo", section(), "2024-03-31"), 0);
    EXPECT_EQ(DividendAccounting::unpaid("q9", "bo", section(), std::nullopt), 0);
}

TEST(DividendAccounting, TellsWhatIsLeftOfAnAdvance)
{
    EXPECT_EQ(DividendAccounting::advanceRemaining("a1", section(), "2024-03-31"), 10000);
    EXPECT_EQ(DividendAccounting::advanceRemaining("a1", section(), "2024-04-01"), 4000);
    EXPECT_EQ(DividendAccounting::advanceRemaining("a1", section(), std::nullopt), 0);
    EXPECT_EQ(DividendAccounting::advanceRemaining("m4", section(), std::nullopt), 0);

    auto state = section();
    state.movements.push_back(movement("m5", "return", 1, "2024-06-01"));
    EXPECT_EQ(DividendAccounting::advanceRemaining("a1", state, std::nullopt).error(), invalidState);
}

TEST(DividendAccounting, CountsAPaymentUntilTheDayOfItsReversal)
{
    auto state = section();
    reverse(state, 3, "2024-06-15");
    EXPECT_EQ(DividendAccounting::unpaid("q1", "ann", state, "2024-06-14"), 34000);
    EXPECT_EQ(DividendAccounting::unpaid("q1", "ann", state, "2024-06-15"), 54000);
    EXPECT_EQ(DividendAccounting::periodPaid("USD", "2024-05-01", "2024-05-31", "ann", state), 20000);
    EXPECT_EQ(DividendAccounting::periodPaid("USD", "2024-05-01", std::nullopt, "ann", state), 0);
}

TEST(DividendSummary, KeepsPeriodAndCutoffApart)
{
    const auto summary = DividendSummary::create(section(), "USD", "2024-04-01", "2024-04-30");
    ASSERT_TRUE(summary.has_value());
    EXPECT_EQ(summary->participants[0], (DividendParticipantSummary{"ann", "Ann", 0, 4000, -4000, 54000, 0, 6000}));
    EXPECT_EQ(summary->participants[1], (DividendParticipantSummary{"bo", "Bo", 0, 0, 0, 40000, 0, 0}));
    EXPECT_EQ(summary->unpaidMinor, 94000);
    const auto later = DividendSummary::create(section(), "USD", "2024-04-03", "2024-05-01");
    EXPECT_EQ(later->participants[0], (DividendParticipantSummary{"ann", "Ann", 20000, 0, 20000, 34000, 0, 26000}));

    const auto all = DividendSummary::create(section(), "USD", std::nullopt, std::nullopt);
    EXPECT_EQ(all->participants[0], (DividendParticipantSummary{"ann", "Ann", 30000, 4000, 26000, 34000, 0, 26000}));
    EXPECT_EQ(all->paidMinor, 30000);
    EXPECT_EQ(DividendSummary::create(section(), "EUR", std::nullopt, std::nullopt)->unpaidMinor, 0);
}

TEST(DividendSummary, LeavesCancelledBatchesOutFromTheDayOfCancelling)
{
    auto state = section();
    state.movements.clear();
    state.batches[0].cancelled = true;
    EXPECT_EQ(DividendSummary::create(state, "USD", std::nullopt, "2024-05-01")->unpaidMinor, 0);
    state.batches[0].cancelledDate = "2024-05-02";
    EXPECT_EQ(DividendSummary::create(state, "USD", std::nullopt, "2024-05-01")->unpaidMinor, 100000);
    EXPECT_EQ(DividendSummary::create(state, "USD", std::nullopt, std::nullopt)->unpaidMinor, 0);
}

TEST(DividendSummary, KeepsABatchCancelledOnNoDayAsLongAsItWasSettled)
{
    auto state = section();
    state.movements = {movement("m4", "payment", 20000, "2024-05-01")};
    reverse(state, 0, "2024-06-01");
    state.batches[0].cancelled = true;
    const auto unpaidAt = [&](const char* day) {
        const auto summary = DividendSummary::create(state, "USD", std::nullopt, day);
        return summary ? std::optional{summary->unpaidMinor} : std::nullopt;
    };
    EXPECT_EQ(unpaidAt("2024-04-15"), 100000);
    EXPECT_EQ(unpaidAt("2024-05-31"), 80000);
    EXPECT_EQ(unpaidAt("2024-06-01"), 0);
}

TEST(DividendSummary, RefusesUnknownCurrenciesAndBackwardRanges)
{
    EXPECT_EQ(DividendSummary::create(section(), "XYZ", std::nullopt, std::nullopt).error(), invalidState);
    EXPECT_EQ(DividendSummary::create(section(), "USD", "2024-02-01", "2024-01-31").error(), invalidState);
    EXPECT_EQ(DividendSummary::create(section(), "USD", std::nullopt, "soon").error(), invalidState);
}

struct StateCase {
    const char* name;
    void (*arrange)(DividendState&);
    std::optional<DividendError> error;
};

class DividendSection : public testing::TestWithParam<StateCase> {};

TEST_P(DividendSection, IsCountedWholeOrNotAtAll)
{
    auto state = section();
    GetParam().arrange(state);
    const auto summary = DividendSummary::create(state, "USD", std::nullopt, std::nullopt);
    EXPECT_EQ(summary.has_value() ? std::nullopt : std::optional{summary.error()}, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    States, DividendSection,
    testing::Values(
        StateCase{"PaidInFull", [](auto& s) { s.movements[3].amountMinor = 54000; }, std::nullopt},
        StateCase{"PaidPastTheLine", [](auto& s) { s.movements[3].amountMinor = 54001; }, invalidState},
        StateCase{"AdvanceReversedThoughUsed", [](auto& s) { reverse(s, 0, "2024-07-01"); }, invalidState},
        StateCase{"BatchCancelledThoughPaid", [](auto& s) { s.batches[0].cancelled = true; }, invalidState},
        StateCase{"LinesShortOfTheTotal", [](auto& s) { s.batches[0].lines[1].amountMinor = 39999; }, invalidState},
        StateCase{"RatiosShortOfTheWhole", [](auto& s) { s.batches[0].lines[1].ratioBps = 3999; }, invalidState},
        StateCase{"ParticipantTwiceInABatch", [](auto& s) { s.batches[0].lines[1].participantID = "ann"; },
                  invalidState},
        StateCase{"BatchOfNothing", [](auto& s) { s.batches[0].amountMinor = 0; }, invalidAmount},
        StateCase{"BatchOnNoDay", [](auto& s) { s.batches[0].date = "2024-04-31"; }, invalidState},
        StateCase{"MovementOfNothing", [](auto& s) { s.movements[3].amountMinor = 0; }, invalidAmount},
        StateCase{"MovementPastTheLimit", [](auto& s) { s.movements[3].amountMinor = Money::maximumMinor + 1; },
                  invalidAmount},
        StateCase{"MovementOfUnknownKind", [](auto& s) { s.movements[3].kind = "gift"; }, invalidState},
        StateCase{"MovementOfAStranger", [](auto& s) { s.movements[3].participantID = "x"; }, invalidState},
        StateCase{"PaymentOfNoBatch", [](auto& s) { s.movements[3].batchID.reset(); }, invalidState},
        StateCase{"ReturnOfNoAdvance", [](auto& s) { s.movements[2].advanceID = "m4"; }, invalidState},
        StateCase{"AnothersAdvanceApplied", [](auto& s) { s.movements[1].participantID = "bo"; }, invalidState},
        StateCase{"MovementsOfOneIdentifier", [](auto& s) { s.movements[3].id = "m3"; }, invalidState},
        StateCase{"ReversalMissing", [](auto& s) { s.movements[3].reversedBy = "r9"; }, invalidState},
        StateCase{"ReversalOfAnotherAmount",
                  [](auto& s) {
                      reverse(s, 3, "2024-06-15");
                      s.movements.back().amountMinor = 1;
                  },
                  invalidState},
        StateCase{"ReversalBeforeItsMovement", [](auto& s) { reverse(s, 3, "2024-04-30"); }, invalidState},
        StateCase{"OtherCurrenciesAreNotLookedAt",
                  [](auto& s) {
                      s.movements.push_back(movement("m9", "gift", 0, ""));
                      s.movements.back().currency = "EUR";
                  },
                  std::nullopt}),
    [](const auto& each) { return std::string{each.param.name}; });

}
