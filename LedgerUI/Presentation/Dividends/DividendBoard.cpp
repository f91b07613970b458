#include "LedgerUI/Presentation/Dividends/DividendBoard.h"

#include <algorithm>

#include "LedgerUI/Presentation/Dividends/DividendTables.h"
#include "LedgerUI/Presentation/Records/LatestFirst.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

namespace Kind = DividendMovementKind;
using Movements = DividendTables::Movements;

RecordRow batchRow(const DividendBatch& batch, const DividendTables& tables)
{
    RecordCell period{.text = qString(batch.period), .second = DayText::shortDate(batch.date, tables.locale())};
    auto amount = tables.amount(batch.amountMinor);
    amount.second = tables.standingOf(batch);
    if (batch.cancelled) {
        period = RecordText::struck(std::move(period));
        amount = RecordText::struck(std::move(amount));
    }
    return {.id = batch.id, .cells = {std::move(period), std::move(amount)}};
}

RecordRows batchesOf(const std::vector<const DividendBatch*>& batches, const Movements& advances,
                     const DividendTables& tables)
{
    RecordRows table{.columns = {{.head = tables.word("column.allocation"), .room = ColumnRoom::stretches},
                                 {.head = tables.word("column.amount"), .isAtRight = true}},
                     .rows = {}};
    for (const auto* batch : batches)
        table.rows.push_back(batchRow(*batch, tables));
    std::int64_t remaining = 0; // the book keeps what was paid out within the limit
    std::size_t open = 0;
    for (const auto* advance : advances) {
        const auto left = tables.book().advanceRemaining(advance->id);
        remaining += left;
        open += left != 0 ? 1 : 0;
    }
    auto amount = tables.amount(remaining);
    amount.second = tables.word("advances.remaining");
    table.rows.push_back({.id = std::string{DividendBoards::advances},
                          .cells = {{.text = tables.word("advances.title"),
                                     .second = countedIn(tables.locale(), capitalWords(), "advances.open", open),
                                     .glyph = QStringLiteral("link-45deg")},
                                    std::move(amount)}});
    return table;
}

RecordFigure figure(const char* sign, std::string_view key, std::int64_t minor, std::string_view currency,
                    std::string_view locale)
{
    const auto money = balanceText(minor, currency, locale);
    return {QString::fromLatin1(sign), wordIn(locale, capitalWords(), key), money.figure(), money.spoken};
}

std::vector<RecordFigure> equationOf(const DividendLineSummary& line, std::string_view currency,
                                     std::string_view locale)
{
    return {figure("", "figure.entitlement", line.entitlementMinor, currency, locale),
            figure("=", "figure.applied", line.appliedMinor, currency, locale),
            figure("+", "figure.paid", line.paidMinor, currency, locale),
            figure("+", "figure.payable", line.unpaidMinor, currency, locale)};
}

std::vector<RecordFigure> equationOf(const DividendMovement& advance, const AdvanceStanding& standing,
                                     std::string_view locale)
{
    return {figure("", "figure.advance", advance.amountMinor, advance.currency, locale),
            figure("=", "figure.applied", standing.applied, advance.currency, locale),
            figure("+", "figure.returned", standing.returned, advance.currency, locale),
            figure("+", "figure.remaining", standing.remaining, advance.currency, locale)};
}

/// The movements that `settles` names, and the reversals of those, the latest first.
template <class Settles>
Movements movementsWhere(const DividendTables& tables, const Settles& settles)
{
    Movements found;
    for (const auto& each : tables.state().movements) {
        if (settles(tables.original(each)))
            found.push_back(&each);
    }
    sortLatestFirst(found);
    return found;
}

void presentMovements(DividendBoard& board, const Movements& movements, const DividendTables& tables)
{
    board.movements = tables.movements(movements);
    board.notes = tables.notesOn(movements);
}

std::int64_t advancesLeft(std::string_view participantID, const DividendTables& tables)
{
    std::int64_t left = 0;
    for (const auto* each : tables.book().effective()) {
        if (each->kind == Kind::advance && each->participantID == participantID)
            left += tables.book().advanceRemaining(each->id);
    }
    return left;
}

void presentBatch(DividendBoard& board, const DividendBatch& batch, const DividendTables& tables)
{
    const auto& locale = tables.locale();
    board.title = qString(batch.period);
    board.subtitle = DividendBoards::headOf(batch, locale);
    board.lines = tables.lines(batch);
    board.hint = tables.word("hint.cancel");
    const auto line = std::ranges::find(batch.lines, board.choice.participantID, &DividendLine::participantID);
    const auto& chosen = line == batch.lines.end() ? batch.lines.front() : *line;
    board.choice.participantID = chosen.participantID;
    board.person = qString(chosen.participantName);
    board.standing = wordIn(locale, capitalWords(), "advances.left",
                            {tables.money(advancesLeft(chosen.participantID, tables)).toStdString()});
    if (!batch.cancelled)
        board.equation = equationOf(tables.book().line(batch.id, chosen.participantID), batch.currency, locale);
    const auto settlesLine = [&](const DividendMovement& each) {
        return each.batchID == batch.id && each.participantID == chosen.participantID;
    };
    presentMovements(board, movementsWhere(tables, settlesLine), tables);
    if (!batch.cancelled)
        board.notes.prepend(wordIn(locale, capitalFormWords(), "allocate.hint") +
                            (board.notes.isEmpty() ? QString{} : QStringLiteral("\n")));
}

