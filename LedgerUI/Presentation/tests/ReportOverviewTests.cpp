#include <algorithm>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerCore/Domain/testing/TimeZone.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportOverviewGrids.h"
#include "LedgerUI/Presentation/Reports/ReportAttention.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

using namespace std::chrono_literals;

namespace {

constexpr auto today = 2026y / 11 / 20;

Period month(std::chrono::year_month_day day)
{
    return Period::containing(Period::Span::month, day);
}

/// Two accounts with dollars and one with rupiah; October and November.
SnapshotBuilder books()
{
    return snapshot()
        .account("bank", {"USD", "IDR"})
        .account("cash", {"USD"})
        .category("sales", "income", "Sales")
        .category("travel", "expense", "Travel")
        .category("taxi", "expense", "Taxi", "travel")
        .category("rent", "expense", "Rent")
        .income("i1", "2026-10-05", "bank", "USD", 100'000, "sales")
        .expense("e1", "2026-10-31", "bank", "USD", 40'000, "rent")
        .income("i2", "2026-11-01", "bank", "USD", 50'000, "sales")
        .expense("e2", "2026-11-02", "bank", "USD", 30'000, "rent")
        .expense("e3", "2026-11-03", "cash", "USD", 10'005, "taxi")
        .transfer("t1", "2026-11-04", "bank", "cash", "USD", 20'000)
        .income("i3", "2026-11-05", "bank", "IDR", 5'000'000, "sales");
}

ReportOverview overviewOf(const LedgerSnapshot& held, const ReportOverviews::Question& question,
                          std::string_view locale = "en-US")
{
    const auto book = ReportBook::create(held);
    EXPECT_TRUE(book.has_value());
    auto overview = ReportOverviews::overview(*book, held, question, locale);
    EXPECT_TRUE(overview.has_value());
    return overview.value_or(ReportOverview{});
}

std::vector<std::string> textsOf(const CurrencyOverview& row)
{
    std::vector<std::string> texts{row.currency};
    for (const auto* money : {&row.opening, &row.income, &row.expense, &row.net, &row.other, &row.closing})
        texts.push_back(money->figure().toStdString());
    return texts;
}

std::vector<AttentionItem> itemsOf(const LedgerSnapshot& held, const Period& period = month(today))
{
    return ReportAttention::items(VisibleBooks{held}, period, today, "en-US");
}

std::vector<std::string> textsOf(const std::vector<AttentionItem>& items)
{
    std::vector<std::string> texts;
    for (const auto& item : items)
        texts.push_back(item.text.toStdString());
    return texts;
}

}

TEST(ReportOverview, OpensMovesAndClosesEachCurrencyForItself)
{
    const auto held = books().build();
    const auto all = overviewOf(held, {month(today), "USD", std::nullopt, today});
    ASSERT_EQ(all.currencies.size(), 2U);
    EXPECT_EQ(textsOf(all.currencies[0]),
              (std::vector<std::string>{"IDR", "0", "+50,000", "0", "+50,000", "0", "50,000"}));
    EXPECT_EQ(textsOf(all.currencies[1]),
              (std::vector<std::string>{"USD", "600.00", "+500.00", "−400.05", "+99.95", "0.00", "699.95"}));
    EXPECT_EQ(all.currencies[1].monthEnds, (std::vector<std::int64_t>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 60'000, 69'995}));
    // What one account sends to the other is a movement of either.
    const auto cash = overviewOf(held, {month(today), "USD", {{"cash"}}, today});
    EXPECT_EQ(textsOf(cash.currencies.back()),
              (std::vector<std::string>{"USD", "0.00", "0.00", "−100.05", "−100.05", "+200.00", "99.95"}));
}

TEST(ReportOverview, ChartsTheMonthsUpToThePeriodAndMarksTheChosenOne)
{
    const auto held = books().build();
    const auto november = overviewOf(held, {month(today), "USD", std::nullopt, today}, "vi-VN");
    ASSERT_EQ(november.chart.places.size(), 12U);
    EXPECT_EQ(november.chart.chosen, 11U);
    EXPECT_EQ(november.chart.series[0].values[10], 100'000);
    EXPECT_EQ(november.chart.series[1].values[11], -40'005);
    EXPECT_EQ(november.chart.series[2].values[11], 9'995);
    EXPECT_EQ(november.chart.series[0].name.toStdString(), "Thu");
    // A year has no one month; it ends with today's, a year past with its December.
    const auto thisYear = Period::containing(Period::Span::year, today);
    EXPECT_EQ(overviewOf(held, {thisYear, "USD", std::nullopt, today}).chart.chosen, std::nullopt);
    EXPECT_EQ(ReportOverviews::chartMonths(thisYear, today).back(), 2026y / 11);
    EXPECT_EQ(ReportOverviews::chartMonths(Period::containing(Period::Span::year, 2024y / 3 / 1), today).back(),
              2024y / 12);
    EXPECT_EQ(ReportOverviews::chartMonths(Period::allTime(), today).front(), 2025y / 12);
    EXPECT_EQ(ReportOverviews::chartMonths(month(2027y / 1 / 1), today).back(), 2027y / 1);
}

TEST(ReportOverview, RanksExpensesAndFoldsTheRest)
{
    auto builder = books();
    for (int number = 1; number <= 6; ++number) {
        const auto id = "c" + std::to_string(number);
        builder.category(id, "expense", "Small " + std::to_string(number));
        builder.expense("s" + std::to_string(number), "2026-11-06", "bank", "USD", std::int64_t{100} * number, id);
    }
    builder.expense("none", "2026-11-07", "bank", "USD", 550);
    const auto rows = overviewOf(builder.build(), {month(today), "USD", std::nullopt, today}).largestExpenses;
    ASSERT_EQ(rows.size(), 7U);
    EXPECT_EQ(rows[0].name.toStdString(), "Rent");
    EXPECT_EQ(rows[0].amount.figure().toStdString(), "300.00");
    EXPECT_EQ(rows[0].share.toStdString(), "70.3 %"); // of 426.55
    EXPECT_DOUBLE_EQ(rows[0].fraction, 1);
    EXPECT_EQ(rows[1].name.toStdString(), "Travel › Taxi");
    EXPECT_EQ(rows[3].name.toStdString(), "No category");
    EXPECT_EQ(rows[3].categoryID, "");
    EXPECT_EQ(rows[6].name.toStdString(), "Other categories");
    EXPECT_EQ(rows[6].amount.figure().toStdString(), "6.00");
    EXPECT_EQ(rows[6].categoryID, std::nullopt);
    EXPECT_EQ(rows[6].share.toStdString(), "1.4 %");
    EXPECT_EQ(rows[6].rest, (std::set<std::string, std::less<>>{"c1", "c2", "c3"}));

    // The rest opens its entries as any other row does.
    const auto held = builder.build();
    const auto book = ReportBook::create(held);
    const auto overview = overviewOf(held, {month(today), "USD", std::nullopt, today});
    const ReportOverviewGrids::Frame frame{
        .period = month(today), .accountIDs = std::nullopt, .firstDay = 2026y / 10 / 5};
    const auto rest = ReportOverviewGrids::largestExpenses(overview, frame, "en-US").rows.back().cells[1].backing;
    ASSERT_TRUE(rest.has_value());
    std::vector<std::string> behind;
    for (const auto& leg : book->legs(rest->figure, ReportRanges::of(rest->period)))
        behind.push_back(held.transactions[leg.entry].id);
    EXPECT_EQ(behind, (std::vector<std::string>{"s1", "s2", "s3"}));

    EXPECT_TRUE(overviewOf(snapshot().build(), {month(today), "USD", std::nullopt, today}).currencies.empty());
    EXPECT_EQ(ReportOverviews::shareText(-1, -2000, "id-ID").toStdString(), "0,1 %"); // a half goes up
    EXPECT_EQ(ReportOverviews::shareText(-1, -2001, "en-US").toStdString(), "0.0 %");
    EXPECT_EQ(ReportOverviews::shareText(0, 0, "en-US").toStdString(), "–");
    EXPECT_EQ(ReportOverviews::shareText(std::int64_t{1} << 60, std::int64_t{1} << 60, "zh-CN").toStdString(),
              "100.0%");
}

TEST(ReportOverview, RanksIncomeLessWhatWasTakenBack)
{
    auto builder = books();
    builder.category("service", "income", "Service").category("gone", "income", "Gone");
    builder.income("i4", "2026-11-06", "bank", "USD", 150'000, "service");
    builder.income("i5", "2026-10-07", "bank", "USD", 5'000, "gone");
    LedgerTransaction undo;
    undo.id = "undo";
    undo.kind = EntryKind::reversal;
    undo.date = "2026-11-08";
    undo.memberID = "m1";
    undo.reversalOf = "i5";
    undo.legs = {{"bank", "USD", -5'000}};
    builder.entry(undo);
    const auto rows = overviewOf(builder.build(), {month(today), "USD", std::nullopt, today}).largestIncome;
    ASSERT_EQ(rows.size(), 2U) << "what was only taken back is no part of the whole";
    EXPECT_EQ(rows[0].name.toStdString(), "Service");
    EXPECT_EQ(rows[0].share.toStdString(), "75.0 %");
    EXPECT_EQ(rows[1].amount.figure().toStdString(), "500.00");
    EXPECT_DOUBLE_EQ(rows[1].fraction, 1.0 / 3);
}

/// A chart is read as a table by whoever does not see it.
TEST(ReportOverview, TellsItsDrawingsInFiguresAndWords)
{
    const auto held = books().build();
    const auto overview = overviewOf(held, {month(today), "USD", std::nullopt, today});
    const ReportOverviewGrids::Frame frame{
        .period = month(today), .accountIDs = std::nullopt, .firstDay = 2026y / 10 / 5};
    const auto months = ReportOverviewGrids::months(overview, frame, "en-US");
    ASSERT_EQ(months.rows.size(), overview.chart.places.size());
    for (std::size_t at = 0; at < months.rows.size(); ++at) {
        const auto& cells = months.rows[months.rows.size() - 1 - at].cells;
        EXPECT_EQ(cells[0].text, overview.chart.places[at].name);
        for (std::size_t series = 0; series < overview.chart.series.size(); ++series)
            EXPECT_EQ(cells[series + 1].copied,
                      movementText(overview.chart.series[series].values[at], "USD", "en-US").plain());
    }
    EXPECT_EQ(months.rows.front().cells[4].text.toStdString(), "699.95");
    EXPECT_EQ(months.rows.back().cells[4].backing, std::nullopt) << "nothing was held before the first entry";
    const auto currencies = ReportOverviewGrids::currencies(overview, frame, "en-US");
    EXPECT_EQ(
        currencies.rows.back().cells.back().spoken.toStdString(),
        "Last 12 months: from 0.00 US dollar to 699.95 US dollar, lowest 0.00 US dollar, highest 699.95 US dollar");
}

TEST(ReportAttention, NamesFloatsThatHoldLessThanTheySpendInAMonth)
{
    const auto told = [](std::int64_t balance, const char* changedTo = nullptr) {
        auto builder = snapshot().employeeAccount("float", {"USD"}, "m1").account("bank", {"USD"});
        builder.transfer("t", "2026-08-01", "bank", "float", "USD", 50'000);
        builder.expense("before", "2026-08-22", "float", "USD", 90'000); // the ninety days begin a day later
        builder.expense("first", "2026-08-23", "float", "USD", 10'000);
        builder.expense("last", "2026-11-20", "float", "USD", 20'000);
        builder.transfer("back", "2026-11-19", "float", "bank", "USD", 70'000);
        auto held = builder.balance("float", "USD", balance).build();
        if (changedTo)
            held.transactions[3].reversedBy = changedTo;
        return textsOf(itemsOf(held, Period::containing(Period::Span::year, 2020y / 1 / 1)));
    };
    EXPECT_EQ(told(10'000), std::vector<std::string>{}) << "as much as a month takes";
    EXPECT_EQ(told(9'999),
              std::vector<std::string>{
                  "float runs low: USD\u00a099.99 left, and it usually spends USD\u00a0100.00 in a month"});
    EXPECT_EQ(told(9'999, "undo"), std::vector<std::string>{}) << "what was taken back was not spent";
    EXPECT_EQ(told(0), std::vector<std::string>{"float has no USD balance left"});
}

TEST(ReportAttention, NamesWhatWantsAHand)
{
    auto builder = books();
    builder.employeeAccount("Petty cash", {"USD", "IDR"}, "m1").balance("Petty cash", "IDR", -250'000);
    const auto items = itemsOf(builder.build());
    EXPECT_EQ(textsOf(items), (std::vector<std::string>{"Petty cash has no USD balance left",
                                                        "Petty cash is below zero: IDR\u00a0−2,500",
                                                        "4 entries in this period have no receipt"}))
        << "what the member may not open, and dividends that are not there, are not spoken of";
    EXPECT_EQ(items[1].accountID, "Petty cash");

    FinancialSettings settings{};
    const auto unconfirmed =
        itemsOf(snapshot().settings(settings).account("bank", {"USD"}).grant("bank", {"view", "opening"}).build());
    EXPECT_EQ(textsOf(unconfirmed), (std::vector<std::string>{"The bookkeeping start date is not confirmed",
                                                              "1 account has no opening balance"}));
    EXPECT_EQ(unconfirmed[1].accountID, "bank");
    EXPECT_TRUE(itemsOf(snapshot().build()).empty());
}

TEST(ReportAttention, AsksForNothingThatTheMemberMayNotDo)
{
    const auto told = [](std::vector<std::string> onBank, std::vector<std::string> onFloat, const char* held) {
        auto builder = snapshot().settings({}).currentMember(SnapshotBuilder::person("m1", "Rizky Pratama"));
        builder.account("bank", {held}).employeeAccount("float", {"USD"}, "m2").balance("float", "USD", 0);
        builder.grant("bank", std::move(onBank)).grant("float", std::move(onFloat));
        return itemsOf(builder.build());
    };
    const auto funding = told({"view", "transferOut"}, {"view", "transferIn"}, "USD");
    ASSERT_EQ(textsOf(funding), std::vector<std::string>{"float has no USD balance left"})
        << "the start of the books is confirmed by who manages the company";
    EXPECT_TRUE(funding.front().canFund);
    for (const auto& looking :
         {told({"view"}, {"view", "transferIn"}, "USD"), told({"view", "transferOut"}, {"view"}, "USD"),
          told({"view", "transferOut"}, {"view", "transferIn"}, "IDR")}) {
        ASSERT_EQ(looking.size(), 1U);
        EXPECT_FALSE(looking.front().canFund);
    }
}

TEST(ReportAttention, NamesWhatIsOwedToOwnersAndWhatTheyHoldAhead)
{
    const auto items = textsOf(itemsOf(capitalSample().books()));
    const auto isSaid = [&](const char* text) { return std::ranges::find(items, text) != items.end(); };
    EXPECT_TRUE(isSaid("IDR\u00a0164,000,000 of allocated dividends is unpaid")) << "two allocations less 25,500,000";
    EXPECT_TRUE(isSaid("IDR\u00a08,000,000 of dividend advances is not yet applied"));
    auto broken = capitalSample();
    broken.books().dividends->movements.front().amountMinor += 1;
    for (const auto& item : itemsOf(broken.books()))
        EXPECT_NE(item.kind, AttentionItem::Kind::dividendsUnpaid) << "no figure of a section that breaks a rule";
}

TEST(ReportAttention, TellsWhoseEntriesOthersReversedInThePeriod)
{
    auto held = books().build();
    const auto undo = [&](std::size_t at, const char* by, const char* day) {
        held.transactions[at].reversedBy = "undo" + std::to_string(at);
        auto reversal = held.transactions[at];
        reversal.id = *held.transactions[at].reversedBy;
        reversal.kind = EntryKind::reversal;
        reversal.date = day;
        reversal.memberID = by;
        reversal.reversedBy.reset();
        reversal.reversalOf = held.transactions[at].id;
        auto all = held.transactions.toVector();
        all.push_back(reversal);
        held.transactions = all;
    };
    const auto told = [&] { return textsOf(ReportAttention::reversedByOthers(held, month(today), "en-US")); };
    undo(0, "m1", "2026-11-19");
    undo(1, "m2", "2026-10-19");
    EXPECT_EQ(told(), std::vector<std::string>{}) << "one's own reversal, and one of another month";
    undo(2, "m2", "2026-11-19");
    EXPECT_EQ(told(), std::vector<std::string>{"1 entry of yours was reversed; check it and record it again"});
}

TEST(ReportAttention, NamesOneUnconfirmedEntryAndCountsSeveralRequests)
{
    const auto told = [](const KeptRequests& kept) { return textsOf(ReportAttention::unconfirmed(kept, "en-US")); };
    KeptRequests kept;
    EXPECT_EQ(told(kept), std::vector<std::string>{});
    TransactionInput input;
    input.date = "2026-11-12";
    input.currency = "USD";
    input.amountMinor = 4'50;
    kept.entries = {{"service", "c1", "m1", input, true}};
    EXPECT_EQ(told(kept),
              std::vector<std::string>{"It is not known whether the entry of USD\u00a04.50 on 12 Nov 2026 was saved"});
    kept.reversals = {{.entryID = "e1", .kept = {}}};
    EXPECT_EQ(told(kept), std::vector<std::string>{"2 requests are not confirmed"});
    kept.entries.clear();
    EXPECT_EQ(told(kept), std::vector<std::string>{"1 request is not confirmed"});
}

TEST(ReportAttention, NamesInvitationsThatEndSoonOrHaveEnded)
{
    const auto invitation = [](std::string name, std::string expires, std::string status = "pending") {
        PendingInvitation made;
        made.name = std::move(name);
        made.expiresAt = std::move(expires);
        made.status = std::move(status);
        return made;
    };
    const auto told = [](const std::vector<PendingInvitation>& invitations) {
        return textsOf(ReportAttention::expiring(invitations, "2026-11-20", "en-US"));
    };
    const TimeZone jakarta{"WIB-7"};
    const auto soon = invitation("Dewi", "2026-11-22T18:00:00.000Z");
    const auto later = invitation("Andi", "2026-11-24T02:00:00.000Z");
    const auto over = invitation("Rini", "2026-11-19T02:00:00.000Z", "expired");
    EXPECT_EQ(told({later}), std::vector<std::string>{});
    EXPECT_EQ(told({later, soon, over}),
              (std::vector<std::string>{"The invitation of Dewi expires on 23 Nov 2026", "1 invitation has expired"}));
    EXPECT_EQ(told({soon, soon}), std::vector<std::string>{"2 invitations expire soon"});
}

TEST(ReportAttention, CountsOnlyEntriesThatStandAndNeedAReceipt)
{
    auto held = books().build();
    EXPECT_EQ(ReportAttention::entriesWithoutReceipt(held, month(today)), 4U); // not the transfer
    held.transactions[2].attachmentIDs = {"a1"};
    held.transactions[3].reversedBy = "r1";
    EXPECT_EQ(ReportAttention::entriesWithoutReceipt(held, month(today)), 2U);
    EXPECT_EQ(ReportAttention::entriesWithoutReceipt(held, Period::allTime()), 4U);
}
