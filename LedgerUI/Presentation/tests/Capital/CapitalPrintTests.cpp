#include "LedgerUI/Presentation/Capital/CapitalPrint.h"

#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Dividends/DividendPrint.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

namespace {

RecordPrint::Ground ground(const LedgerSnapshot& books, std::string_view locale = "en-US", std::string currency = "IDR")
{
    return {.snapshot = books,
            .question = {.period = Period::containing(Period::Span::year, std::chrono::year{2026} / 1 / 1),
                         .currency = std::move(currency)},
            .locale = std::string{locale},
            .moment = {.day = "2026-11-20", .time = "14:32"}};
}

std::string plain(QString text)
{
    return text.replace(QChar::Nbsp, QLatin1Char(' ')).replace(QLatin1Char('\n'), QStringLiteral(" // ")).toStdString();
}

/// A table as a reader of the page would say it: its title, then its rows.
std::vector<std::string> said(const PrintedTable& table)
{
    std::vector<std::string> rows{plain(table.title)};
    for (const auto& row : table.rows) {
        std::string text;
        for (const auto& cell : row.cells) {
            text += (&cell == row.cells.data() ? "" : " | ") + plain(cell.text);
            if (!cell.second.isEmpty())
                text += " / " + plain(cell.second);
        }
        rows.push_back(text);
    }
    return rows;
}

using Rows = std::vector<std::string>;

}

TEST(CapitalPrint, StatesAParticipantToTheLastMinorUnit)
{
    const auto sample = capitalSample();
    const auto document = DividendPrint::statement(ground(sample.books()), "d2");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->facts.front(), (PrintedFact{QStringLiteral("Participant"), QStringLiteral("陈思远")}));
    EXPECT_EQ(document->fileName, QStringLiteral("tallyfold-settlement-IDR-2026-01-01_2026-12-31"));
    ASSERT_EQ(document->tables.size(), 4U);
    EXPECT_EQ(said(document->tables[0]),
              (Rows{"", "Net paid this period | IDR 33,500,000", "Returned this period | IDR 0",
                    "Settled dividends at cutoff | IDR 25,500,000", "Unpaid at cutoff | IDR 31,350,000",
                    "Unapplied advances at cutoff | IDR 8,000,000"}));
    EXPECT_EQ(said(document->tables[1]),
              (Rows{"Allocations", "2026 Q3 / 31 Oct 2026 | 30.00 % | 19,350,000 | – | – | 19,350,000",
                    "2026 Q2 / 31 Jul 2026 | 30.00 % | 37,500,000 | 12,000,000 | 13,500,000 | 12,000,000",
                    "Total |  | 56,850,000 | 12,000,000 | 13,500,000 | 31,350,000"}));
    EXPECT_TRUE(document->tables[1].note.startsWith(
        QStringLiteral("Entitlement = advances applied + paid + payable. Confirming an allocation does not")));
    EXPECT_EQ(said(document->tables[2]), (Rows{"Advances", "12 Sep 2026 | 20,000,000 | 12,000,000 | – | 8,000,000",
                                               "Total |  |  |  | 8,000,000"}));
    EXPECT_EQ(said(document->tables[3]),
              (Rows{"Settlement", "1 Sep 2026 | Dividend payment / Operating bank · reversed | 2026 Q2 | −13,500,000",
                    "2 Sep 2026 | Reversed payment / Operating bank · Wrong account | 2026 Q2 | +13,500,000",
                    "12 Sep 2026 | Advance / Operating bank | – | −20,000,000",
                    "12 Sep 2026 | Advance applied / No cash flow | 2026 Q2 | −12,000,000",
                    "5 Oct 2026 | Dividend payment / Operating bank | 2026 Q2 | −13,500,000"}));
    EXPECT_EQ(document->tables[3].note,
              QStringLiteral("Offsets create no cash flow and do not deduct the account balance again."));
    EXPECT_FALSE(DividendPrint::statement(ground(sample.books()), "nobody"));
}

TEST(CapitalPrint, StatesWhatWasCancelledAndUndoneAsSuch)
{
    auto sample = capitalSample();
    sample.cancelBatch("2026-11-02", "d10");
    sample.advance("2026-11-03", "d2", "IDR", "1,000", "Operating bank").reverseMovement("2026-11-04", "d12", "Twice");
    const auto document = DividendPrint::statement(ground(sample.books()), "d2");
    ASSERT_TRUE(document);
    EXPECT_EQ(said(document->tables[1])[1], "2026 Q3 / 31 Oct 2026 · Cancelled | 30.00 % | 19,350,000 | – | – | –");
    EXPECT_EQ(said(document->tables[1])[3], "Total |  | 37,500,000 | 12,000,000 | 13,500,000 | 12,000,000")
        << "nothing is owed by what is cancelled";
    EXPECT_EQ(said(document->tables[2])[1], "3 Nov 2026 / reversed | 1,000 | – | – | –");
}

