#include <map>
#include <numeric>
#include <sstream>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Csv/CsvReader.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Dividends/DividendPrint.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/tests/CapitalWalk.h"

// What the lists, the settlement and its statement say, added up anew from the entries of the ledger and the records
// alone, over random histories.

namespace {

constexpr auto english = "en-US";
using Kind = std::string_view;

CapitalQuestion all(std::string currency)
{
    return {.period = Period::allTime(), .currency = std::move(currency)};
}

Period quarter(int month)
{
    return Period::containing(Period::Span::quarter,
                              std::chrono::year{2026} / std::chrono::month{static_cast<unsigned>(month)} / 1);
}

QString digits(std::int64_t minor, const std::string& currency)
{
    return RecordText::amount(minor, currency, english).text;
}

/// What each entry moved, by its id.
std::map<std::string, std::int64_t> movedBy(const LedgerSnapshot& books)
{
    std::map<std::string, std::int64_t> moved;
    for (const auto& entry : books.transactions)
        moved[entry.id] = entry.legs.front().amountMinor;
    return moved;
}

/// How a line or an advance stands at the end of a day by its movements and their reversals.
struct Standing {
    std::int64_t applied = 0;
    std::int64_t cash = 0; // what entries moved: money out is below zero

    [[nodiscard]] std::int64_t paid() const { return -cash; }
};

Standing standingOf(const LedgerSnapshot& books, const std::string& day, const auto& isAbout)
{
    const auto moved = movedBy(books);
    std::map<std::string, const DividendMovement*> known;
    for (const auto& each : books.dividends->movements)
        known[each.id] = &each;
    Standing standing;
    for (const auto& each : books.dividends->movements) {
        const auto& original = each.reversalOf ? *known.at(*each.reversalOf) : each;
        if (each.date > day || !isAbout(original))
            continue;
        if (each.transactionID)
            standing.cash += moved.at(*each.transactionID);
        else
            standing.applied += each.reversalOf ? -each.amountMinor : each.amountMinor;
    }
    return standing;
}

const PrintedTable* titled(const PrintedDocument& document, const QString& title)
{
    for (const auto& table : document.tables) {
        if (table.title == title)
            return &table;
    }
    return nullptr;
}

using ExportedRow = std::map<std::string, std::string>;

/// The records of an exported table, each field by the name of its column.
std::vector<ExportedRow> rowsOf(const std::string& file)
{
    CsvReader reader{file};
    reader.next();
    const std::vector<std::string> heads{reader.fields().begin(), reader.fields().end()};
    std::vector<ExportedRow> rows;
    while (reader.next() == CsvReader::Outcome::record) {
        auto& row = rows.emplace_back();
        for (std::size_t at = 0; at < heads.size(); ++at)
            row.emplace(heads[at], reader.fields()[at]);
    }
    return rows;
}

/// Without the apostrophe that keeps a spreadsheet from reading a formula.
std::string plain(std::string text)
{
    return text.starts_with('\'') ? text.substr(1) : text;
}

std::int64_t minorOf(const ExportedRow& row)
{
    return std::stoll(plain(row.at("amount_minor")));
}

/// Both currencies of the walk have two decimals: the amount is the minor units with a point before the last two.
void expectSameAmounts(const ExportedRow& row)
{
    auto digits = plain(row.at("amount"));
    std::erase(digits, '.');
    if (row.at("kind") != "ownership")
        EXPECT_EQ(std::stoll(digits), minorOf(row)) << row.at("amount");
}

class CapitalProof : public testing::TestWithParam<unsigned> {
protected:
    RandomYear m_year{GetParam()};
    const LedgerSnapshot& m_books = m_year.books();
};

}

TEST_P(CapitalProof, ListsContributionsAsTheLedgerBookedThem)
{
    const auto moved = movedBy(m_books);
    for (const std::string currency : walkedCurrencies) {
        for (const int month : {1, 4, 7, 10}) {
            const CapitalQuestion question{.period = quarter(month), .currency = currency};
            const auto list = ContributionLists::list(m_books, question, english);
            ASSERT_TRUE(list);
            std::int64_t sum = 0;
            std::size_t rows = 0;
            for (const auto& each : m_books.capital->contributions) {
                if (each.currency != currency || !question.period.contains(each.date))
                    continue;
                const auto row = std::ranges::find(list->rows.rows, each.id, &RecordRow::id);
                ASSERT_NE(row, list->rows.rows.end());
                EXPECT_EQ(row->cells.back().text,
                          RecordText::movement(moved.at(each.transactionID), currency, english).text);
                sum += moved.at(each.transactionID);
                ++rows;
            }
            EXPECT_EQ(list->rows.rows.size(), rows);
            EXPECT_EQ(list->rows.total->cells.back().text, digits(sum, currency)) << month;
        }
    }
}

