#include "LedgerUI/Presentation/Entry/BatchReversal.h"

#include <algorithm>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/ReversalRules.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/ListedText.h"
#include "LedgerUI/Presentation/Text/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"

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
        if (!refusal && !isKept(id))
            continue;
        item.stage = Stage::excluded;
        item.note = refusal ? qString(ReversalRules::text(*refusal, locale))
                            : wordIn(locale, entryFormWords(), "batch.earlier");
    }
    return batch;
}

std::size_t BatchReversal::count(Stage stage) const
{
    return static_cast<std::size_t>(std::ranges::count(m_items, stage, &Item::stage));
}

std::size_t BatchReversal::left() const
{
    return count(Stage::waiting) + count(Stage::sending) + count(Stage::unknown);
}

BatchReversal::Item* BatchReversal::sending()
{
    const auto at = sendingAt();
    return at ? &m_items[*at] : nullptr;
}

std::optional<std::size_t> BatchReversal::sendingAt() const
{
    const auto found = std::ranges::find(m_items, Stage::sending, &Item::stage);
    return found == m_items.end() ? std::nullopt : std::optional{static_cast<std::size_t>(found - m_items.begin())};
}

std::optional<std::string> BatchReversal::begin()
{
    if (sending())
        return std::nullopt;
    auto next = std::ranges::find(m_items, Stage::unknown, &Item::stage);
    if (next == m_items.end())
        next = std::ranges::find(m_items, Stage::waiting, &Item::stage);
    if (next == m_items.end())
        return std::nullopt;
    next->mayBePosted = next->stage == Stage::unknown;
    next->stage = Stage::sending;
    next->note.clear();
    return next->id;
}

void BatchReversal::succeed()
{
    auto* item = sending();
    require(item != nullptr, "a reply belongs to a reversal that is on its way");
    item->stage = Stage::done;
}

bool BatchReversal::fail(const Failure& failure, QString message)
{
    auto* item = sending();
    require(item != nullptr, "a reply belongs to a reversal that is on its way");
    switch (fateOf(failure)) {
    case CommandFate::refused:
        item->stage = Stage::refused;
        item->note = std::move(message);
        return true;
    case CommandFate::unknown:
        item->stage = Stage::unknown;
        return false;
    case CommandFate::undecided:
        break;
    }
    item->stage = item->mayBePosted ? Stage::unknown : Stage::waiting;
    item->note = std::move(message);
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

std::vector<PlainRow> BatchReversal::rows(const LedgerSnapshot& snapshot, std::string_view locale) const
{
    std::vector<PlainRow> rows;
    rows.reserve(m_items.size());
    for (std::size_t at = 0; at < m_items.size(); ++at)
        rows.push_back(row(at, snapshot, locale));
    return rows;
}
