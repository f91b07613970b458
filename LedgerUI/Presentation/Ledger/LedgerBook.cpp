#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

#include <algorithm>
#include <future>
#include <mutex>
#include <ranges>
#include <tuple>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

namespace {

std::uint32_t dayNumberOf(std::string_view text)
{
    const auto day = LedgerDay::parse(text);
    return day ? dayNumber(*day) : 0;
}

/// A recorded entry never changes, but is reversed and gets receipts.
bool differsInLinksOnly(const LedgerTransaction& now, LedgerTransaction then)
{
    then.reversedBy = now.reversedBy;
    then.attachmentIDs = now.attachmentIDs;
    return then == now;
}

/// Whether every currency of these legs adds up to nothing.
bool balancesToZero(std::span<const LedgerBook::Leg> legs)
{
    return legs.size() > 1 && std::ranges::all_of(legs, [&](const auto& leg) {
               std::int64_t sum = 0;
               for (const auto& other : legs) {
                   if (other.currency == leg.currency && __builtin_add_overflow(sum, other.amountMinor, &sum))
                       return false;
               }
               return sum == 0;
           });
}

}

/// Several workers may ask for it at once.
struct LedgerBook::Reports {
    std::once_flag once;
    std::optional<ReportBook> book;
};

LedgerBook::LedgerBook(SnapshotPointer snapshot, std::string locale, const LedgerBook* before)
    : m_snapshot(std::move(snapshot)), m_names(*m_snapshot, std::move(locale)), m_reports(std::make_shared<Reports>())
{
    if (!before || !callsAllAs(*before) || !continueFrom(*before))
        build();
}

const ReportBook* LedgerBook::reports() const
{
    std::call_once(m_reports->once, [this] {
        if (auto made = ReportBook::create(*m_snapshot))
            m_reports->book.emplace(std::move(*made));
    });
    return m_reports->book ? &*m_reports->book : nullptr;
}

bool LedgerBook::callsAllAs(const LedgerBook& before) const
{
    const auto& now = *m_snapshot;
    const auto& then = *before.m_snapshot;
    const auto sameNames = [](const auto& left, const auto& right) {
        return left.id == right.id && left.name == right.name;
    };
    const auto allSame = [&](const auto& left, const auto& right) {
        return std::ranges::equal(left, right, sameNames);
    };
    const auto hasDestinations = now.transferDestinations.has_value();
    return locale() == before.locale() && sameNames(now.currentMember, then.currentMember) &&
           allSame(now.accounts, then.accounts) && allSame(now.members, then.members) &&
           now.categories == then.categories && hasDestinations == then.transferDestinations.has_value() &&
           (!hasDestinations || allSame(*now.transferDestinations, *then.transferDestinations));
}

std::optional<std::vector<std::uint32_t>> LedgerBook::relinkedSince(const LedgerBook& before) const
{
    const auto& now = m_snapshot->transactions;
    const auto& then = before.m_snapshot->transactions;
    if (now.size() < then.size())
        return std::nullopt;
    std::vector<std::uint32_t> relinked;
    for (std::uint32_t at = 0; at < then.size(); ++at) {
        if (at % EntryList::blockSize == 0 && now.sharesBlock(then, at / EntryList::blockSize)) {
            at += EntryList::blockSize - 1;
            continue;
        }
        if (now[at] == then[at])
            continue;
        if (!differsInLinksOnly(now[at], then[at]))
            return std::nullopt;
        relinked.push_back(at);
    }
    return relinked;
}

bool LedgerBook::continueFrom(const LedgerBook& before)
{
    const auto relinked = relinkedSince(before);
    if (!relinked)
        return false;
    m_facts = before.m_facts;
    m_texts = std::make_shared<const SearchTexts>(m_snapshot, locale(), before.m_texts);
    for (const auto at : *relinked)
        m_facts.entries[at].hasReceipts = !transaction(at).attachmentIDs.empty();
    finish(static_cast<std::uint32_t>(before.size()));
    return true;
}