TEST_P(CapitalProof, CountsTheBaselineInForceOnceHoweverOftenItIsCorrected)
{
    for (const std::string currency : walkedCurrencies) {
        std::map<std::string, std::int64_t> recorded; // by owner: the last baseline and all entries
        std::size_t corrected = 0;
        const CapitalBaseline* last = nullptr;
        for (const auto& each : m_books.capital->baselines) {
            if (each.currency == currency) {
                last = &each;
                ++corrected;
            }
        }
        const auto list = ContributionLists::list(m_books, all(currency), english);
        EXPECT_EQ(list->baselines.size(), corrected) << "every correction stays to be seen";
        for (std::size_t at = 0; last && at < last->entries.size(); ++at) {
            recorded[last->entries[at].participantID] = last->entries[at].amountMinor;
            EXPECT_EQ(list->baselines.front().lines[at].value,
                      balanceText(last->entries[at].amountMinor, currency, english).text());
        }
        const auto moved = movedBy(m_books);
        for (const auto& each : m_books.capital->contributions) {
            if (each.currency == currency)
                recorded[each.participantID] += moved.at(each.transactionID);
        }
        const auto overview = CapitalOverviews::overview(m_books, all(currency), "2026-12-31", english);
        for (const auto& owner : m_books.capital->participants) {
            const auto row = std::ranges::find(overview->owners.rows, "owner:" + owner.id, &RecordRow::id);
            if (row == overview->owners.rows.end())
                EXPECT_TRUE(owner.archived && recorded[owner.id] == 0) << owner.name;
            else
                EXPECT_EQ(row->cells[2].text, digits(recorded[owner.id], currency)) << owner.name;
        }
    }
}

TEST_P(CapitalProof, SettlesEveryLineByWhatTheEntriesMoved)
{
    for (const auto& batch : m_books.dividends->batches) {
        for (const auto& line : batch.lines) {
            const auto board = DividendBoards::board(
                m_books, all(batch.currency), {.batchID = batch.id, .participantID = line.participantID}, english);
            ASSERT_TRUE(board);
            if (batch.cancelled) {
                EXPECT_TRUE(board->equation.empty());
                continue;
            }
            const auto standing = standingOf(m_books, "2027-12-31", [&](const DividendMovement& each) {
                return each.batchID == batch.id && each.participantID == line.participantID;
            });
            const auto payable = line.amountMinor - standing.applied - standing.paid();
            ASSERT_EQ(board->equation.size(), 4U);
            const auto& figures = board->equation;
            const auto text = [&](std::int64_t minor) { return balanceText(minor, batch.currency, english).figure(); };
            EXPECT_EQ(figures[0].amount, text(line.amountMinor));
            EXPECT_EQ(figures[1].amount, text(standing.applied));
            EXPECT_EQ(figures[2].amount, text(standing.paid()));
            EXPECT_EQ(figures[3].amount, text(payable));
            const auto row = std::ranges::find(board->lines.rows, line.participantID, &RecordRow::id);
            EXPECT_EQ(row->cells[3].text, digits(standing.applied, batch.currency));
            EXPECT_EQ(row->cells[4].text, digits(standing.paid(), batch.currency));
        }
    }
}

TEST_P(CapitalProof, LeavesOfAnAdvanceWhatWasNeitherAppliedNorReturned)
{
    for (const auto& advance : m_books.dividends->movements) {
        if (advance.kind != DividendMovementKind::advance || advance.reversedBy)
            continue;
        const auto board =
            DividendBoards::board(m_books, all(advance.currency),
                                  {.batchID = std::string{DividendBoards::advances}, .advanceID = advance.id}, english);
        const auto uses = standingOf(m_books, "2027-12-31",
                                     [&](const DividendMovement& each) { return each.advanceID == advance.id; });
        ASSERT_EQ(board->equation.size(), 4U);
        const auto text = [&](std::int64_t minor) { return balanceText(minor, advance.currency, english).figure(); };
        EXPECT_EQ(board->equation[1].amount, text(uses.applied));
        EXPECT_EQ(board->equation[2].amount, text(uses.cash));
        EXPECT_EQ(board->equation[3].amount, text(advance.amountMinor - uses.applied - uses.cash));
    }
}

