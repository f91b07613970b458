#include <QStringList>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/CapitalPlace.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

namespace {

constexpr auto today = "2026-11-20";
constexpr auto english = "en-US";

CapitalQuestion year2026(std::string currency = "IDR")
{
    return {.period = Period::containing(Period::Span::year,
                                         std::chrono::year{2026} / std::chrono::January / std::chrono::day{1}),
            .currency = std::move(currency)};
}

/// A row as a person reads it: the cells side by side, what is struck in brackets.
std::string read(const RecordRow& row)
{
    QStringList cells;
    for (const auto& cell : row.cells) {
        auto text = cell.second.isEmpty() ? cell.text : cell.text + QStringLiteral(" / ") + cell.second;
        cells << (cell.isStruck ? QStringLiteral("[%1]").arg(text) : text);
    }
    return cells.join(QStringLiteral(" | ")).replace(QChar::Nbsp, QLatin1Char{' '}).toStdString();
}

std::vector<std::string> read(const RecordRows& table)
{
    std::vector<std::string> rows;
    for (const auto& row : table.rows)
        rows.push_back(read(row));
    if (table.total)
        rows.push_back(read(*table.total));
    return rows;
}

QString figures(const std::vector<RecordFigure>& equation)
{
    QString all;
    for (const auto& figure : equation)
        all += figure.sign + figure.amount + QLatin1Char{' '};
    return all.trimmed();
}

/// Of the column with this head, what stands in the row of this person.
QString cellOf(const RecordRows& table, const char* head, const char* person)
{
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        if (table.columns[column].head != QString::fromLatin1(head))
            continue;
        for (const auto& row : table.rows) {
            if (row.cells.front().text == QString::fromUtf8(person))
                return row.cells[column].text;
        }
    }
    return QStringLiteral("nowhere");
}

}

TEST(CapitalOverview, ShowsTheSummariesOfBothSectionsForEachPerson)
{
    const auto sample = capitalSample();
    const auto& books = sample.books();
    const auto shown = CapitalOverviews::overview(books, year2026(), today, english);
    ASSERT_TRUE(shown);
    EXPECT_EQ(read(shown->owners),
              (std::vector<std::string>{
                  "Budi Santoso | 45.00 % | 1,200,000,000 | 1,200,000,000 | +150,000,000 | – | – | 85,275,000 | – | "
                  "85,275,000 | –",
                  "陈思远 | 38.33 % | 800,000,000 | 800,000,000 | – | 33,500,000 | – | 56,850,000 | 25,500,000 | "
                  "31,350,000 | 8,000,000",
                  "Nguyễn Thị Thanh Hương | 16.67 % | – | – | – | – | – | 47,375,000 | – | 47,375,000 | –",
                  "Total | 100.00 % | 2,000,000,000 | 2,000,000,000 | +150,000,000 | 33,500,000 | – | 189,500,000 | "
                  "25,500,000 | "
                  "164,000,000 | 8,000,000"}));
    const auto capital = CapitalSummary::create(*books.capital, "IDR", "2026-01-01", "2026-12-31");
    const auto dividends = DividendSummary::create(*books.dividends, "IDR", "2026-01-01", "2026-12-31");
    EXPECT_EQ(capital->recordedMinor, 200'000'000'000);
    EXPECT_EQ(dividends->unpaidMinor, 16'400'000'000);
    EXPECT_EQ(shown->since, QStringLiteral("Ownership in force since 1 January 2026"));
    EXPECT_TRUE(shown->warning.isEmpty());
}

TEST(CapitalOverview, ListsAnArchivedOwnerWhoseContributionWasTakenBackInAnotherYear)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").contribute("2025-03-01", "c1", "IDR", "10", "Operating bank");
    sample.reverseContribution("2026-02-01", "c2", {}).archiveOwner("c1", "Budi");
    const auto shown = CapitalOverviews::overview(sample.books(), year2026(), today, english);
    EXPECT_EQ(cellOf(shown->owners, "Recorded contributions", "Budi"), QStringLiteral("–"));
    EXPECT_EQ(cellOf(shown->owners, "Contributed this period", "Budi"), QStringLiteral("−10"));
    const auto summary = CapitalSummary::create(*sample.books().capital, "IDR", "2026-01-01", "2026-12-31");
    EXPECT_EQ(summary->periodMinor, -1'000);
    EXPECT_EQ(shown->owners.total->cells[3].text, QStringLiteral("−10")) << "as the summary says";
}

TEST(CapitalOverview, ListsWhoStillTakesPartInDividendsAfterLeavingTheOwners)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").owner("Chen").archiveOwner("c1", "Budi").archiveOwner("c2", "Chen");
    sample.participant("Budi", "100").participant("Chen", "0");
    sample.books().dividends->participants.back().archived = true;
    const auto shown = CapitalOverviews::overview(sample.books(), year2026(), today, english);
    ASSERT_EQ(shown->owners.rows.size(), 1U) << "Chen is neither any more and has no figures";
    EXPECT_EQ(shown->owners.rows[0].cells[0].text, QStringLiteral("Budi"));
    EXPECT_EQ(shown->participants, std::vector<std::string>{"d1"}) << "whose settlement the row leads to";
}

TEST(CapitalOverview, LeavesTheCumulativeColumnOutWhileTheHistoryIsUnknown)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").contribute("2026-03-01", "c1", "USD", "10.00", "Singapore");
    const auto shown = CapitalOverviews::overview(sample.books(), year2026("USD"), today, english);
    EXPECT_EQ(shown->warning,
              QStringLiteral("Historical contributions have not been entered. The cumulative total is incomplete."));
    EXPECT_EQ(cellOf(shown->owners, "Cumulative contributions", "Budi"), QStringLiteral("nowhere"));
    EXPECT_EQ(cellOf(shown->owners, "Recorded contributions", "Budi"), QStringLiteral("10.00"));
}