TEST(CapitalPrint, HoldsTheTabsAsTheScreenShowsThem)
{
    const auto sample = capitalSample();
    const auto overview = CapitalPrint::overview(ground(sample.books()));
    ASSERT_TRUE(overview);
    ASSERT_EQ(overview->tables.size(), 3U) << "owners, their shares, the latest records";
    EXPECT_EQ(said(overview->tables[0])[1], "Budi Santoso | 45.00 % | 1,200,000,000 | 1,200,000,000 | +150,000,000 | – "
                                            "| – | 85,275,000 | – | 85,275,000 | –");
    EXPECT_EQ(overview->tables[0].rows.back().level, PrintedRow::Level::total);
    EXPECT_EQ(
        said(overview->tables[1]),
        (Rows{"Ownership versions", "1 Jan 2026 · In force | ", "Budi Santoso | 45.00 %", "陈思远 | 38.33 %",
              "Nguyễn Thị Thanh Hương | 16.67 %", "1 Jul 2025 | ", "Budi Santoso | 50.00 %", "陈思远 | 50.00 %"}));
    const auto contributions = CapitalPrint::contributions(ground(sample.books()));
    ASSERT_EQ(contributions->tables.size(), 2U);
    EXPECT_EQ(said(contributions->tables[0]).back(), " | Recorded in this period |  | 150,000,000");
    EXPECT_EQ(said(contributions->tables[1]),
              (Rows{"Historical contributions: Through 31 Dec 2025", "Budi Santoso | IDR 1,050,000,000",
                    "陈思远 | IDR 800,000,000", "Nguyễn Thị Thanh Hương | IDR 0", "Total | IDR 1,850,000,000"}));
    const auto dividends = DividendPrint::section(ground(sample.books()));
    ASSERT_EQ(dividends->tables.size(), 4U) << "two allocations, the advances, and what settled them";
    EXPECT_EQ(dividends->tables[1].note, QStringLiteral("IDR\u00a0125,000,000, booked on 31 July 2026"));
    EXPECT_EQ(said(dividends->tables[1])[2], "陈思远 | 30.00 % | 37,500,000 | 12,000,000 | 13,500,000 | 12,000,000");
    EXPECT_EQ(said(dividends->tables[3])[1],
              "5 Oct 2026 | Dividend payment / Operating bank | 陈思远 | 2026 Q2 | −13,500,000");
}

TEST(CapitalPrint, SaysOnPaperThatTheHistoryIsIncomplete)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").contribute("2026-03-01", "c1", "USD", "10.00", "Singapore");
    const auto warning = QStringLiteral("Historical contributions have not been entered.");
    EXPECT_TRUE(CapitalPrint::overview(ground(sample.books(), "en-US", "USD"))->tables[0].note.startsWith(warning));
    EXPECT_TRUE(
        CapitalPrint::contributions(ground(sample.books(), "en-US", "USD"))->tables[0].note.startsWith(warning));
}

TEST(CapitalPrint, IsNothingWhereARecordBreaksARule)
{
    auto capital = capitalSample();
    capital.books().capital->contributions.front().date = "2025-12-31";
    EXPECT_FALSE(CapitalPrint::overview(ground(capital.books())));
    EXPECT_FALSE(CapitalPrint::contributions(ground(capital.books())));
    auto dividends = capitalSample();
    dividends.books().dividends->movements.front().amountMinor += 1;
    EXPECT_FALSE(DividendPrint::section(ground(dividends.books())));
    EXPECT_FALSE(DividendPrint::statement(ground(dividends.books()), "d2"));
}

TEST(CapitalPrint, ShowsOnPaperNothingOfASectionThatTheMemberMayNotSee)
{
    auto sample = capitalSample();
    sample.books().currentMember.permissions = {{"viewDividends", "exportData"}};
    const auto overview = CapitalPrint::overview(ground(sample.books()));
    ASSERT_TRUE(overview);
    for (const auto& table : overview->tables) {
        for (const auto& each : said(table))
            EXPECT_EQ(each.find("1,200,000,000"), std::string::npos) << each;
    }
}

TEST(CapitalPrint, TellsAReaderOfPaperNothingThatOnlyAScreenCanDo)
{
    const auto sample = capitalSample();
    const auto document = CapitalPrint::overview(ground(sample.books()));
    ASSERT_TRUE(document);
    EXPECT_EQ(document->notes.back(),
              QStringLiteral("Unpaid amounts and advances remain separate; subtracting them is not settlement."));
}