TEST_P(CapitalProof, StatesAParticipantAsTheyStoodAtTheEndOfAnyQuarter)
{
    for (const std::string currency : walkedCurrencies) {
        for (const int month : {1, 4, 7, 10}) {
            const CapitalQuestion question{.period = quarter(month), .currency = currency};
            const auto day = *question.throughDay();
            for (const auto& person : m_books.dividends->participants) {
                std::int64_t entitled = 0;
                for (const auto& batch : m_books.dividends->batches) {
                    const bool counts = batch.currency == currency && batch.date <= day &&
                                        !(batch.cancelled && batch.cancelledDate.value_or("") <= day);
                    const auto line = std::ranges::find(batch.lines, person.id, &DividendLine::participantID);
                    entitled += counts && line != batch.lines.end() ? line->amountMinor : 0;
                }
                const auto about = [&](bool isSettlement) {
                    return standingOf(m_books, day, [&](const DividendMovement& each) {
                        return each.currency == currency && each.participantID == person.id &&
                               each.batchID.has_value() == isSettlement;
                    });
                };
                const auto settled = about(true);
                const auto advances = about(false);
                const auto document = DividendPrint::statement({.snapshot = m_books,
                                                                .question = question,
                                                                .locale = english,
                                                                .moment = {.day = "2026-12-31", .time = "10:00"}},
                                                               person.id);
                ASSERT_TRUE(document);
                const auto& sums = document->tables.front().rows;
                const auto text = [&](std::int64_t minor) { return balanceText(minor, currency, english).text(); };
                EXPECT_EQ(sums[2].cells[1].text, text(settled.applied + settled.paid())) << "settled at cutoff";
                EXPECT_EQ(sums[3].cells[1].text, text(entitled - settled.applied - settled.paid())) << "unpaid";
                EXPECT_EQ(sums[4].cells[1].text, text(advances.paid() - settled.applied)) << "left of advances";
                if (const auto* lines = titled(*document, QStringLiteral("Allocations"))) {
                    const auto& total = lines->rows.back().cells;
                    EXPECT_EQ(total[2].text, digits(entitled, currency));
                    EXPECT_EQ(total[3].text, digits(settled.applied, currency));
                    EXPECT_EQ(total[4].text, digits(settled.paid(), currency));
                    EXPECT_EQ(total[5].text, digits(entitled - settled.applied - settled.paid(), currency));
                }
            }
        }
    }
}

TEST_P(CapitalProof, ExportsCapitalAsTheLedgerBookedIt)
{
    const auto moved = movedBy(m_books);
    std::map<std::string, std::int64_t> baselines; // by record, owner
    std::map<std::string, int> shares;             // by version
    std::int64_t contributed = 0;
    for (const auto& row : rowsOf(CapitalCSV::render(*m_books.capital))) {
        expectSameAmounts(row);
        if (row.at("kind") == "ownership") {
            shares[row.at("record_id")] += std::stoi(row.at("ownership_bps"));
        } else if (row.at("kind") == "baseline") {
            baselines[row.at("record_id") + row.at("participant_id")] = minorOf(row);
        } else {
            const auto booked = moved.at("entry-" + row.at("record_id"));
            EXPECT_EQ(minorOf(row), booked);
            EXPECT_EQ(row.at("kind"), booked < 0 ? "correction" : "contribution");
            contributed += booked;
        }
    }
    for (const auto& [version, sum] : shares)
        EXPECT_EQ(sum, 10000) << version;
    EXPECT_EQ(shares.size(), m_books.capital->ownershipVersions.size());
    std::int64_t recorded = 0;
    for (const std::string currency : walkedCurrencies) {
        const auto summary = CapitalSummary::create(*m_books.capital, currency, {}, {});
        recorded += summary->recordedMinor;
        if (const auto* current = CapitalMath::currentBaseline(*m_books.capital, currency)) {
            for (const auto& line : current->entries)
                contributed += baselines.at(current->id + line.participantID);
        }
    }
    EXPECT_EQ(contributed, recorded) << "the rows of the file add up to the summaries";
}

TEST_P(CapitalProof, ExportsDividendsAsTheLedgerBookedThem)
{
    const auto moved = movedBy(m_books);
    std::map<std::string, std::int64_t> unpaid; // by currency and participant
    std::map<std::string, std::int64_t> paid;
    for (const auto& row : rowsOf(DividendCSV::render(*m_books.dividends, english))) {
        expectSameAmounts(row);
        const auto whose = row.at("currency") + row.at("participant_id");
        const bool counts = row.at("reversed_by").empty() && row.at("cancelled") == "false";
        const auto& kind = row.at("kind");
        if (const auto entry = moved.find("entry-" + row.at("record_id")); entry != moved.end())
            EXPECT_EQ(minorOf(row), std::abs(entry->second)) << kind;
        else
            EXPECT_TRUE(kind == "entitlement" || kind == "application" || !row.at("reversal_of").empty()) << kind;
        if (!counts)
            continue;
        unpaid[whose] += kind == "entitlement" ? minorOf(row) : 0;
        unpaid[whose] -= kind == "payment" || kind == "application" ? minorOf(row) : 0;
        paid[whose] += kind == "payment" || kind == "advance" ? minorOf(row) : 0;
    }
    for (const std::string currency : walkedCurrencies) {
        const auto summary = DividendSummary::create(*m_books.dividends, currency, {}, {});
        for (const auto& each : summary->participants) {
            EXPECT_EQ(unpaid[currency + each.participantID], each.unpaidMinor) << each.name << currency;
            EXPECT_EQ(paid[currency + each.participantID], each.paidMinor) << each.name << currency;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, CapitalProof, testing::Range(1U, 9U));