TEST(CapitalOverview, ShowsNothingOfASectionThatTheMemberMayNotSee)
{
    auto sample = capitalSample();
    sample.books().currentMember.permissions = {{"viewDividends", "postDividends"}};
    const auto shown = CapitalOverviews::overview(sample.books(), year2026(), today, english);
    EXPECT_EQ(cellOf(shown->owners, "Ownership", "Budi Santoso"), QStringLiteral("nowhere"))
        << "not a zero, but no column at all";
    EXPECT_FALSE(shown->showsOwnership) << "nor that there are no shares";
    EXPECT_EQ(shown->title, QStringLiteral("Participants"));
    for (const auto& row : shown->latest.rows)
        EXPECT_NE(row.cells[1].text, QStringLiteral("Contribution"));
}

TEST(CapitalOverview, FailsAsAWholeWhereARecordBreaksARule)
{
    auto capital = capitalSample();
    capital.books().capital->contributions.front().date = "2025-12-31"; // in time that the baseline covers
    EXPECT_EQ(CapitalOverviews::overview(capital.books(), year2026(), today, english).error(),
              CapitalOverviews::Unavailable::capital);
    EXPECT_FALSE(ContributionLists::list(capital.books(), year2026(), english));
    auto dividends = capitalSample();
    dividends.books().dividends->movements.front().amountMinor += 1; // its reversal no longer equals it
    EXPECT_EQ(CapitalOverviews::overview(dividends.books(), year2026(), today, english).error(),
              CapitalOverviews::Unavailable::dividends);
    EXPECT_FALSE(DividendBoards::board(dividends.books(), year2026(), {}, english));
}

TEST(CapitalOverview, PutsTheVersionInForceAtTheEndOfThePeriodForward)
{
    const auto sample = capitalSample();
    auto earlier = year2026();
    earlier.period = *earlier.period.previous();
    const auto bars = CapitalOverviews::ownership(*sample.books().capital, earlier, english);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0].state, QStringLiteral("Begins later"));
    EXPECT_TRUE(bars[1].isInForce);
    ASSERT_EQ(bars[1].shares.size(), 2U) << "who owns nothing has no part of the bar";
    EXPECT_EQ(bars[1].shares[1].percent, QStringLiteral("50.00\u00a0%"));
    EXPECT_EQ(bars[1].shares[1].swatch, 1U) << "an owner keeps one colour through all versions";
}

TEST(CapitalOverview, TellsTheLatestRecordsWithTheirEntries)
{
    const auto sample = capitalSample();
    const auto shown = CapitalOverviews::overview(sample.books(), year2026(), today, english);
    const auto rows = read(shown->latest);
    ASSERT_EQ(rows.size(), 8U);
    EXPECT_EQ(rows[0], "13 Nov | Contribution / Budi Santoso | +150,000,000");
    EXPECT_EQ(rows[1], "31 Oct | Allocation 2026 Q3 / 3 participants | 64,500,000");
    EXPECT_EQ(rows[5], "2 Sep | Reversed payment / 陈思远 | +13,500,000");
    EXPECT_EQ(rows[6], "1 Sep | [Dividend payment / 陈思远 · reversed] | [−13,500,000]");
    EXPECT_EQ(shown->latest.rows[0].entry, "entry-c9") << "by which the ledger finds it";
    EXPECT_EQ(shown->latest.rows[1].entry.error(), "remark.noCash") << "an allocation moves no money";
}

