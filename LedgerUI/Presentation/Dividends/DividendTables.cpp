#include "LedgerUI/Presentation/Dividends/DividendTables.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerUI/Presentation/Dividends/MovementText.h"
#include "LedgerUI/Presentation/Records/LinkedEntries.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

namespace Kind = DividendMovementKind;

DividendLineSummary& operator+=(DividendLineSummary& sum, const DividendLineSummary& line)
{
    // Sums of a whole batch stay within its total.
    sum.entitlementMinor += line.entitlementMinor;
    sum.appliedMinor += line.appliedMinor;
    sum.paidMinor += line.paidMinor;
    sum.unpaidMinor += line.unpaidMinor;
    return sum;
}

/// What a set-off, a reversed one or a reversal has to say beside its title.
QString remarkOf(const DividendMovement& movement, const DividendTables& tables, const LinkedEntries& entries)
{
    if (tables.original(movement).kind == Kind::application)
        return tables.word(tables.isUndone(movement) ? "remark.reversed" : "remark.noCash");
    const auto* account = movement.transactionID ? entries.account(*movement.transactionID) : nullptr;
    const auto* entry = movement.transactionID ? entries.find(*movement.transactionID) : nullptr;
    QStringList parts{account ? qString(account->name) : tables.word("account.unseen")};
    if (entry && !entry->note.empty())
        parts << qString(entry->note);
    if (tables.isUndone(movement))
        parts << tables.word("remark.reversed");
    return parts.join(QStringLiteral(" · "));
}

}

DividendTables::DividendTables(const LedgerSnapshot& snapshot, const DividendState& state, DividendBook book,
                               std::string_view currency, std::optional<std::string_view> throughDay,
                               std::string_view locale)
    : m_snapshot{snapshot}, m_state{state}, m_book{std::move(book)}, m_currency{currency}, m_throughDay{throughDay},
      m_locale{locale}
{
    for (const auto* each : m_book.batches())
        m_batches.insert(each->id);
    for (const auto& each : m_state.movements)
        m_movements.emplace(each.id, &each);
    for (const auto* each : m_book.effective()) {
        if (each->kind == Kind::advance)
            m_advances[each->id].remaining = m_book.advanceRemaining(each->id);
        else if (each->advanceID && each->kind == Kind::application)
            m_advances[*each->advanceID].applied += each->amountMinor; // within the advance, as the book has checked
        else if (each->advanceID)
            m_advances[*each->advanceID].returned += each->amountMinor;
    }
}

std::optional<DividendTables> DividendTables::create(const LedgerSnapshot& snapshot, std::string_view currency,
                                                     std::optional<std::string_view> throughDay,
                                                     std::string_view locale)
{
    static const DividendState none;
    const auto& state = snapshot.dividends ? *snapshot.dividends : none;
    auto book = DividendBook::create(state, currency, throughDay);
    if (!book)
        return std::nullopt;
    return DividendTables{snapshot, state, *std::move(book), currency, throughDay, locale};
}

QString DividendTables::word(std::string_view key) const
{
    return wordIn(m_locale, capitalWords(), key);
}

QString DividendTables::money(std::int64_t minor) const
{
    return balanceText(minor, m_currency, m_locale).text();
}

RecordCell DividendTables::amount(std::int64_t minor) const
{
    return RecordText::amount(minor, m_currency, m_locale);
}

QString DividendTables::nameOf(std::string_view participantID) const
{
    const auto person = std::ranges::find(m_state.participants, participantID, &DividendParticipant::id);
    return person == m_state.participants.end() ? QString{} : qString(person->name);
}

bool DividendTables::isUndone(const DividendMovement& movement) const
{
    const auto reversal = movement.reversedBy ? m_movements.find(*movement.reversedBy) : m_movements.end();
    return reversal != m_movements.end() && (!m_throughDay || reversal->second->date <= *m_throughDay);
}

const DividendMovement* DividendTables::undone(const DividendMovement& movement) const
{
    const auto found = movement.reversalOf ? m_movements.find(*movement.reversalOf) : m_movements.end();
    return found == m_movements.end() ? nullptr : found->second;
}

const DividendMovement& DividendTables::original(const DividendMovement& movement) const
{
    const auto* found = undone(movement);
    return found ? *found : movement;
}

DividendLineSummary DividendTables::sumOf(const DividendBatch& batch) const
{
    DividendLineSummary sum;
    for (const auto& line : batch.lines)
        sum += m_book.line(batch.id, line.participantID);
    return sum;
}

QString DividendTables::standingOf(const DividendBatch& batch) const
{
    if (isCancelled(batch))
        return word("batch.cancelled");
    const auto sum = sumOf(batch);
    if (sum.unpaidMinor == 0)
        return word("batch.settled");
    // Whole percents, rounded down: what is not settled never reads as a hundred.
    const auto settled = (sum.entitlementMinor - sum.unpaidMinor) * 100 / sum.entitlementMinor;
    return wordIn(m_locale, capitalWords(), "batch.settledShare", {std::to_string(settled)});
}

