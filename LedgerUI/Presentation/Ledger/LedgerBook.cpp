#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

#include <algorithm>
#include <numeric>
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

LedgerBook::LedgerBook(SnapshotPointer snapshot, std::string locale)
    : m_snapshot(std::move(snapshot)), m_names(*m_snapshot, std::move(locale))
{
    const auto& transactions = m_snapshot->transactions;
    m_entries.reserve(transactions.size());
    m_byID.reserve(transactions.size());
    for (const auto& transaction : transactions)
        add(transaction);
    markInternal();
    countDays();

    m_order.resize(transactions.size());
    std::iota(m_order.begin(), m_order.end(), 0U);
    std::ranges::sort(m_order, [&](std::uint32_t left, std::uint32_t right) {
        return std::tie(m_entries[right].day, transactions[right].createdAt, left) <
               std::tie(m_entries[left].day, transactions[left].createdAt, right);
    });
}

void LedgerBook::add(const LedgerTransaction& transaction)
{
    const auto at = static_cast<std::uint32_t>(m_entries.size());
    m_byID.emplace(transaction.id, at);
    if (transaction.originalTransactionID)
        m_refunds[*transaction.originalTransactionID].push_back(at);

    Entry entry;
    entry.day = dayNumberOf(transaction.date);
    entry.kind = m_kinds.number(displayKind(transaction), [] { return std::string{}; });
    const auto title = m_names.title(transaction);
    entry.title = m_titles.number(title, [&] { return TextFold::folded(title); });
    if (transaction.categoryID)
        entry.category = categoryNumber(*transaction.categoryID);
    entry.member =
        m_members.number(transaction.memberID, [&] { return TextFold::folded(m_names.member(transaction.memberID)); });
    entry.isReversal = transaction.reversalOf.has_value();
    entry.hasReceipts = !transaction.attachmentIDs.empty();
    addLegs(transaction, entry);
    addText(transaction, entry);
    m_entries.push_back(entry);
}

void LedgerBook::addLegs(const LedgerTransaction& transaction, Entry& entry)
{
    entry.firstLeg = static_cast<std::uint32_t>(m_legs.size());
    entry.legCount = static_cast<std::uint32_t>(transaction.legs.size());
    for (const auto& leg : transaction.legs) {
        const auto account =
            m_accounts.number(leg.accountID, [&] { return TextFold::folded(m_names.account(leg.accountID)); });
        const auto currency = m_currencies.number(leg.currency, [&] { return TextFold::folded(leg.currency); });
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
        std::string names;
        const auto* category = m_names.categories().find(id);
        for (const auto* each = category; each;
             each = each == category ? m_names.categories().parent(*each) : nullptr) {
            for (const auto& [tag, name] : each->names)
                names += TextFold::folded(name) + '\n';
        }
        return names;
    });
}

/// A reversal of a transfer moves money inside the company too, even where only one of its legs is visible.
void LedgerBook::markInternal()
{
    for (std::uint32_t at = 0; at < m_entries.size(); ++at) {
        const auto& transaction = m_snapshot->transactions[at];
        const auto original = transaction.reversalOf ? find(*transaction.reversalOf) : none;
        m_entries[at].isInternal = transaction.kind == EntryKind::transfer || balancesToZero(legs(at)) ||
                                   (original != none && m_snapshot->transactions[original].kind == EntryKind::transfer);
    }
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

void LedgerBook::countDays()
{
    std::vector<std::uint32_t> days;
    days.reserve(m_entries.size());
    for (const auto& entry : m_entries)
        days.push_back(entry.day);
    m_counts = PeriodCounts{std::move(days)};
}