TEST(CapitalOverview, LeadsToNoEntryThatTheMemberDoesNotSee)
{
    auto sample = capitalSample();
    sample.books().transactions = {};
    const auto shown = CapitalOverviews::overview(sample.books(), year2026(), today, english);
    const auto& row = shown->latest.rows.front();
    EXPECT_EQ(row.entry.error(), "remark.entryNotSeen");
    EXPECT_EQ(read(row), "13 Nov | Contribution / Budi Santoso · An account that you cannot see | +150,000,000");
}

TEST(ContributionList, LinksAContributionAndItsReversalBothWays)
{
    const auto sample = capitalSample();
    const auto list = ContributionLists::list(sample.books(), year2026(), english);
    EXPECT_EQ(read(list->rows),
              (std::vector<std::string>{
                  "13 Nov 2026 | Budi Santoso / Fourth round | Operating bank | +150,000,000",
                  "30 Jul 2026 | Nguyễn Thị Thanh Hương / Reversal of 28 Jul 2026 | Operating bank | −25,000,000",
                  "28 Jul 2026 | [Nguyễn Thị Thanh Hương / Reversed on 30 Jul 2026] | Operating bank | [+25,000,000]",
                  " | Recorded in this period |  | 150,000,000"}));
    const auto undone = ContributionLists::detail(sample.books(), "c7", today, english);
    EXPECT_EQ(undone->linkID, "c8");
    EXPECT_FALSE(undone->whyNotReverse.isEmpty()) << "it is undone already";
    EXPECT_EQ(ContributionLists::detail(sample.books(), "c8", today, english)->linkID, "c7");
    const auto standing = ContributionLists::detail(sample.books(), "c9", today, english);
    EXPECT_TRUE(standing->whyNotReverse.isEmpty());
    EXPECT_EQ(standing->entryID, "entry-c9");
}

TEST(ContributionList, ShowsTheBaselineInForceAboveThoseThatItSuperseded)
{
    auto sample = capitalSample();
    sample.baseline("2026-11-14", "IDR", "2025-12-31", {{"c1", "1,000,000,000"}, {"c2", "0"}, {"c3", "5"}});
    const auto list = ContributionLists::list(sample.books(), year2026(), english);
    ASSERT_EQ(list->baselines.size(), 2U);
    EXPECT_TRUE(list->baselines[0].isInForce);
    EXPECT_EQ(list->baselines[0].second, QStringLiteral("Recorded on 14 Nov 2026"));
    EXPECT_EQ(list->baselines[0].lines.back().value, QStringLiteral("IDR\u00a01,000,000,005"));
    EXPECT_EQ(list->baselines[1].second, QStringLiteral("Recorded on 2 Jan 2026, superseded"));
}

TEST(DividendBoard, SettlesALineFromItsMovements)
{
    const auto sample = capitalSample();
    const auto board =
        DividendBoards::board(sample.books(), year2026(), {.batchID = "d4", .participantID = "d2"}, english);
    ASSERT_TRUE(board);
    EXPECT_EQ(read(board->batches),
              (std::vector<std::string>{"2026 Q3 / 31 Oct 2026 | 64,500,000 / 0 % settled",
                                        "2026 Q2 / 31 Jul 2026 | 125,000,000 / 20 % settled",
                                        "Advances / 1 with something left | 8,000,000 / Unapplied"}));
    EXPECT_EQ(read(board->lines)[1], "陈思远 | 30.00 % | 37,500,000 | 12,000,000 | 13,500,000 | 12,000,000");
    EXPECT_EQ(figures(board->equation), QStringLiteral("37,500,000 =12,000,000 +13,500,000 +12,000,000"));
    EXPECT_EQ(
        read(board->movements),
        (std::vector<std::string>{"5 Oct 2026 | Dividend payment / Operating bank | −13,500,000",
                                  "12 Sep 2026 | Advance applied / No cash flow | −12,000,000",
                                  "2 Sep 2026 | Reversed payment / Operating bank · Wrong account | +13,500,000",
                                  "1 Sep 2026 | [Dividend payment / Operating bank · reversed] | [−13,500,000]"}));
    EXPECT_EQ(
        board->notes,
        QStringLiteral("Entitlement = advances applied + paid + payable. Confirming an allocation does not change "
                       "account balances.\n"
                       "Offsets create no cash flow and do not deduct the account balance again."));
}

