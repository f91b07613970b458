#include "LedgerUI/Presentation/Entry/BatchReversal.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Stage = BatchReversal::Item::Stage;

PlainCell stateCell(const BatchReversal::Item& item, std::string_view locale)
{
    const auto said = [&](std::string_view key) { return wordIn(locale, entryFormWords(), key); };
    switch (item.stage) {
    case Stage::excluded:
        return {.text = item.note, .look = PlainCell::Look::quiet};
    case Stage::waiting:
        return {.text = item.note.isEmpty() ? said("batch.waiting") : item.note, .look = PlainCell::Look::quiet};
    case Stage::sending:
        return {.text = said("batch.sending"), .look = PlainCell::Look::quiet};
    case Stage::done:
        return {.text = said("batch.done"), .look = PlainCell::Look::chip};
    case Stage::refused:
        return {.text = item.note, .look = PlainCell::Look::warning};
    case Stage::unknown:
        return {.text = said("batch.unknown"), .look = PlainCell::Look::warning};
    }
    return {};
}

QString titleOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    QStringList parts{DayText::shortDate(entry.date, locale)};
    const auto path = EntryCategories::path(snapshot, entry.categoryID.value_or(std::string{}), locale);
    parts << (path.isEmpty() ? wordIn(locale, ledgerWords(), "kind." + entry.transferPurpose.value_or(entry.kind))
                             : path);
    return listed(parts, locale);
}

}

BatchReversal BatchReversal::of(const std::vector<std::string>& ids, const VisibleBooks& books,
                                const std::function<bool(const std::string& id)>& isKept, std::string_view locale)
{
    BatchReversal batch;
    for (const auto& id : ids) {
        const auto* entry = books.entry(id);
        const auto refusal = entry ? ReversalRules::whyNot(*entry, books) : ReversalRules::Refusal::notFound;
        auto& item = batch.m_items.emplace_back(Item{.id = id});
        if (entry)
            item.entry = *entry;
        const bool isSent = !refusal && !isKept(id);
        if (!isSent)
            item.stage = Stage::excluded;
        ++batch.m_counts[static_cast<std::size_t>(item.stage)];
        if (isSent)
            continue;
        item.note = refusal ? qString(ReversalRules::text(*refusal, locale))
                            : wordIn(locale, entryFormWords(), "batch.earlier");
    }
    return batch;
}

std::size_t BatchReversal::left() const
{
    return count(Stage::waiting) + count(Stage::sending) + count(Stage::unknown);
}

void BatchReversal::move(std::size_t at, Stage stage)
{
    auto& item = m_items[at];
    --m_counts[static_cast<std::size_t>(item.stage)];
    ++m_counts[static_cast<std::size_t>(stage)];
    item.stage = stage;
}

BatchReversal::Item& BatchReversal::settle(Stage stage)
{
    const auto at = promised(std::exchange(m_sending, std::nullopt), "a reply belongs to a reversal on its way");
    move(at, stage);
    if (stage == Stage::unknown)
        m_unknown = at;
    else if (stage == Stage::waiting)
        m_next = std::min(m_next, at);
    return m_items[at];
}

std::optional<std::string> BatchReversal::begin()
{
    if (m_sending)
        return std::nullopt;
    while (m_next < m_items.size() && m_items[m_next].stage != Stage::waiting)
        ++m_next;
    const auto at = m_unknown.value_or(m_next);
    if (at == m_items.size())
        return std::nullopt;
    m_items[at].mayBePosted = m_unknown.has_value();
    m_items[at].note.clear();
    m_unknown.reset();
    m_sending = at;
    move(at, Stage::sending);
    return m_items[at].id;
}

void BatchReversal::succeed()
{
    settle(Stage::done);
}

bool BatchReversal::fail(const Failure& failure, QString message)
{
    const bool mayBePosted = m_items[promised(m_sending, "a reply belongs to a reversal on its way")].mayBePosted;
    switch (fateOf(failure)) {
    case CommandFate::refused:
        settle(Stage::refused).note = std::move(message);
        return true;
    case CommandFate::unknown:
        settle(Stage::unknown);
        return false;
    case CommandFate::undecided:
        break;
    }
    settle(mayBePosted ? Stage::unknown : Stage::waiting).note = std::move(message);
    return false;
}

std::vector<PlainColumn> BatchReversal::columns(std::string_view locale)
{
    return {{.head = wordIn(locale, ledgerWords(), "column.entry")},
            {.head = wordIn(locale, ledgerWords(), "column.amount"), .align = PlainColumn::Align::right},
            {.head = wordIn(locale, entryFormWords(), "batch.state")}};
}

PlainRow BatchReversal::row(std::size_t at, const LedgerSnapshot& snapshot, std::string_view locale) const
{
    const auto& item = m_items[at];
    PlainRow row{.id = item.id, .cells = {{.text = qString(item.id)}, {}, stateCell(item, locale)}};
    if (item.entry)
        row.cells[0].text = titleOf(*item.entry, snapshot, locale);
    if (item.entry && !item.entry->legs.empty()) {
        const auto& leg = item.entry->legs.front();
        const auto money = movementText(leg.amountMinor, leg.currency, locale);
        row.cells[1] = {.text = money.text(), .spoken = money.spoken};
    }
    return row;
}

std::vector<PlainRow> BatchReversal::rows(std::size_t part, const LedgerSnapshot& snapshot,
                                          std::string_view locale) const
{
    std::vector<PlainRow> rows;
    const auto end = std::min(m_items.size(), (part + 1) * partSize);
    for (std::size_t at = part * partSize; at < end; ++at)
        rows.push_back(row(at, snapshot, locale));
    return rows;
}

std::vector<PlainRow> BatchReversal::openRows(const LedgerSnapshot& snapshot, std::string_view locale) const
{
    std::vector<PlainRow> rows;
    for (const bool isSent : {true, false}) {
        for (std::size_t at = 0; at < m_items.size() && rows.size() < partSize; ++at) {
            const auto stage = m_items[at].stage;
            if (stage != Stage::done && (stage != Stage::excluded) == isSent)
                rows.push_back(row(at, snapshot, locale));
        }
    }
    return rows;
}
