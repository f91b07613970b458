#include "LedgerUI/Presentation/Dividends/DividendBoard.h"

#include <algorithm>
#include <functional>

#include <QStringList>

#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerUI/Presentation/Dividends/MovementText.h"
#include "LedgerUI/Presentation/Records/CapitalWords.h"
#include "LedgerUI/Presentation/Records/LatestFirst.h"
#include "LedgerUI/Presentation/Records/LinkedEntries.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

namespace Kind = DividendMovementKind;
using Movements = std::vector<const DividendMovement*>;

/// What the board is made from.
struct Ground {
    const LedgerSnapshot& snapshot;
    const DividendState& state;
    const DividendBook& book;
    const CapitalQuestion& question;
    std::string_view locale;

    [[nodiscard]] QString word(std::string_view key) const { return wordIn(locale, capitalWords(), key); }
    [[nodiscard]] QString money(std::int64_t minor) const
    {
        return balanceText(minor, question.currency, locale).text();
    }
    [[nodiscard]] RecordCell amount(std::int64_t minor) const
    {
        return RecordText::amount(minor, question.currency, locale);
    }
};

DividendLineSummary& operator+=(DividendLineSummary& sum, const DividendLineSummary& line)
{
    // Sums of a whole batch stay within its total.
    sum.entitlementMinor += line.entitlementMinor;
    sum.appliedMinor += line.appliedMinor;
    sum.paidMinor += line.paidMinor;
    sum.unpaidMinor += line.unpaidMinor;
    return sum;
}

DividendLineSummary sumOf(const DividendBatch& batch, const DividendBook& book)
{
    DividendLineSummary sum;
    for (const auto& line : batch.lines)
        sum += book.line(batch.id, line.participantID);
    return sum;
}

QString standingOf(const DividendBatch& batch, const Ground& ground)
{
    if (batch.cancelled)
        return ground.word("batch.cancelled");
    const auto sum = sumOf(batch, ground.book);
    if (sum.unpaidMinor == 0)
        return ground.word("batch.settled");
    // Whole percents, rounded down: what is not settled never reads as a hundred.
    const auto settled = (sum.entitlementMinor - sum.unpaidMinor) * 100 / sum.entitlementMinor;
    return wordIn(ground.locale, capitalWords(), "batch.settledShare", {std::to_string(settled)});
}

bool isShown(const DividendBatch& batch, const Ground& ground)
{
    if (batch.currency != ground.question.currency)
        return false;
    return ground.question.period.contains(batch.date) ||
           (!batch.cancelled && sumOf(batch, ground.book).unpaidMinor != 0);
}

Movements advancesOf(const Ground& ground)
{
    Movements found;
    for (const auto& each : ground.state.movements) {
        if (each.kind == Kind::advance && each.currency == ground.question.currency &&
            (ground.question.period.contains(each.date) || ground.book.advanceRemaining(each.id) != 0))
            found.push_back(&each);
    }
    sortLatestFirst(found);
    return found;
}

RecordRow batchRow(const DividendBatch& batch, const Ground& ground)
{
    RecordCell period{.text = qString(batch.period), .second = DayText::shortDate(batch.date, ground.locale)};
    auto amount = ground.amount(batch.amountMinor);
    amount.second = standingOf(batch, ground);
    if (batch.cancelled) {
        period = RecordText::struck(std::move(period));
        amount = RecordText::struck(std::move(amount));
    }
    return {.id = batch.id, .cells = {std::move(period), std::move(amount)}};
}

RecordRows batchesOf(const std::vector<const DividendBatch*>& batches, const Ground& ground)
{
    RecordRows table{.columns = {{.head = ground.word("column.allocation"), .room = ColumnRoom::stretches},
                                 {.head = ground.word("column.amount"), .isAtRight = true}},
                     .rows = {}};
    for (const auto* batch : batches)
        table.rows.push_back(batchRow(*batch, ground));
    std::int64_t remaining = 0; // the book keeps what was paid out within the limit
    std::size_t open = 0;
    for (const auto* advance : advancesOf(ground)) {
        const auto left = ground.book.advanceRemaining(advance->id);
        remaining += left;
        open += left != 0 ? 1 : 0;
    }
    auto amount = ground.amount(remaining);
    amount.second = ground.word("advances.remaining");
    table.rows.push_back({.id = std::string{DividendBoards::advances},
                          .cells = {{.text = ground.word("advances.title"),
                                     .second = countedIn(ground.locale, capitalWords(), "advances.open", open),
                                     .glyph = QStringLiteral("link-45deg")},
                                    std::move(amount)}});
    return table;
}