TEST(DividendBoard, TellsWhatBecameOfAReversedOffset)
{
    auto sample = capitalSample();
    sample.reverseMovement("2026-11-01", "d8", {});
    const auto board =
        DividendBoards::board(sample.books(), year2026(), {.batchID = "d4", .participantID = "d2"}, english);
    EXPECT_EQ(figures(board->equation), QStringLiteral("37,500,000 =0 +13,500,000 +24,000,000"));
    EXPECT_TRUE(board->notes.contains(QStringLiteral("\nThis offset was later reversed")));
}

TEST(DividendBoard, KeepsWhatIsNotSettledInSightWhateverThePeriod)
{
    auto sample = capitalSample();
    sample.cancelBatch("2026-11-02", "d10");
    auto next = year2026();
    next.period = *next.period.next();
    const auto board = DividendBoards::board(sample.books(), next, {}, english);
    EXPECT_EQ(read(board->batches),
              (std::vector<std::string>{"2026 Q2 / 31 Jul 2026 | 125,000,000 / 20 % settled",
                                        "Advances / 1 with something left | 8,000,000 / Unapplied"}));
    const auto cancelled = DividendBoards::board(sample.books(), year2026(), {.batchID = "d10"}, english);
    EXPECT_EQ(read(cancelled->batches)[0], "[2026 Q3 / 31 Oct 2026] | [64,500,000 / Cancelled]");
    EXPECT_TRUE(cancelled->equation.empty()) << "nothing is owed by a cancelled allocation";
}

TEST(CapitalPlaces, LeadToWhatIsUnpaidLongestAndToTheAdvancesOfACurrency)
{
    auto sample = capitalSample();
    const auto unpaid = [&] {
        return CapitalPlaces::placeOf({.action = PageAction::showUnpaid, .subject = "IDR"}, sample.books()).value();
    };
    const auto first = unpaid();
    EXPECT_EQ(first.tab, CapitalModuleTab::dividends);
    EXPECT_EQ(first.currency, "IDR");
    const auto board = DividendBoards::board(sample.books(), year2026(), first.choice, english);
    EXPECT_EQ(board->choice, first.choice) << "what is led to stands there";
    EXPECT_EQ(board->title, QStringLiteral("2026 Q2")) << "not the later one, which is unpaid as well";
    const auto earlier = first.choice;
    sample.books().dividends->batches.back().date = "2026-07-01";
    EXPECT_NE(unpaid().choice.batchID, earlier.batchID) << "the day counts, not when it was recorded";
    EXPECT_EQ(CapitalPlaces::placeOf({.action = PageAction::showUnpaid, .subject = "EUR"}, sample.books())->choice,
              DividendChoice{})
        << "nothing is unpaid in this currency";
    const auto advances =
        CapitalPlaces::placeOf({.action = PageAction::showAdvances, .subject = "USD"}, sample.books()).value();
    EXPECT_EQ(advances.currency, "USD");
    EXPECT_EQ(advances.choice.batchID, DividendBoards::advances);
    sample.books().dividends.reset();
    EXPECT_FALSE(CapitalPlaces::placeOf({.action = PageAction::showUnpaid, .subject = "IDR"}, sample.books()));
}

namespace {

CapitalQuestion yearOf(const std::string& date)
{
    return {.period = Period::containing(Period::Span::year, LedgerDay::parse(date).value()), .currency = "IDR"};
}

/// An allocation and an advance of one year that were settled in the next, when there were others.
CapitalSample settledInTheNextYear()
{
    CapitalSample sample{capitalGround()};
    sample.participant("Budi", "100").participant("Chen", "0").participant("Huong", "0"); // d1 d2 d3
    sample.allocate("2025-12-31", "2025", "IDR", "1,000", {{"d1", "100"}});               // d4
    sample.advance("2025-12-31", "d1", "IDR", "400", "Operating bank");                   // d5
    sample.applyAdvance("2026-01-15", "d4", "d1", "d5", "300");                           // d6
    sample.giveBack("2026-01-15", "d5", "100", "Operating bank");                         // d7
    sample.pay("2026-01-15", "d4", "d1", "700", "Operating bank");                        // d8
    sample.allocate("2026-02-01", "2026", "IDR", "500", {{"d1", "100"}});                 // d9
    sample.advance("2026-02-01", "d1", "IDR", "50", "Operating bank");                    // d10
    sample.reverseMovement("2026-02-02", "d10", {});                                      // d11
    return sample.advance("2026-02-03", "d2", "IDR", "60", "Operating bank");             // d12
}

}

