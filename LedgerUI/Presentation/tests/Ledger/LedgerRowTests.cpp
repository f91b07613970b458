#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"

#include <limits>

#include <QStringList>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

std::string dump(const std::vector<MoneyText>& amounts)
{
    QStringList lines;
    for (const auto& each : amounts)
        lines << each.currency + QLatin1Char(' ') + each.figure();
    return lines.join(QStringLiteral(", ")).toStdString();
}

std::string dump(const LedgerRow& row)
{
    const auto account =
        row.destination.isEmpty() ? row.account : row.account + QStringLiteral(" > ") + row.destination;
    const QStringList cells{row.day, row.title, account, QString::fromStdString(dump(row.amounts))};
    return cells.join(QStringLiteral(" | ")).toStdString() + (row.isReversed ? " | reversed" : "");
}

struct RowCase {
    std::string_view name;
    std::string_view locale;
    std::string_view id;
    std::string_view shown;
};

void PrintTo(const RowCase& each, std::ostream* out)
{
    *out << each.name;
}

class LedgerRows : public testing::TestWithParam<RowCase> {};

TEST_P(LedgerRows, ReadLikeTheirLanguage)
{
    const auto book = bookOf(sampleLedger(), std::string{GetParam().locale});
    EXPECT_EQ(dump(rowFor(book, book.find(GetParam().id), "2026-11-20")), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, LedgerRows,
    testing::Values(
        RowCase{"Expense", "en-US", "e1", "2 Nov | Utilities › Electricity | Operating bank | USD −438.50"},
        RowCase{"ExpenseChinese", "zh-CN", "e1",
                "11月2日 | Utilities (zh) › Electricity (zh) | Operating bank | USD −438.50"},
        RowCase{"ExpenseIndonesian", "id-ID", "e2", "2 Nov | Utilities (id) | Operating bank | IDR −4.385.200"},
        RowCase{"ExpenseVietnamese", "vi-VN", "e1",
                "2/11 | Utilities (vi) › Electricity (vi) | Operating bank | USD −438,50"},
        RowCase{"Income", "en-US", "i1", "31 Oct | Sales | Operating bank | USD +2,500.00"},
        RowCase{"FundingHasNoSign", "en-US", "t1", "5 Nov | Funding | Operating bank > Rizky float | USD 50.00"},
        RowCase{"FundingVietnamese", "vi-VN", "t1", "5/11 | Cấp quỹ | Operating bank > Rizky float | USD 50,00"},
        RowCase{"ExchangeHasBothLegs", "en-US", "x1", "6 Nov | Exchange | Singapore | USD −12,000.00, SGD +16,074.00"},
        RowCase{"ExchangeChinese", "zh-CN", "x1", "11月6日 | 换汇 | Singapore | USD −12,000.00, SGD +16,074.00"},
        RowCase{"Refund", "id-ID", "r1", "7 Nov | Pengembalian dana | Operating bank | USD −200,00"},
        RowCase{"Reversed", "en-US", "e3", "9 Nov | Utilities › Electricity | Operating bank | USD −99.00 | reversed"},
        RowCase{"ReversalTurnsTheSign", "en-US", "v1", "9 Nov | Reversal | Operating bank | USD +99.00"},
        RowCase{"Opening", "id-ID", "o1", "1 Sep | Saldo awal | Operating bank | USD +10.000,00"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerRow, NamesTheYearOfDaysOfOtherYears)
{
    const auto book = bookOf(sampleLedger());
    EXPECT_EQ(rowFor(book, book.find("i1"), "2027-01-03").day, QStringLiteral("31 Oct 2026"));
}

TEST(LedgerRow, StandsInForWhatTheMemberDoesNotSee)
{
    auto books = snapshot().account("bank", {"USD"});
    LedgerTransaction entry;
    entry.id = "t";
    entry.kind = "transfer";
    entry.date = "soon";
    entry.memberID = "gone";
    entry.categoryID = "gone";
    entry.legs = {{"bank", "USD", -100}, {"elsewhere", "USD", 100}};
    const auto book = bookOf(books.entry(entry));
    const auto row = rowFor(book, 0, "2026-11-20");
    EXPECT_EQ(dump(row), "soon | Unknown category | bank > Another account | USD 1.00");
    EXPECT_EQ(row.member, QStringLiteral("Another member"));
}

TEST(MoneyText, IsReadSpokenAndCopiedFromOneValue)
{
    const auto all = [](const MoneyText& money) {
        return QStringList{money.text(), money.spoken, money.plain()}.join(QLatin1Char('|')).toStdString();
    };
    EXPECT_EQ(all(movementText(-38600000, "VND", "en-US")),
              "VND\u00A0−38,600,000|minus 38,600,000 Vietnamese dong|-38,600,000");
    EXPECT_EQ(all(movementText(150, "USD", "zh-CN")), "USD\u00A0+1.50|收入 1.50 美元|1.50");
    EXPECT_EQ(all(balanceText(-150, "USD", "id-ID")), "USD\u00A0−1,50|minus 1,50 Dolar AS|-1,50");
    EXPECT_EQ(all(balanceText(0, "JPY", "en-US")), "JPY\u00A00|0 Japanese yen|0");
    EXPECT_EQ(all(unknownMoney("USD")), "USD\u00A0–||–");
}

std::string dump(const std::vector<LedgerTotal>& all)
{
    std::string text;
    for (const auto& total : all)
        text += fmt::format("{} {} {} {}; ", total.currency, total.incoming.value_or(-1), total.outgoing.value_or(-1),
                            total.net.value_or(-1));
    return text;
}

TEST(LedgerTotals, LeaveTransfersOutAndLetReversalsCancel)
{
    const auto book = bookOf(sampleLedger());
    EXPECT_EQ(dump(totals(book, matching(book, {}))),
              "IDR 0 -438520000 -438520000; USD 1250000 -1263850 -13850; SGD 1607400 0 1607400; ");
    EXPECT_EQ(dump(totals(book, matching(book, {.kinds = {"transfer"}}))), "");
    EXPECT_EQ(dump(totals(book, matching(book, {.kinds = {"reversal"}}))), "USD 0 9900 9900; ");
}

TEST(LedgerTotals, ReversedTransfersDoNotCountEither)
{
    auto books = sampleLedger();
    books.entry("t2", EntryKind::reversal, "2026-11-10", {{"Operating bank", "USD", 5000}});
    auto whole = books.build();
    whole.transactions.back().reversalOf = "t1";
    const LedgerBook book{std::make_shared<const LedgerSnapshot>(whole), "en-US"};
    EXPECT_EQ(dump(totals(book, std::vector{book.find("t2")})), "");
}

TEST(LedgerTotals, SayNothingRatherThanAWrongSum)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    auto books = snapshot().account("bank", {"USD"});
    books.income("a", "2026-01-01", "nowhere", "USD", most).income("b", "2026-01-02", "nowhere", "USD", 1);
    const auto book = bookOf(books);
    const auto sums = totals(book, matching(book, {}));
    ASSERT_EQ(sums.size(), 1U);
    EXPECT_EQ(sums[0].net, std::nullopt);
    EXPECT_EQ(sums[0].outgoing, 0);

    books.entry("c", EntryKind::income, "2026-01-03", {{"nowhere", "USD", most}, {"nowhere", "USD", 1}});
    const auto withMore = bookOf(books);
    EXPECT_EQ(dump(amountsOf(withMore, withMore.find("c"))), "USD –");
}

TEST(LedgerBalances, GroupAccountsByPurposeAndAddUpEachCurrency)
{
    auto books = sampleLedger();
    Account shop;
    shop.id = shop.name = "shop";
    shop.archived = true;
    shop.balances = {{"USD", 0}};
    books.account(shop);
    std::string text;
    const auto balances = balancesOn(bookOf(books), sampleToday);
    EXPECT_EQ(balances.day, QStringLiteral("At the end of 20 November 2026"));
    for (const auto& group : balances.groups) {
        text += group.title.toStdString() + ": ";
        for (const auto& account : group.accounts)
            text += account.name.toStdString() + " " + dump(account.amounts) + "; ";
    }
    EXPECT_EQ(text, "Company accounts: Operating bank USD 11,811.50, IDR −4,385,200; "
                    "Singapore USD −12,000.00, SGD 16,074.00; Employee floats: Rizky float USD 50.00; ");
    EXPECT_EQ(dump(balances.totals), "IDR −4,385,200, USD −138.50, SGD 16,074.00");
}

/// Money on an account at the end of a past day is what is there now without the movements since.
TEST(LedgerBalances, GoBackToTheDayAndSayWhatTheEntriesDoNotTell)
{
    const auto july = std::chrono::year{2026} / std::chrono::July / 31;
    const auto september = std::chrono::year{2026} / std::chrono::September / 30;
    const auto firstOn = [](const SnapshotBuilder& books, std::chrono::year_month_day day) {
        return dump(balancesOn(bookOf(books), day).groups.front().accounts.front().amounts);
    };
    EXPECT_EQ(firstOn(sampleLedger(), september), "USD 10,000.00, IDR 0");
    EXPECT_EQ(firstOn(sampleLedger(), july), "USD 0.00, IDR 0");
    auto partial = sampleLedger();
    partial.balance("Operating bank", "USD", 1);
    EXPECT_EQ(firstOn(partial, september), "USD –, IDR 0");
    EXPECT_EQ(firstOn(partial, sampleToday), "USD 0.01, IDR −4,385,200");
    EXPECT_FALSE(balancesOn(bookOf(partial), september).hint.isEmpty());

    auto tomorrow = sampleLedger();
    tomorrow.income("late", "2026-11-21", "Operating bank", "USD", 100);
    const auto book = bookOf(tomorrow);
    const auto month = Period::containing(Period::Span::month, sampleToday);
    EXPECT_EQ(balanceDay(book, month, sampleToday), std::chrono::year{2026} / std::chrono::November / 21);
    EXPECT_EQ(balanceDay(book, Period::containing(Period::Span::month, september), sampleToday), september);
    EXPECT_EQ(balanceDay(bookOf(sampleLedger()), Period::allTime(), sampleToday), sampleToday);
}

std::string dump(const std::vector<LedgerEntryDetail::Link>& links)
{
    std::string text;
    for (const auto& link : links)
        text += link.label.toStdString() + " = " + link.text.toStdString() + " (" + link.targetID + "); ";
    return text;
}

TEST(LedgerEntryDetail, LinksBothWays)
{
    const auto book = bookOf(sampleLedger());
    const auto links = [&](std::string_view id) { return dump(detailOf(book, book.find(id)).links); };
    EXPECT_EQ(links("e3"), "Reversed by = 9 Nov 2026 · Reversal · USD\u00A0+99.00 (v1); ");
    EXPECT_EQ(links("v1"), "Reverses = 9 Nov 2026 · Utilities › Electricity · USD\u00A0−99.00 (e3); ");
    EXPECT_EQ(links("r1"), "Refund of = 31 Oct 2026 · Sales · USD\u00A0+2,500.00 (i1); ");
    EXPECT_EQ(links("i1"), "Refunded by = 7 Nov 2026 · Refund · USD\u00A0−200.00 (r1); ");
}

TEST(LedgerEntryDetail, KnowsBalancesOnlyWhereTheEntriesExplainThem)
{
    const auto books = sampleLedger();
    const auto book = bookOf(books);
    const auto after = [](const LedgerBook& each, std::string_view id) {
        const auto balance = detailOf(each, each.find(id)).legs.front().balanceAfter;
        return balance ? balance->figure().toStdString() : "unknown";
    };
    EXPECT_EQ(after(book, "e1"), "12,061.50");
    EXPECT_EQ(after(book, "v1"), "11,811.50");
    auto partial = books;
    EXPECT_EQ(after(bookOf(partial.balance("Operating bank", "USD", 1)), "e1"), "unknown");
}

TEST(LedgerEntryDetail, OffersAReversalOrSaysWhereTheEntryIsCorrected)
{
    auto books = sampleLedger();
    LedgerTransaction paid;
    paid.id = "d1";
    paid.kind = EntryKind::dividend;
    paid.date = "2026-11-10";
    paid.memberID = "m1";
    paid.dividendMovementID = "mv";
    paid.legs = {{"Operating bank", "USD", -100}};
    const auto book = bookOf(books.entry(paid));
    const auto says = [&](std::string_view id) {
        const auto detail = detailOf(book, book.find(id));
        return detail.offersReversal ? std::string{"reverse"} : detail.correction.toStdString();
    };
    EXPECT_EQ(says("e1"), "reverse");
    EXPECT_EQ(says("i1"), "This income has refunds. Reverse the refunds first.");
    EXPECT_EQ(says("e3"), "This entry has already been reversed.");
    EXPECT_EQ(says("v1"), "A reversal cannot be reversed. Record the entry again instead.");
    EXPECT_EQ(says("d1"),
              "Correct this record on the Dividends page so the dividend balances can be checked together.");

    auto stranger = sampleLedger();
    stranger.grant("nothing", {});
    auto readOnly = stranger.build();
    readOnly.currentMember.accountGrants.emplace();
    const LedgerBook seen{std::make_shared<const LedgerSnapshot>(readOnly), "en-US"};
    const auto detail = detailOf(seen, seen.find("e1"));
    EXPECT_FALSE(detail.offersReversal);
    EXPECT_TRUE(detail.correction.isEmpty());
}

TEST(LedgerEntryDetail, WarnsOfARateFarFromTheOneBefore)
{
    const auto books = [](const char* reversedBy) {
        auto made = sampleLedger();
        const auto exchange = [&](const char* id, const char* day, const LedgerLeg& given, const LedgerLeg& received) {
            made.entry(id, EntryKind::exchange, day, {given, received});
        };
        exchange("x0", "2026-11-01", {"Singapore", "SGD", -13'400}, {"Singapore", "USD", 10'000});
        exchange("x3", "2026-11-14", {"Singapore", "USD", -10'000}, {"Singapore", "SGD", 13'500});
        LedgerTransaction odd;
        odd.id = "x2";
        odd.kind = EntryKind::exchange;
        odd.date = "2026-11-12";
        odd.memberID = "m1";
        odd.legs = {{"Singapore", "SGD", 20'000}, {"Singapore", "USD", -10'000}};
        if (reversedBy)
            odd.reversedBy = reversedBy;
        return bookOf(made.entry(odd));
    };
    const auto caution = [](const LedgerBook& book, std::string_view id) {
        return detailOf(book, book.find(id)).caution.toStdString();
    };
    const auto standing = books(nullptr);
    EXPECT_EQ(caution(standing, "x2"), "Far from the rate before, SGD 1.340 on 6 November 2026.");
    EXPECT_EQ(caution(standing, "x3"), "Far from the rate before, SGD 2.000 on 12 November 2026.");
    EXPECT_EQ(caution(standing, "x1"), "") << "close to what was exchanged the other way";
    EXPECT_EQ(caution(standing, "x0"), "") << "there is none before";
    const auto reversed = books("undo");
    EXPECT_EQ(caution(reversed, "x2"), "") << "it is taken back already";
    EXPECT_EQ(caution(reversed, "x3"), "") << "and measures nothing any more";
}

TEST(LedgerEntryDetail, WritesFileSizesInTheLanguagesDecimals)
{
    EXPECT_EQ(byteText(0, "en-US"), QStringLiteral("1 KB"));
    EXPECT_EQ(byteText(411'200, "en-US"), QStringLiteral("412 KB"));
    EXPECT_EQ(byteText(1'149'000, "id-ID"), QStringLiteral("1,1 MB"));
}

}
