#include "LedgerUI/Presentation/Requests/UnconfirmedRequests.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

constexpr auto sent = "2026-11-20T12:00:00.000Z";

/// What a row says, without the time of day, which depends on where the test runs.
std::string told(const UnconfirmedRequest& row)
{
    auto text = row.what + QStringLiteral(" | ") + (row.amount.currency.isEmpty() ? QString{} : row.amount.text()) +
                QStringLiteral(" | ") + row.standing + QStringLiteral(" | ") +
                row.when.section(QStringLiteral(" · "), 0, 0);
    return text.toStdString() + (row.mayRetry ? " | retry" : "") + (row.hasForm ? " | form" : "");
}

LedgerSnapshot books()
{
    auto held = snapshot()
                    .account("Bank", {"USD"})
                    .account("Cash", {"USD"})
                    .category("travel", "expense", "Travel")
                    .category("taxi", "expense", "Taxi", "travel")
                    .expense("e1", "2026-11-02", "Bank", "USD", 30'000, "taxi")
                    .build();
    held.capital.emplace().participants = {{"p1", "Sri Wulandari", std::nullopt, false}};
    held.dividends.emplace().participants = {{"p2", "Bayu", std::nullopt, 0, false}};
    return held;
}

KeptEntry entry(std::string_view kind, bool outcomeUnknown)
{
    TransactionInput input;
    input.kind = kind;
    input.date = "2026-11-12";
    input.currency = "USD";
    input.amountMinor = 4'50;
    input.sourceAccountID = "Bank";
    input.idempotencyKey = "key";
    return {"service", "c1", "m1", input, outcomeUnknown, sent};
}

std::vector<std::string> rowsOf(const KeptRequests& kept, std::string_view locale = "en-US")
{
    std::vector<std::string> rows;
    const auto held = books();
    for (const auto& row : UnconfirmedRequests::rows(kept, held, locale))
        rows.push_back(told(row));
    return rows;
}

}

TEST(UnconfirmedRequests, TellOfAnEntryWhatItWasAndHowItStands)
{
    KeptRequests kept;
    kept.entries = {entry(EntryKind::expense, true), entry(EntryKind::transfer, false)};
    kept.entries[0].input.categoryID = "taxi";
    kept.entries[0].input.note = "To the airport";
    kept.entries[1].input.targetAccountID = "Cash";
    EXPECT_EQ(rowsOf(kept), (std::vector<std::string>{
                                "Expense · Travel › Taxi · Bank · To the airport | USD\u00a04.50 | May have been "
                                "recorded | For 12 Nov 2026 | retry | form",
                                "Transfer · Bank → Cash | USD\u00a04.50 | Not recorded | For 12 Nov 2026 | "
                                "retry | form"}));
}

TEST(UnconfirmedRequests, TellOfAReversalWhichEntryItUndoes)
{
    const KeptReversal reversal{.reversal = {.reason = "Twice", .idempotencyKey = "r", .date = "2026-11-13"},
                                .outcomeUnknown = true,
                                .since = sent};
    KeptRequests kept;
    kept.reversals = {{.entryID = "e1", .kept = reversal}, {.entryID = "gone", .kept = reversal}};
    EXPECT_EQ(rowsOf(kept),
              (std::vector<std::string>{"Reversal: 2 Nov 2026 · Travel › Taxi · Twice | USD\u00a0+300.00 | May have "
                                        "been recorded | For 13 Nov 2026 | retry | form",
                                        "Reversal of an entry · Twice |  | May have been recorded | For 13 Nov 2026 | "
                                        "retry"}))
        << "one that is no longer visible has no form";
}

TEST(UnconfirmedRequests, SendNoOlderCommandOfASectionBlindly)
{
    CapitalCommand contribution;
    contribution.action = CapitalAction::contribute;
    contribution.date = "2026-11-14";
    contribution.participantID = "p1";
    contribution.currency = "USD";
    contribution.amountMinor = 1'000'00;
    DividendCommand visibility;
    visibility.action = DividendAction::setVisibility;
    visibility.date = "2026-11-15";
    DividendCommand payment;
    payment.action = DividendAction::pay;
    payment.date = "2026-11-16";
    payment.participantID = "p2";
    KeptRequests kept;
    kept.sections = {{.command = contribution, .outcomeUnknown = true, .since = sent},
                     {.command = contribution, .since = sent},
                     {.command = visibility, .since = sent},
                     {.command = payment, .outcomeUnknown = true, .since = sent}};
    EXPECT_EQ(rowsOf(kept),
              (std::vector<std::string>{
                  "Contribution · Sri Wulandari | USD\u00a01,000.00 | May have been recorded | For 14 Nov "
                  "2026 | retry | form",
                  "Contribution · Sri Wulandari | USD\u00a01,000.00 | Not recorded | For 14 Nov 2026 | "
                  "form",
                  "Dividends in the side bar |  | Not recorded | For 15 Nov 2026 | retry",
                  "Dividend payment · Bayu |  | May have been recorded | For 16 Nov 2026 | retry | form"}));
}