TEST(CapitalPlaces, LeadToAMovementWhereItStandsWhateverItsYear)
{
    const auto sample = settledInTheNextYear();
    for (const auto* id : {"d5", "d6", "d7", "d8", "d10", "d11", "d12"}) {
        const auto place = CapitalPlaces::placeOf({.action = PageAction::showMovement, .subject = id}, sample.books());
        ASSERT_TRUE(place) << id;
        const auto board = DividendBoards::board(sample.books(), yearOf(place->date), place->choice, english);
        EXPECT_EQ(board->choice, place->choice) << id;
        EXPECT_NE(std::ranges::find(board->movements.rows, id, &RecordRow::id), board->movements.rows.end())
            << id << " is among what is shown";
    }
}

TEST(CapitalPlaces, LeadFromAParticipantToTheirOwnSettlement)
{
    const auto sample = settledInTheNextYear();
    const auto settlement = [&](const char* participant, const char* day) {
        return CapitalPlaces::settlementOf(participant, sample.books(), yearOf(day), english);
    };
    EXPECT_EQ(settlement("d1", "2026-01-01")->choice, (DividendChoice{.batchID = "d9", .participantID = "d1"}));
    EXPECT_EQ(settlement("d1", "2025-01-01")->choice.batchID, "d9") << "unpaid, so it is listed in every year";
    EXPECT_EQ(settlement("d1", "2025-01-01")->date, "") << "and the page need not turn to it";
    const DividendChoice advance{
        .batchID = std::string{DividendBoards::advances}, .participantID = "d2", .advanceID = "d12"};
    EXPECT_EQ(settlement("d2", "2026-01-01")->choice, advance) << "nobody else's line, but their advance";
    EXPECT_FALSE(settlement("d3", "2026-01-01")) << "who has neither has no settlement";
}

TEST(CapitalPlaces, LeadToWhatStandsBeforeWhatWasTakenBack)
{
    CapitalSample sample{capitalGround()};
    sample.participant("Budi", "100").participant("Chen", "100");                          // d1 d2
    sample.allocate("2026-01-31", "January", "IDR", "1,000", {{"d1", "100"}});             // d3
    sample.advance("2026-02-01", "d2", "IDR", "400", "Operating bank");                    // d4
    sample.allocate("2026-02-28", "February", "IDR", "900", {{"d1", "50"}, {"d2", "50"}}); // d5
    sample.advance("2026-03-01", "d2", "IDR", "30", "Operating bank");                     // d6
    sample.cancelBatch("2026-03-02", "d5").reverseMovement("2026-03-02", "d6", {});
    const auto choice = [&](const char* participant) {
        return CapitalPlaces::settlementOf(participant, sample.books(), year2026(), english)->choice;
    };
    EXPECT_EQ(choice("d1").batchID, "d3") << "what is owed, not the newer allocation that was cancelled";
    EXPECT_EQ(choice("d2").advanceID, "d4") << "the advance that stands";
    sample.giveBack("2026-03-03", "d4", "400", "Operating bank").reverseMovement("2026-03-04", "d9", {});
    sample.reverseMovement("2026-03-05", "d4", {});
    EXPECT_EQ(choice("d2").batchID, "d5") << "where nothing stands, what was cancelled tells why";
}

TEST(CapitalPlaces, TurnToTheYearOfASettlementThatThePeriodDoesNotList)
{
    CapitalSample sample{capitalGround()};
    sample.participant("Budi", "60").participant("Chen", "40");                             // d1 d2
    sample.allocate("2025-03-31", "2025 Q1", "IDR", "1,000", {{"d1", "60"}, {"d2", "40"}}); // d3
    sample.pay("2025-04-01", "d3", "d1", "600", "Operating bank")
        .pay("2025-04-01", "d3", "d2", "400", "Operating bank");
    sample.allocate("2026-03-31", "2026 Q1", "IDR", "500", {{"d1", "100"}});
    const auto place = CapitalPlaces::settlementOf("d2", sample.books(), yearOf("2026-01-01"), english);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->date, "2025-03-31");
    const auto board = DividendBoards::board(sample.books(), yearOf(place->date), place->choice, english);
    EXPECT_EQ(board->person, QStringLiteral("Chen"));
}

