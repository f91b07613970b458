#include "LedgerUI/Presentation/Dividends/DividendPrint.h"

#include <algorithm>

#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Dividends/DividendTables.h"
#include "LedgerUI/Presentation/Records/LatestFirst.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using RecordPrint::Ground;
using Movements = DividendTables::Movements;
using OptionalSum = std::optional<std::int64_t>;

enum class WithParticipant { no, yes };

/// "2026 Q3" of what settles an allocation, else a dash.
RecordCell allocationCell(const DividendMovement& movement, const DividendTables& tables)
{
    const auto& batchID = tables.original(movement).batchID;
    const auto& batches = tables.state().batches;
    const auto batch = batchID ? std::ranges::find(batches, *batchID, &DividendBatch::id) : batches.end();
    return batch == batches.end() ? RecordText::dash() : RecordCell{.text = qString(batch->period)};
}

/// The movements as the screen lists them, with what the screen says around its list.
PrintedTable movementsOf(const Movements& movements, const DividendTables& tables, WithParticipant withParticipant)
{
    auto rows = tables.movements(movements);
    rows.columns.insert(rows.columns.begin() + 2, {.head = tables.word("column.allocation")});
    if (withParticipant == WithParticipant::yes)
        rows.columns.insert(rows.columns.begin() + 2,
                            {.head = tables.word("column.participant"), .room = ColumnRoom::stretches});
    for (std::size_t at = 0; at < movements.size(); ++at) {
        auto& cells = rows.rows[at].cells;
        cells.insert(cells.begin() + 2, allocationCell(*movements[at], tables));
        if (withParticipant == WithParticipant::yes)
            cells.insert(cells.begin() + 2, {.text = tables.nameOf(movements[at]->participantID)});
    }
    return RecordPrint::table(rows, tables.word("movements.title"), tables.notesOn(movements));
}

void grow(OptionalSum& sum, std::int64_t amount)
{
    sum = sum ? Money::add(*sum, amount) : sum;
}

RecordCell sumCell(const OptionalSum& sum, const DividendTables& tables)
{
    return RecordText::bold(sum ? tables.amount(*sum) : RecordText::dash());
}

/// Every allocation that the participant had a part in by the end of the period.
PrintedTable entitlementsOf(const Ground& ground, std::string_view participantID, const DividendTables& tables)
{
    RecordRows rows{.columns = {{.head = tables.word("column.allocation"), .room = ColumnRoom::stretches},
                                {.head = tables.word("column.ratio"), .isAtRight = true},
                                {.head = tables.word("figure.entitlement"), .isAtRight = true},
                                {.head = tables.word("figure.applied"), .isAtRight = true},
                                {.head = tables.word("figure.paid"), .isAtRight = true},
                                {.head = tables.word("figure.payable"), .isAtRight = true}},
                    .rows = {}};
    std::vector<const DividendBatch*> batches;
    for (const auto& each : tables.state().batches) {
        if (each.currency == tables.currency() && each.date <= ground.question.throughDay().value_or(each.date))
            batches.push_back(&each);
    }
    sortLatestFirst(batches);
    OptionalSum entitled = 0;
    OptionalSum applied = 0;
    OptionalSum paid = 0;
    OptionalSum unpaid = 0;
    for (const auto* batch : batches) {
        const auto line = std::ranges::find(batch->lines, participantID, &DividendLine::participantID);
        if (line == batch->lines.end())
            continue;
        const auto stands = tables.book().line(batch->id, participantID);
        RecordCell period{.text = qString(batch->period), .second = RecordText::day(batch->date, tables.locale()).text};
        if (tables.isCancelled(*batch))
            period.second += QStringLiteral(" · ") + tables.word("batch.cancelled");
        rows.rows.push_back({.id = batch->id,
                             .cells = {std::move(period), RecordText::percentCell(line->ratioBps, tables.locale()),
                                       tables.amount(line->amountMinor), tables.amount(stands.appliedMinor),
                                       tables.amount(stands.paidMinor),
                                       tables.unpaidCell(stands.unpaidMinor, tables.isCancelled(*batch))}});
        grow(entitled, stands.entitlementMinor); // of what is cancelled nothing counts
        grow(applied, stands.appliedMinor);
        grow(paid, stands.paidMinor);
        grow(unpaid, stands.unpaidMinor);
    }
    rows.total = RecordRow{.id = "total",
                           .cells = {RecordText::bold({.text = tables.word("total")}),
                                     {},
                                     sumCell(entitled, tables),
                                     sumCell(applied, tables),
                                     sumCell(paid, tables),
                                     sumCell(unpaid, tables)}};
    if (rows.rows.empty())
        rows.total.reset();
    return RecordPrint::table(rows, tables.word("allocations.title"),
                              wordIn(ground.locale, capitalFormWords(), "allocate.hint"));
}