void LedgerBook::build()
{
    m_facts.origin = std::make_shared<const int>();
    m_texts = std::make_shared<const SearchTexts>(m_snapshot, locale());
    finish(0);
}

/// Takes in the entries from `first` on.
void LedgerBook::finish(std::uint32_t first)
{
    const auto& transactions = m_snapshot->transactions;
    m_facts.entries.resize(transactions.size());
    // Where entries stand asks nothing of what they are called: many are taken in side by side.
    const auto isWorthAThread = transactions.size() - first > EntryList::blockSize;
    auto beside = std::async(isWorthAThread ? std::launch::async : std::launch::deferred,
                             [&] { m_facts.places.extend(transactions); });
    for (auto at = first; at < transactions.size(); ++at)
        add(transactions[at], m_facts.entries[at]);
    putInOrder(first);
    beside.get();
    // Originals may have come into sight.
    for (const auto at : std::exchange(m_facts.unlinked, {}))
        link(at);
    for (auto at = first; at < size(); ++at)
        link(at);
    std::ranges::sort(m_facts.refunds);
    const auto repeated = std::ranges::unique(m_facts.refunds); // of entries that have two originals
    m_facts.refunds.erase(repeated.begin(), repeated.end());
    std::vector<std::uint32_t> days;
    days.reserve(size());
    for (const auto at : std::views::reverse(m_facts.order))
        days.push_back(m_facts.entries[at].day);
    m_counts = PeriodCounts{std::move(days)};
}

/// Sorted by their days as numbers first: entries of a day mostly stand in the order of their recording already, and
/// only then are their times looked at.
std::vector<std::uint32_t> LedgerBook::inOrderFrom(std::uint32_t first) const
{
    std::vector<std::uint64_t> keys;
    keys.reserve(size() - first);
    for (auto at = first; at < size(); ++at)
        keys.push_back(std::uint64_t{m_facts.entries[at].day} << 32 | at);
    std::ranges::sort(keys, std::greater{});
    std::vector<std::uint32_t> order;
    order.reserve(keys.size());
    for (const auto key : keys)
        order.push_back(static_cast<std::uint32_t>(key));
    const auto comesFirst = [this](auto left, auto right) { return comesBefore(left, right); };
    for (auto day = order.begin(); day != order.end();) {
        const auto end = std::find_if(day, order.end(),
                                      [&](auto at) { return m_facts.entries[at].day != m_facts.entries[*day].day; });
        if (!std::is_sorted(day, end, comesFirst))
            std::sort(day, end, comesFirst);
        day = end;
    }
    return order;
}

/// Puts the entries from `first` on among those that stand in their order.
void LedgerBook::putInOrder(std::uint32_t first)
{
    const auto comesFirst = [this](auto left, auto right) { return comesBefore(left, right); };
    auto fresh = inOrderFrom(first);
    const auto standing = std::exchange(m_facts.order, {});
    m_facts.order.reserve(size());
    auto next = standing.begin();
    for (const auto at : fresh) {
        const auto place = std::lower_bound(next, standing.end(), at, comesFirst);
        m_facts.order.insert(m_facts.order.end(), next, place);
        m_facts.order.push_back(at);
        next = place;
    }
    m_facts.order.insert(m_facts.order.end(), next, standing.end());
}

void LedgerBook::add(const LedgerTransaction& transaction, Entry& entry)
{
    entry.day = dayNumberOf(transaction.date);
    entry.kind = m_facts.kinds.number(displayKind(transaction), [] { return LedgerKeys::Names{}; });
    if (transaction.categoryID)
        entry.category = categoryNumber(*transaction.categoryID);
    entry.title = titleNumber(transaction, entry);
    entry.member = m_facts.members.number(transaction.memberID,
                                          [&] { return LedgerKeys::named(m_names.member(transaction.memberID)); });
    entry.isReversal = transaction.reversalOf.has_value();
    entry.hasReceipts = !transaction.attachmentIDs.empty();
    addLegs(transaction, entry);
}