TEST(DividendBoard, LeadsToTheEntryOfAMovementOnlyWhereTheMemberSeesIt)
{
    auto sample = capitalSample();
    const auto rows = [&] {
        return DividendBoards::board(sample.books(), year2026(), {.batchID = "d4", .participantID = "d2"}, english)
            ->movements.rows;
    };
    ASSERT_EQ(rows().size(), 4U);
    EXPECT_EQ(rows()[0].entry, "entry-d9");
    EXPECT_EQ(rows()[1].entry.error(), "remark.noCash") << "an offset";
    sample.books().transactions = {};
    EXPECT_EQ(rows()[0].entry.error(), "remark.entryNotSeen");
}

TEST(DividendBoard, ShowsWhatIsLeftOfAnAdvance)
{
    auto sample = capitalSample();
    sample.giveBack("2026-11-02", "d7", "3,000,000", "Operating bank");
    const auto board =
        DividendBoards::board(sample.books(), year2026(), {.batchID = std::string{DividendBoards::advances}}, english);
    EXPECT_EQ(read(board->lines),
              (std::vector<std::string>{"陈思远 | 12 Sep 2026 | 20,000,000 | 12,000,000 | 3,000,000 | 5,000,000"}));
    EXPECT_EQ(figures(board->equation), QStringLiteral("20,000,000 =12,000,000 +3,000,000 +5,000,000"));
    EXPECT_EQ(board->choice.advanceID, "d7");
}

TEST(CapitalActions, SayWhyTheyCannotBeUsed)
{
    const auto why = [](const LedgerSnapshot& books, std::string_view action) {
        return CapitalActions::whyNot(action, books, english).toStdString();
    };
    auto sample = capitalSample();
    EXPECT_EQ(why(sample.books(), CapitalAction::contribute), "");
    sample.books().financialSettings->contributionsEnabled = false;
    EXPECT_EQ(why(sample.books(), CapitalAction::contribute), "Shareholder contributions are disabled");
    EXPECT_EQ(why(sample.books(), CapitalAction::setOwnership), "") << "history stays correctable";
    sample.books().currentMember.permissions = {{"viewCapital"}};
    EXPECT_EQ(why(sample.books(), CapitalAction::contribute), "You do not have the right to do this.");
    const CapitalSample fresh{capitalGround()};
    EXPECT_EQ(why(fresh.books(), CapitalAction::setBaseline), "Add an owner first.");
}

TEST(DividendActions, SayWhyThisRecordCannotBeSettledOrUndone)
{
    auto sample = capitalSample();
    const auto why = [&](std::string_view action, const DividendActions::Target& target) {
        return DividendActions::whyNot(action, target, sample.books(), today, english).toStdString();
    };
    EXPECT_EQ(why(DividendAction::pay, {.batchID = "d4", .participantID = "d2"}), "");
    EXPECT_EQ(why(DividendAction::apply, {.batchID = "d4", .participantID = "d1"}),
              "This participant has no advance to apply.");
    EXPECT_EQ(why(DividendAction::cancelBatch, {.batchID = "d10"}), "");
    EXPECT_EQ(why(DividendAction::cancelBatch, {.batchID = "d4"}),
              "Only allocations without valid payments or applied advances can be cancelled. Their history is "
              "retained.");
    EXPECT_EQ(why(DividendAction::reverse, {.movementID = "d9"}), "");
    EXPECT_EQ(why(DividendAction::reverse, {.movementID = "d7"}),
              "This record has linked payments, offsets, or returns. Resolve the related records first.");
    sample.pay("2026-11-20", "d4", "d2", "12,000,000", "Operating bank");
    EXPECT_EQ(why(DividendAction::pay, {.batchID = "d4", .participantID = "d2"}), "No dividend is unpaid here.");
    sample.books().currentMember.accountGrants->clear();
    EXPECT_EQ(why(DividendAction::pay, {.batchID = "d4", .participantID = "d1"}),
              "No authorized operating fund account is available. Configure dividend payment permissions first.");
}