RecordCell unpaidCell(std::int64_t minor, bool isCancelled, const Ground& ground)
{
    if (isCancelled)
        return RecordText::dash();
    if (minor == 0)
        return {.text = ground.word("batch.settled"), .tone = RecordTone::quiet};
    auto cell = RecordText::bold(ground.amount(minor));
    cell.tone = RecordTone::due;
    return cell;
}

RecordRows linesOf(const DividendBatch& batch, const Ground& ground)
{
    RecordRows table{.columns = {{.head = ground.word("column.participant"), .room = ColumnRoom::stretches},
                                 {.head = ground.word("column.ratio"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = ground.word("figure.entitlement"), .isAtRight = true},
                                 {.head = ground.word("figure.applied"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = ground.word("figure.paid"), .isAtRight = true},
                                 {.head = ground.word("figure.payable"), .isAtRight = true}},
                     .rows = {}};
    int ratios = 0;
    DividendLineSummary sum;
    for (const auto& line : batch.lines) {
        const auto stands = ground.book.line(batch.id, line.participantID);
        ratios += line.ratioBps;
        sum += stands;
        table.rows.push_back({.id = line.participantID,
                              .cells = {{.text = qString(line.participantName)},
                                        RecordText::percentCell(line.ratioBps, ground.locale),
                                        ground.amount(line.amountMinor),
                                        ground.amount(stands.appliedMinor),
                                        ground.amount(stands.paidMinor),
                                        unpaidCell(stands.unpaidMinor, batch.cancelled, ground)}});
    }
    table.total = RecordRow{
        .id = "total",
        .cells = {RecordText::bold({.text = ground.word("total")}),
                  RecordText::bold(RecordText::percentCell(ratios, ground.locale)),
                  RecordText::bold(ground.amount(batch.amountMinor)), RecordText::bold(ground.amount(sum.appliedMinor)),
                  RecordText::bold(ground.amount(sum.paidMinor)),
                  RecordText::bold(batch.cancelled ? RecordText::dash() : ground.amount(sum.unpaidMinor))}};
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

/// What a set-off, a reversed one or a reversal has to say beside its title.
QString remarkOf(const DividendMovement& movement, const Ground& ground, const LinkedEntries& entries)
{
    const auto* original = MovementText::undone(movement, ground.state);
    const bool isApplication = (original ? original->kind : movement.kind) == Kind::application;
    if (isApplication)
        return ground.word(movement.reversedBy ? "remark.reversed" : "remark.noCash");
    const auto* account = movement.transactionID ? entries.account(*movement.transactionID) : nullptr;
    const auto* entry = movement.transactionID ? entries.find(*movement.transactionID) : nullptr;
    QStringList parts{account ? qString(account->name) : ground.word("account.unseen")};
    if (entry && !entry->note.empty())
        parts << qString(entry->note);
    if (movement.reversedBy)
        parts << ground.word("remark.reversed");
    return parts.join(QStringLiteral(" · "));
}

/// What a row has no room for: that set-offs move no money, and what became of reversed ones.
QString notesOn(const Movements& movements, const Ground& ground)
{
    QStringList notes;
    const auto any = [&](bool isReversed) {
        return std::ranges::any_of(movements, [&](const DividendMovement* each) {
            return each->kind == Kind::application && each->reversedBy.has_value() == isReversed;
        });
    };
    if (any(false))
        notes << ground.word("remark.offset");
    if (any(true))
        notes << ground.word("remark.reversedOffset");
    return notes.join(QLatin1Char{'\n'});
}

void presentMovements(DividendBoard& board, const Movements& movements, const Ground& ground)
{
    auto& table = board.movements;
    table = {.columns = {{.head = ground.word("column.day")},
                         {.head = ground.word("column.movement"), .room = ColumnRoom::stretches},
                         {.head = ground.word("column.amount"), .isAtRight = true}},
             .rows = {}};
    std::unordered_set<std::string_view> ids;
    for (const auto* each : movements) {
        if (each->transactionID)
            ids.insert(*each->transactionID);
    }
    const LinkedEntries entries{ground.snapshot, ids};
    for (const auto* each : movements) {
        auto title = MovementText::title(*each, ground.state, ground.locale);
        title.second = remarkOf(*each, ground, entries);
        table.rows.push_back({.id = each->id,
                              .cells = {RecordText::day(each->date, ground.locale), std::move(title),
                                        MovementText::amount(*each, ground.state, ground.locale)}});
    }
    board.notes = notesOn(movements, ground);
}

/// The movements that `settles` names, and the reversals of those, the latest first.
Movements movementsWhere(const Ground& ground, const std::function<bool(const DividendMovement&)>& settles)
{
    Movements found;
    for (const auto& each : ground.state.movements) {
        const auto* original = MovementText::undone(each, ground.state);
        if (settles(original ? *original : each))
            found.push_back(&each);
    }
    sortLatestFirst(found);
    return found;
}

std::int64_t advancesLeft(std::string_view participantID, const Ground& ground)
{
    std::int64_t left = 0;
    for (const auto* each : ground.book.effective()) {
        if (each->kind == Kind::advance && each->participantID == participantID)
            left += ground.book.advanceRemaining(each->id);
    }
    return left;
}

void presentBatch(DividendBoard& board, const DividendBatch& batch, const Ground& ground)
{
    board.title = qString(batch.period);
    board.subtitle = wordIn(
        ground.locale, capitalWords(), batch.cancelled ? "batch.headCancelled" : "batch.head",
        {ground.money(batch.amountMinor).toStdString(), DayText::longDay(batch.date, ground.locale).toStdString()});
    board.lines = linesOf(batch, ground);
    board.hint = ground.word("hint.cancel");
    const auto line = std::ranges::find(batch.lines, board.choice.participantID, &DividendLine::participantID);
    const auto& chosen = line == batch.lines.end() ? batch.lines.front() : *line;
    board.choice.participantID = chosen.participantID;
    board.person = qString(chosen.participantName);
    board.standing = wordIn(ground.locale, capitalWords(), "advances.left",
                            {ground.money(advancesLeft(chosen.participantID, ground)).toStdString()});
    if (!batch.cancelled)
        board.equation = equationOf(ground.book.line(batch.id, chosen.participantID), batch.currency, ground.locale);
    const auto settlesLine = [&](const DividendMovement& each) {
        return each.batchID == batch.id && each.participantID == chosen.participantID;
    };
    presentMovements(board, movementsWhere(ground, settlesLine), ground);
}

/// What became of an advance.
struct AdvanceStanding {
    std::int64_t applied = 0;
    std::int64_t returned = 0;
    std::int64_t remaining = 0;
};

AdvanceStanding standingOf(const DividendMovement& advance, const Ground& ground)
{
    AdvanceStanding standing{.remaining = ground.book.advanceRemaining(advance.id)};
    for (const auto* each : ground.book.effective()) {
        if (each->advanceID != advance.id)
            continue;
        (each->kind == Kind::application ? standing.applied : standing.returned) += each->amountMinor;
    }
    return standing;
}

RecordRow advanceRow(const DividendMovement& advance, const Ground& ground)
{
    const auto person = std::ranges::find(ground.state.participants, advance.participantID, &DividendParticipant::id);
    const auto standing = standingOf(advance, ground);
    RecordCell name{.text = person == ground.state.participants.end() ? QString{} : qString(person->name)};
    auto amount = ground.amount(advance.amountMinor);
    if (advance.reversedBy) {
        name = RecordText::struck(std::move(name));
        amount = RecordText::struck(std::move(amount));
    }
    return {.id = advance.id,
            .cells = {std::move(name), RecordText::day(advance.date, ground.locale), std::move(amount),
                      ground.amount(standing.applied), ground.amount(standing.returned),
                      RecordText::bold(ground.amount(standing.remaining))}};
}

void presentAdvances(DividendBoard& board, const Ground& ground)
{
    const auto all = advancesOf(ground);
    board.title = ground.word("advances.title");
    board.hint = ground.word("hint.offset");
    board.lines.columns = {{.head = ground.word("column.participant"), .room = ColumnRoom::stretches},
                           {.head = ground.word("column.day"), .room = ColumnRoom::mayGo},
                           {.head = ground.word("figure.advance"), .isAtRight = true},
                           {.head = ground.word("figure.applied"), .room = ColumnRoom::mayGo, .isAtRight = true},
                           {.head = ground.word("figure.returned"), .room = ColumnRoom::mayGo, .isAtRight = true},
                           {.head = ground.word("figure.remaining"), .isAtRight = true}};
    for (const auto* each : all)
        board.lines.rows.push_back(advanceRow(*each, ground));
    if (all.empty())
        return;
    const auto found = std::ranges::find(all, board.choice.advanceID, [](const auto* each) { return each->id; });
    const auto& advance = found == all.end() ? *all.front() : **found;
    board.choice.advanceID = advance.id;
    board.choice.participantID = advance.participantID;
    const auto person = std::ranges::find(ground.state.participants, advance.participantID, &DividendParticipant::id);
    board.person = person == ground.state.participants.end() ? QString{} : qString(person->name);
    board.standing = wordIn(ground.locale, capitalWords(), "advances.paidOn",
                            {DayText::longDay(advance.date, ground.locale).toStdString()});
    const auto standing = standingOf(advance, ground);
    if (!advance.reversedBy)
        board.equation = {figure("", "figure.advance", advance.amountMinor, advance.currency, ground.locale),
                          figure("=", "figure.applied", standing.applied, advance.currency, ground.locale),
                          figure("+", "figure.returned", standing.returned, advance.currency, ground.locale),
                          figure("+", "figure.remaining", standing.remaining, advance.currency, ground.locale)};
    const auto isAboutIt = [&](const DividendMovement& each) {
        return each.id == advance.id || each.advanceID == advance.id;
    };
    presentMovements(board, movementsWhere(ground, isAboutIt), ground);
}

}

std::optional<DividendBoard> DividendBoards::board(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                                   const DividendChoice& wanted, std::string_view locale)
{
    static const DividendState none;
    const auto& state = snapshot.dividends ? *snapshot.dividends : none;
    const auto book = DividendBook::create(state, question.currency, std::nullopt);
    if (!book)
        return std::nullopt;
    const Ground ground{snapshot, state, *book, question, locale};
    std::vector<const DividendBatch*> batches;
    for (const auto& batch : state.batches) {
        if (isShown(batch, ground))
            batches.push_back(&batch);
    }
    sortLatestFirst(batches);
    DividendBoard board{.choice = wanted};
    board.batches = batchesOf(batches, ground);
    const auto found = std::ranges::find(batches, wanted.batchID, [](const auto* each) { return each->id; });
    const bool showsAdvances = wanted.batchID == advances || batches.empty();
    board.choice.batchID = showsAdvances            ? std::string{advances}
                           : found == batches.end() ? batches.front()->id
                                                    : wanted.batchID;
    if (showsAdvances)
        presentAdvances(board, ground);
    else
        presentBatch(board, found == batches.end() ? *batches.front() : **found, ground);
    return board;
}

std::vector<RecordFigure> DividendBoards::equation(const LedgerSnapshot& snapshot, std::string_view batchID,
                                                   std::string_view participantID, std::string_view locale)
{
    if (!snapshot.dividends)
        return {};
    const auto& batches = snapshot.dividends->batches;
    const auto batch = std::ranges::find(batches, batchID, &DividendBatch::id);
    if (batch == batches.end())
        return {};
    const auto book = DividendBook::create(*snapshot.dividends, batch->currency, std::nullopt);
    return book ? equationOf(book->line(batchID, participantID), batch->currency, locale) : std::vector<RecordFigure>{};
}