/// Learns what an entry's original tells about it.
void LedgerBook::link(std::uint32_t at)
{
    const auto& entry = transaction(at);
    m_facts.entries[at].isInternal = movesInside(at);
    const auto income = entry.originalTransactionID ? find(*entry.originalTransactionID) : none;
    if (income != none)
        m_facts.refunds.push_back({.income = income, .refund = at});
    const bool isRefundAlone = entry.originalTransactionID && income == none;
    const bool isReversalAlone = entry.reversalOf && find(*entry.reversalOf) == none;
    if (isRefundAlone || isReversalAlone)
        m_facts.unlinked.push_back(at);
}

/// Newest day first, inside a day the last recorded first.
bool LedgerBook::comesBefore(std::uint32_t left, std::uint32_t right) const
{
    return std::tie(m_facts.entries[right].day, transaction(right).createdAt, left) <
           std::tie(m_facts.entries[left].day, transaction(left).createdAt, right);
}

void LedgerBook::addLegs(const LedgerTransaction& transaction, Entry& entry)
{
    entry.firstLeg = static_cast<std::uint32_t>(m_facts.legs.size());
    entry.legCount = static_cast<std::uint32_t>(transaction.legs.size());
    for (const auto& leg : transaction.legs) {
        const auto account =
            m_facts.accounts.number(leg.accountID, [&] { return LedgerKeys::named(m_names.account(leg.accountID)); });
        const auto currency = m_facts.currencies.number(leg.currency, [&] { return LedgerKeys::named(leg.currency); });
        m_facts.legs.push_back({account, currency, leg.amountMinor});
    }
}

/// Most entries are called after their category, whose name is put together once.
std::uint32_t LedgerBook::titleNumber(const LedgerTransaction& transaction, const Entry& entry)
{
    const auto numbered = [&] {
        const auto title = m_names.title(transaction);
        return m_facts.titles.number(title, [&] { return LedgerKeys::named(title); });
    };
    if (entry.category == none || transaction.kind == EntryKind::reversal)
        return numbered();
    auto& known = m_facts.titlesOfCategories;
    known.resize(m_facts.categories.size(), none);
    if (known[entry.category] == none)
        known[entry.category] = numbered();
    return known[entry.category];
}

/// A category is found by its names in every language, and by those of its parent.
std::uint32_t LedgerBook::categoryNumber(const std::string& id)
{
    return m_facts.categories.number(id, [&] {
        LedgerKeys::Names names{.shown = m_names.category(id), .folded = {}};
        const auto* category = m_names.categories().find(id);
        for (const auto* each = category; each;
             each = each == category ? m_names.categories().parent(*each) : nullptr) {
            for (const auto& [tag, name] : each->names)
                names.folded += TextFold::folded(name) + '\n';
        }
        return names;
    });
}

/// A reversal of a transfer moves money inside the company too, even where only one of its legs is visible.
bool LedgerBook::movesInside(std::uint32_t at) const
{
    const auto& moved = transaction(at);
    const auto original = moved.reversalOf ? find(*moved.reversalOf) : none;
    return moved.kind == EntryKind::transfer || balancesToZero(legs(at)) ||
           (original != none && transaction(original).kind == EntryKind::transfer);
}

std::span<const LedgerBook::Leg> LedgerBook::legs(std::uint32_t at) const
{
    return std::span{m_facts.legs}.subspan(m_facts.entries[at].firstLeg, m_facts.entries[at].legCount);
}

std::uint32_t LedgerBook::find(std::string_view id) const
{
    return m_facts.places.find(m_snapshot->transactions, id);
}

std::vector<std::uint32_t> LedgerBook::refundsOf(std::string_view id) const
{
    std::vector<std::uint32_t> refunds;
    for (const auto& each : std::ranges::equal_range(m_facts.refunds, find(id), {}, &Refund::income))
        refunds.push_back(each.refund);
    return refunds;
}
