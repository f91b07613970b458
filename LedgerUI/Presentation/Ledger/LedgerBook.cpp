#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <ranges>
#include <tuple>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

namespace {

std::uint32_t dayNumberOf(std::string_view text)
{
    const auto day = LedgerDay::parse(text);
    return day ? dayNumber(*day) : 0;
}

/// The amount as it is read, without its sign, and as bare digits.
void appendAmount(std::string& text, const LedgerLeg& leg, std::string_view locale)
{
    const auto formatted = Money::formatDigits(leg.amountMinor, leg.currency, locale);
    std::string_view digits = formatted;
    if (leg.amountMinor < 0)
        digits.remove_prefix(std::string_view{"−"}.size());
    text += digits;
    text += ' ';
    for (const char each : Money::decimalString(leg.amountMinor, leg.currency)) {
        if (each >= '0' && each <= '9')
            text += each;
    }
    text += '\n';
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

LedgerBook::LedgerBook(SnapshotPointer snapshot, std::string locale, const LedgerBook* before)
    : m_snapshot(std::move(snapshot)), m_names(*m_snapshot, std::move(locale))
{
    if (before && callsAllAs(*before) && continueFrom(*before))
        return;
    clear();
    build();
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

void LedgerBook::build()
{
    const auto& transactions = m_snapshot->transactions;
    m_entries.reserve(transactions.size());
    m_byID.reserve(transactions.size());
    for (const auto& transaction : transactions)
        add(transaction);
    for (std::uint32_t at = 0; at < m_entries.size(); ++at)
        m_entries[at].isInternal = movesInside(at);
    m_order.resize(transactions.size());
    std::iota(m_order.begin(), m_order.end(), 0U);
    std::ranges::sort(m_order, [this](auto left, auto right) { return comesBefore(left, right); });
    finish();
}

bool LedgerBook::continueFrom(const LedgerBook& before)
{
    m_kinds = before.m_kinds;
    m_titles = before.m_titles;
    m_categories = before.m_categories;
    m_accounts = before.m_accounts;
    m_members = before.m_members;
    m_currencies = before.m_currencies;
    auto carried = carryOver(before);
    if (!carried)
        return false;
    // What a reversal moves is told by its original too, which may have come into sight.
    for (std::uint32_t at = 0; at < m_entries.size(); ++at) {
        if (m_entries[at].isReversal)
            m_entries[at].isInternal = movesInside(at);
    }
    for (const auto at : carried->changed)
        m_entries[at].isInternal = movesInside(at);

    const auto first = [this](auto left, auto right) { return comesBefore(left, right); };
    std::vector<std::uint32_t> staying;
    staying.reserve(before.size());
    for (const auto was : before.m_order)
        staying.push_back(carried->now[was]);
    std::ranges::sort(carried->fresh, first);
    m_order.reserve(size());
    std::ranges::merge(staying, carried->fresh, std::back_inserter(m_order), first);
    finish();
    return true;
}

std::optional<LedgerBook::Carried> LedgerBook::carryOver(const LedgerBook& before)
{
    const auto& transactions = m_snapshot->transactions;
    m_entries.reserve(transactions.size());
    m_legs.reserve(before.m_legs.size());
    m_text.reserve(before.m_text.size());
    m_byID.reserve(transactions.size());
    Carried carried{.now = std::vector<std::uint32_t>(before.size(), none), .fresh = {}, .changed = {}};
    std::uint32_t shift = 0; // how far entries stand from where they stood; backward past zero
    std::uint32_t next = 0;  // the first one of before that may follow
    std::size_t known = 0;
    for (std::uint32_t at = 0; at < transactions.size(); ++at) {
        const auto& transaction = transactions[at];
        auto was = at + shift;
        if (was >= before.size() || before.transaction(was).id != transaction.id) {
            was = before.find(transaction.id);
            if (was != none)
                shift = was - at;
        }
        if (was != none && before.transaction(was) == transaction) {
            addAs(before, was);
        } else {
            add(transaction);
            carried.changed.push_back(at);
        }
        if (was == none) {
            carried.fresh.push_back(at);
            continue;
        }
        if (was < next || !isAskedAlike(at, before, was))
            return std::nullopt;
        next = was + 1;
        carried.now[was] = at;
        ++known;
    }
    return known == before.size() ? std::optional{std::move(carried)} : std::nullopt;
}

void LedgerBook::clear()
{
    m_entries.clear();
    m_legs.clear();
    m_text.clear();
    m_order.clear();
    m_byID.clear();
    m_refunds.clear();
    for (auto* keys : {&m_kinds, &m_titles, &m_categories, &m_accounts, &m_members, &m_currencies})
        *keys = {};
}

void LedgerBook::index(const LedgerTransaction& transaction)
{
    const auto at = static_cast<std::uint32_t>(m_entries.size());
    m_byID.emplace(transaction.id, at);
    if (transaction.originalTransactionID)
        m_refunds[*transaction.originalTransactionID].push_back(at);
}

void LedgerBook::add(const LedgerTransaction& transaction)
{
    index(transaction);
    Entry entry;
    entry.day = dayNumberOf(transaction.date);
    entry.kind = m_kinds.number(displayKind(transaction), [] { return LedgerKeys::Names{}; });
    const auto title = m_names.title(transaction);
    entry.title = m_titles.number(title, [&] { return LedgerKeys::named(title); });
    if (transaction.categoryID)
        entry.category = categoryNumber(*transaction.categoryID);
    entry.member =
        m_members.number(transaction.memberID, [&] { return LedgerKeys::named(m_names.member(transaction.memberID)); });
    entry.isReversal = transaction.reversalOf.has_value();
    entry.hasReceipts = !transaction.attachmentIDs.empty();
    addLegs(transaction, entry);
    addText(transaction, entry);
    m_entries.push_back(entry);
}

/// The entry stood at `at` in the book before and has not changed.
void LedgerBook::addAs(const LedgerBook& before, std::uint32_t at)
{
    index(m_snapshot->transactions[m_entries.size()]); // its own texts, which live as long as this book
    auto entry = before.entry(at);
    const auto legs = before.legs(at);
    const auto text = before.text(at);
    entry.firstLeg = static_cast<std::uint32_t>(m_legs.size());
    entry.textBegin = static_cast<std::uint32_t>(m_text.size());
    m_legs.insert(m_legs.end(), legs.begin(), legs.end());
    m_text += text;
    entry.textEnd = static_cast<std::uint32_t>(m_text.size());
    m_entries.push_back(entry);
}

/// Whether the keys of a changed entry are those that it had, so that none of them is left without an entry.
bool LedgerBook::isAskedAlike(std::uint32_t at, const LedgerBook& before, std::uint32_t beforeAt) const
{
    const auto& now = m_entries[at];
    const auto& then = before.entry(beforeAt);
    const auto keysOf = [](const Entry& entry) {
        return std::tie(entry.day, entry.kind, entry.title, entry.category, entry.member);
    };
    const auto placeOf = [](const Leg& leg) { return std::pair{leg.account, leg.currency}; };
    return keysOf(now) == keysOf(then) && transaction(at).createdAt == before.transaction(beforeAt).createdAt &&
           std::ranges::equal(legs(at), before.legs(beforeAt), {}, placeOf, placeOf);
}

/// Newest day first, inside a day the last recorded first.
bool LedgerBook::comesBefore(std::uint32_t left, std::uint32_t right) const
{
    return std::tie(m_entries[right].day, transaction(right).createdAt, left) <
           std::tie(m_entries[left].day, transaction(left).createdAt, right);
}

/// What is told by the order of the entries.
void LedgerBook::finish()
{
    std::vector<std::uint32_t> days;
    days.reserve(m_order.size());
    for (const auto at : std::views::reverse(m_order))
        days.push_back(m_entries[at].day);
    m_counts = PeriodCounts{std::move(days)};
}

void LedgerBook::addLegs(const LedgerTransaction& transaction, Entry& entry)
{
    entry.firstLeg = static_cast<std::uint32_t>(m_legs.size());
    entry.legCount = static_cast<std::uint32_t>(transaction.legs.size());
    for (const auto& leg : transaction.legs) {
        const auto account =
            m_accounts.number(leg.accountID, [&] { return LedgerKeys::named(m_names.account(leg.accountID)); });
        const auto currency = m_currencies.number(leg.currency, [&] { return LedgerKeys::named(leg.currency); });
        m_legs.push_back({account, currency, leg.amountMinor});
    }
}

void LedgerBook::addText(const LedgerTransaction& transaction, Entry& entry)
{
    entry.textBegin = static_cast<std::uint32_t>(m_text.size());
    m_text += TextFold::folded(transaction.note);
    m_text += '\n';
    for (const auto* optional : {&transaction.externalReference, &transaction.participantName}) {
        if (*optional) {
            m_text += TextFold::folded(**optional);
            m_text += '\n';
        }
    }
    for (const auto& leg : transaction.legs)
        appendAmount(m_text, leg, locale());
    entry.textEnd = static_cast<std::uint32_t>(m_text.size());
}

/// A category is found by its names in every language, and by those of its parent.
std::uint32_t LedgerBook::categoryNumber(const std::string& id)
{
    return m_categories.number(id, [&] {
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
    return std::span{m_legs}.subspan(m_entries[at].firstLeg, m_entries[at].legCount);
}

std::string_view LedgerBook::text(std::uint32_t at) const
{
    const auto& entry = m_entries[at];
    return std::string_view{m_text}.substr(entry.textBegin, entry.textEnd - entry.textBegin);
}

std::uint32_t LedgerBook::find(std::string_view id) const
{
    const auto found = m_byID.find(id);
    return found == m_byID.end() ? none : found->second;
}

std::span<const std::uint32_t> LedgerBook::refundsOf(std::string_view id) const
{
    const auto found = m_refunds.find(id);
    return found == m_refunds.end() ? std::span<const std::uint32_t>{} : std::span{found->second};
}