AdvanceStanding DividendTables::standingOf(const DividendMovement& advance) const
{
    const auto found = m_advances.find(advance.id);
    return found == m_advances.end() ? AdvanceStanding{} : found->second;
}

RecordCell DividendTables::unpaidCell(std::int64_t minor, bool isCancelled) const
{
    if (isCancelled)
        return RecordText::dash();
    if (minor == 0)
        return {.text = word("batch.settled"), .tone = RecordTone::quiet};
    auto cell = RecordText::bold(amount(minor));
    cell.tone = RecordTone::due;
    return cell;
}

RecordRows DividendTables::lines(const DividendBatch& batch) const
{
    RecordRows table{.columns = {{.head = word("column.participant"), .room = ColumnRoom::stretches},
                                 {.head = word("column.ratio"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = word("figure.entitlement"), .isAtRight = true},
                                 {.head = word("figure.applied"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = word("figure.paid"), .isAtRight = true},
                                 {.head = word("figure.payable"), .isAtRight = true}},
                     .rows = {}};
    int ratios = 0;
    DividendLineSummary sum;
    for (const auto& line : batch.lines) {
        const auto stands = m_book.line(batch.id, line.participantID);
        ratios += line.ratioBps;
        sum += stands;
        table.rows.push_back({.id = line.participantID,
                              .cells = {{.text = qString(line.participantName)},
                                        RecordText::percentCell(line.ratioBps, m_locale),
                                        amount(line.amountMinor),
                                        amount(stands.appliedMinor),
                                        amount(stands.paidMinor),
                                        unpaidCell(stands.unpaidMinor, isCancelled(batch))}});
    }
    table.total =
        RecordRow{.id = "total",
                  .cells = {RecordText::bold({.text = word("total")}),
                            RecordText::bold(RecordText::percentCell(ratios, m_locale)),
                            RecordText::bold(amount(batch.amountMinor)), RecordText::bold(amount(sum.appliedMinor)),
                            RecordText::bold(amount(sum.paidMinor)),
                            RecordText::bold(isCancelled(batch) ? RecordText::dash() : amount(sum.unpaidMinor))}};
    return table;
}

RecordRow DividendTables::advanceRow(const DividendMovement& advance) const
{
    const auto standing = standingOf(advance);
    RecordCell name{.text = nameOf(advance.participantID)};
    auto paid = amount(advance.amountMinor);
    if (isUndone(advance)) {
        name.second = word("remark.reversed");
        name = RecordText::struck(std::move(name));
        paid = RecordText::struck(std::move(paid));
    }
    return {.id = advance.id,
            .cells = {std::move(name), RecordText::day(advance.date, m_locale), std::move(paid),
                      amount(standing.applied), amount(standing.returned),
                      RecordText::bold(amount(standing.remaining))}};
}

RecordRows DividendTables::advances(const Movements& movements) const
{
    RecordRows table{.columns = {{.head = word("column.participant"), .room = ColumnRoom::stretches},
                                 {.head = word("column.day"), .room = ColumnRoom::mayGo},
                                 {.head = word("figure.advance"), .isAtRight = true},
                                 {.head = word("figure.applied"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = word("figure.returned"), .room = ColumnRoom::mayGo, .isAtRight = true},
                                 {.head = word("figure.remaining"), .isAtRight = true}},
                     .rows = {}};
    for (const auto* each : movements)
        table.rows.push_back(advanceRow(*each));
    return table;
}

RecordRows DividendTables::movements(const Movements& movements) const
{
    RecordRows table{.columns = {{.head = word("column.day")},
                                 {.head = word("column.movement"), .room = ColumnRoom::stretches},
                                 {.head = word("column.amount"), .isAtRight = true}},
                     .rows = {}};
    std::unordered_set<std::string_view> ids;
    for (const auto* each : movements) {
        if (each->transactionID)
            ids.insert(*each->transactionID);
    }
    const LinkedEntries entries{m_snapshot, ids};
    for (const auto* each : movements) {
        auto title = MovementText::title(*each, undone(*each), m_locale);
        title.second = remarkOf(*each, *this, entries);
        table.rows.push_back({.id = each->id,
                              .cells = {RecordText::day(each->date, m_locale), std::move(title),
                                        MovementText::amount(*each, undone(*each), m_locale)},
                              .entry = entries.reached(each->transactionID.value_or(""))});
    }
    return table;
}

QString DividendTables::notesOn(const Movements& movements) const
{
    QStringList notes;
    const auto any = [&](bool isReversed) {
        return std::ranges::any_of(movements, [&](const DividendMovement* each) {
            return each->kind == Kind::application && isUndone(*each) == isReversed;
        });
    };
    if (any(false))
        notes << word("remark.offset");
    if (any(true))
        notes << word("remark.reversedOffset");
    return notes.join(QLatin1Char{'\n'});
}