/// Every advance paid to the participant by the end of the period.
PrintedTable advancesOf(const Ground& ground, std::string_view participantID, const DividendTables& tables)
{
    Movements advances;
    for (const auto& each : tables.state().movements) {
        if (each.kind == DividendMovementKind::advance && each.participantID == participantID &&
            each.currency == tables.currency() && each.date <= ground.question.throughDay().value_or(each.date))
            advances.push_back(&each);
    }
    sortLatestFirst(advances);
    auto rows = tables.advances(advances);
    rows.columns[0].head = tables.word("column.day");
    rows.columns.erase(rows.columns.begin() + 1);
    OptionalSum remaining = 0;
    for (std::size_t at = 0; at < advances.size(); ++at) {
        auto& cells = rows.rows[at].cells;
        cells[1].second = cells[0].second; // that it was reversed: whose it is, the head of the document says
        cells.erase(cells.begin());
        grow(remaining, tables.standingOf(*advances[at]).remaining);
    }
    if (!advances.empty())
        rows.total = RecordRow{
            .id = "total",
            .cells = {RecordText::bold({.text = tables.word("total")}), {}, {}, {}, sumCell(remaining, tables)}};
    return RecordPrint::table(rows, tables.word("advances.title"));
}

/// The movements of the period in this currency, of one participant or of all, the latest first.
Movements movementsIn(const Ground& ground, const DividendTables& tables, std::string_view participantID = {})
{
    Movements found;
    for (const auto& each : tables.state().movements) {
        const bool isTheirs = participantID.empty() || each.participantID == participantID;
        if (isTheirs && each.currency == tables.currency() && ground.question.period.contains(each.date))
            found.push_back(&each);
    }
    sortLatestFirst(found);
    return found;
}

/// The sums that the overview shows of the participant.
PrintedTable sumsOf(const DividendParticipantSummary& sums, const DividendTables& tables)
{
    const auto value = [&](std::string_view key, std::int64_t minor) {
        return std::pair{tables.word(key), balanceText(minor, tables.currency(), tables.locale()).text()};
    };
    return RecordPrint::list({value("column.netPaid", sums.netPaidMinor), value("column.returned", sums.returnedMinor),
                              value("column.settled", sums.settledMinor), value("column.unpaid", sums.unpaidMinor),
                              value("column.advances", sums.advanceMinor)},
                             {}, wordIn(tables.locale(), capitalWords(), "statement.note"));
}

}

std::optional<PrintedDocument> DividendPrint::section(const Ground& ground)
{
    const auto& question = ground.question;
    const auto tables = DividendTables::create(ground.snapshot, question.currency, std::nullopt, ground.locale);
    if (!tables)
        return std::nullopt;
    auto document = RecordPrint::document(ground, tables->word("tab.dividends"), "dividends");
    for (const auto* batch : DividendBoards::batches(*tables, question.period))
        RecordPrint::add(document, RecordPrint::table(tables->lines(*batch), qString(batch->period),
                                                      DividendBoards::headOf(*batch, ground.locale)));
    RecordPrint::add(document,
                     RecordPrint::table(tables->advances(DividendBoards::advancesOf(*tables, question.period)),
                                        tables->word("advances.title")));
    RecordPrint::add(document, movementsOf(movementsIn(ground, *tables), *tables, WithParticipant::yes));
    if (document.tables.empty())
        RecordPrint::addNote(document, tables->word("dividends.none"));
    RecordPrint::addNote(document, wordIn(ground.locale, capitalFormWords(), "allocate.hint"));
    return document;
}

std::optional<PrintedDocument> DividendPrint::statement(const Ground& ground, std::string_view participantID)
{
    const auto& question = ground.question;
    if (!ground.snapshot.dividends)
        return std::nullopt;
    const auto through = question.throughDay();
    const auto tables = DividendTables::create(ground.snapshot, question.currency, through, ground.locale);
    const auto summary =
        DividendSummary::create(*ground.snapshot.dividends, question.currency, question.fromDay(), through);
    if (!tables || !summary)
        return std::nullopt;
    const auto sums =
        std::ranges::find(summary->participants, participantID, &DividendParticipantSummary::participantID);
    if (sums == summary->participants.end())
        return std::nullopt;
    auto document = RecordPrint::document(ground, tables->word("statement"), "settlement");
    document.facts.insert(document.facts.begin(), {tables->word("column.participant"), qString(sums->name)});
    RecordPrint::add(document, sumsOf(*sums, *tables));
    RecordPrint::add(document, entitlementsOf(ground, participantID, *tables));
    RecordPrint::add(document, advancesOf(ground, participantID, *tables));
    auto movements = movementsIn(ground, *tables, participantID);
    std::ranges::reverse(movements);
    RecordPrint::add(document, movementsOf(movements, *tables, WithParticipant::no));
    return document;
}