void presentAdvances(DividendBoard& board, const Movements& advances, const DividendTables& tables)
{
    board.title = tables.word("advances.title");
    board.hint = tables.word("hint.offset");
    board.lines = tables.advances(advances);
    if (advances.empty())
        return;
    const auto found = std::ranges::find(advances, board.choice.advanceID, [](const auto* each) { return each->id; });
    const auto& advance = found == advances.end() ? *advances.front() : **found;
    board.choice.advanceID = advance.id;
    board.choice.participantID = advance.participantID;
    board.person = tables.nameOf(advance.participantID);
    board.standing = wordIn(tables.locale(), capitalWords(), "advances.paidOn",
                            {DayText::longDay(advance.date, tables.locale()).toStdString()});
    if (!advance.reversedBy)
        board.equation = equationOf(advance, tables.standingOf(advance), tables.locale());
    const auto isAboutIt = [&](const DividendMovement& each) {
        return each.id == advance.id || each.advanceID == advance.id;
    };
    presentMovements(board, movementsWhere(tables, isAboutIt), tables);
}

/// The allocation that is wanted, else the first one that the wanted participant has a part in, else the first one.
const DividendBatch* chosenOf(const std::vector<const DividendBatch*>& batches, const DividendChoice& wanted)
{
    if (wanted.batchID == DividendBoards::advances || batches.empty())
        return nullptr;
    const auto found = std::ranges::find(batches, wanted.batchID, [](const auto* each) { return each->id; });
    if (found != batches.end())
        return *found;
    const auto theirs = std::ranges::find_if(
        batches, [&](const auto* each) { return DividendBoards::hasLineOf(*each, wanted.participantID); });
    return theirs == batches.end() ? batches.front() : *theirs;
}

}

bool DividendBoards::hasLineOf(const DividendBatch& batch, std::string_view participantID)
{
    return std::ranges::find(batch.lines, participantID, &DividendLine::participantID) != batch.lines.end();
}

std::vector<const DividendBatch*> DividendBoards::batches(const DividendTables& tables, const Period& period)
{
    std::vector<const DividendBatch*> shown;
    for (const auto& batch : tables.state().batches) {
        const bool isOpen = !batch.cancelled && tables.sumOf(batch).unpaidMinor != 0;
        if (batch.currency == tables.currency() && (period.contains(batch.date) || isOpen))
            shown.push_back(&batch);
    }
    sortLatestFirst(shown);
    return shown;
}

DividendTables::Movements DividendBoards::advancesOf(const DividendTables& tables, const Period& period)
{
    Movements shown;
    for (const auto& each : tables.state().movements) {
        if (each.kind == Kind::advance && each.currency == tables.currency() &&
            (period.contains(each.date) || tables.book().advanceRemaining(each.id) != 0))
            shown.push_back(&each);
    }
    sortLatestFirst(shown);
    return shown;
}

QString DividendBoards::headOf(const DividendBatch& batch, std::string_view locale)
{
    return wordIn(locale, capitalWords(), batch.cancelled ? "batch.headCancelled" : "batch.head",
                  {balanceText(batch.amountMinor, batch.currency, locale).text().toStdString(),
                   DayText::longDay(batch.date, locale).toStdString()});
}

std::optional<DividendBoard> DividendBoards::board(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                                   const DividendChoice& wanted, std::string_view locale)
{
    const auto tables = DividendTables::create(snapshot, question.currency, std::nullopt, locale);
    if (!tables)
        return std::nullopt;
    const auto shown = batches(*tables, question.period);
    const auto advancesShown = advancesOf(*tables, question.period);
    DividendBoard board{.choice = wanted};
    board.batches = batchesOf(shown, advancesShown, *tables);
    const auto* chosen = chosenOf(shown, wanted);
    board.choice.batchID = chosen ? chosen->id : std::string{advances};
    if (chosen)
        presentBatch(board, *chosen, *tables);
    else
        presentAdvances(board, advancesShown, *tables);
    return board;
}

std::vector<RecordFigure> DividendBoards::equation(const DividendState& state, std::string_view batchID,
                                                   std::string_view participantID, std::string_view locale)
{
    const auto batch = std::ranges::find(state.batches, batchID, &DividendBatch::id);
    if (batch == state.batches.end())
        return {};
    const auto book = DividendBook::create(state, batch->currency, std::nullopt);
    return book ? equationOf(book->line(batchID, participantID), batch->currency, locale) : std::vector<RecordFigure>{};
}

std::vector<RecordFigure> DividendBoards::equationOfAdvance(const DividendState& state, std::string_view advanceID,
                                                            std::string_view locale)
{
    const auto advance = std::ranges::find(state.movements, advanceID, &DividendMovement::id);
    if (advance == state.movements.end() || advance->reversedBy)
        return {};
    const auto book = DividendBook::create(state, advance->currency, std::nullopt);
    if (!book)
        return {};
    AdvanceStanding standing{.remaining = book->advanceRemaining(advanceID)};
    for (const auto* each : book->effective()) {
        if (each->advanceID == advanceID)
            (each->kind == Kind::application ? standing.applied : standing.returned) += each->amountMinor;
    }
    return equationOf(*advance, standing, locale);
}
