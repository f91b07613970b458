#include "LedgerCore/Domain/Reports/ReportBook.h"

#include <cstdlib>
#include <limits>
#include <optional>
#include <unordered_map>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

template <class Entry>
using EntryIndex = std::unordered_map<std::string_view, const Entry*>;

/// The entries that reversals and refunds refer to: few, so that the others need no place in an index.
template <class Entries, class Entry = typename Entries::value_type>
EntryIndex<Entry> entriesReferredTo(const Entries& entries)
{
    EntryIndex<Entry> byID;
    for (const auto& entry : entries) {
        if (entry.reversalOf)
            byID.emplace(*entry.reversalOf, nullptr);
        if (entry.originalTransactionID)
            byID.emplace(*entry.originalTransactionID, nullptr);
    }
    if (byID.empty())
        return byID;
    for (const auto& entry : entries) {
        if (const auto found = byID.find(entry.id); found != byID.end())
            found->second = &entry;
    }
    return byID;
}

template <class Entry, class ID>
const Entry* referred(const EntryIndex<Entry>& byID, const std::optional<ID>& id)
{
    if (!id)
        return nullptr;
    const auto found = byID.find(*id);
    return found == byID.end() ? nullptr : found->second;
}

std::int64_t magnitude(std::int64_t amountMinor)
{
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    return amountMinor == lowest ? std::numeric_limits<std::int64_t>::max() : std::abs(amountMinor);
}

}

/// Fills a book from its snapshot. Neighbouring entries share day and currency more often than not, so the last ones
/// are remembered.
template <class Entries>
class ReportBook::Builder {
public:
    using Entry = typename Entries::value_type;

    Builder(ReportBook& book, const std::vector<Category>& categories, const Entries& entries)
        : m_book(book), m_entries(entries), m_referred(entriesReferredTo(entries))
    {
        indexAccounts();
        indexCategories(categories);
    }

    std::optional<ReportError> build()
    {
        std::uint32_t at = 0;
        for (const auto& entry : m_entries) {
            if (const auto failed = add(entry, at++))
                return failed;
        }
        return std::nullopt;
    }

private:
    struct Currency {
        std::vector<Row>* rows = nullptr;
        std::int64_t turnoverMinor = 0; // all amounts without their signs: as long as it fits, every sum does
    };

    void indexAccounts()
    {
        for (const auto& account : *m_book.m_accounts) {
            m_accounts.emplace(account.id, static_cast<std::uint32_t>(m_accounts.size()));
            for (const auto& currency : account.currencies)
                m_book.m_rows[currency];
        }
    }

    void indexCategories(const std::vector<Category>& categories)
    {
        m_book.m_categories.emplace_back();
        for (const auto& category : categories)
            categorySlot(category.id);
        std::uint32_t next = 1; // slots follow the list: a category listed once more keeps its first parent
        for (const auto& category : categories) {
            const auto slot = m_slots.at(category.id);
            if (slot != next)
                continue;
            ++next;
            const auto parent = category.parentID ? m_slots.find(*category.parentID) : m_slots.end();
            if (parent != m_slots.end())
                m_book.m_categories[slot].top = parent->second;
        }
        for (std::uint32_t slot = 0; slot < m_book.m_categories.size(); ++slot)
            m_book.m_categories[slot].top = topOf(slot);
    }

    /// The uppermost category above one, itself included; itself where the ways up run in a circle.
    [[nodiscard]] std::uint32_t topOf(std::uint32_t slot) const
    {
        const auto& categories = m_book.m_categories;
        auto top = slot;
        for (std::size_t step = 0; step < categories.size(); ++step) {
            if (categories[top].top == top)
                return top;
            top = categories[top].top;
        }
        return slot;
    }

    /// A category that the snapshot does not list still gets its own line.
    std::uint32_t categorySlot(std::string_view id)
    {
        const auto next = static_cast<std::uint32_t>(m_book.m_categories.size());
        const auto [found, isNew] = m_slots.emplace(id, next);
        if (isNew)
            m_book.m_categories.push_back({id, next});
        return found->second;
    }

    std::optional<ReportError> add(const Entry& entry, std::uint32_t position)
    {
        if (!rememberDay(entry.date))
            return ReportError::invalidDay;
        const bool reverses = entry.kind == EntryKind::reversal;
        const auto* undone = reverses ? referred(m_referred, entry.reversalOf) : &entry;
        const auto movement = undone ? movementOf(undone->kind) : Movement::other;
        const auto category = undone ? categoryOf(*undone) : 0;
        for (const auto& leg : entry.legs) {
            const auto account = m_accounts.find(leg.accountID);
            if (account == m_accounts.end())
                continue; // the far end of an entry that the member sees only in part
            auto& currency = currencyOf(leg.currency);
            const auto turnover = Money::add(currency.turnoverMinor, magnitude(leg.amountMinor));
            if (!turnover)
                return ReportError::amountOverflow;
            currency.turnoverMinor = *turnover;
            currency.rows->push_back({leg.amountMinor, m_day, position, account->second, category, movement, reverses});
        }
        return std::nullopt;
    }

    /// A refund stands against the income that it refunds.
    std::uint32_t categoryOf(const Entry& entry)
    {
        if (const auto* original = referred(m_referred, entry.originalTransactionID); original && original->categoryID)
            return categorySlot(*original->categoryID);
        return entry.categoryID ? categorySlot(*entry.categoryID) : 0;
    }

    bool rememberDay(std::string_view text)
    {
        if (text == m_dayText)
            return true;
        const auto day = LedgerDay::parse(text);
        if (!day)
            return false;
        m_dayText = text;
        m_day = static_cast<std::int32_t>(std::chrono::sys_days{*day}.time_since_epoch().count());
        return true;
    }

    Currency& currencyOf(std::string_view code)
    {
        if (m_last && m_lastCode == code)
            return *m_last;
        auto found = m_currencies.find(code);
        if (found == m_currencies.end())
            found = m_currencies.emplace(code, Currency{&m_book.m_rows[std::string{code}]}).first;
        m_lastCode = code;
        m_last = &found->second;
        return *m_last;
    }

    ReportBook& m_book;
    const Entries& m_entries;
    EntryIndex<Entry> m_referred;
    std::unordered_map<std::string_view, std::uint32_t> m_accounts;
    std::unordered_map<std::string_view, std::uint32_t> m_slots;
    std::unordered_map<std::string_view, Currency> m_currencies;
    std::string_view m_dayText;
    std::int32_t m_day = 0;
    std::string_view m_lastCode;
    Currency* m_last = nullptr;
};

template <class Snapshot>
std::expected<ReportBook, ReportError> ReportBook::laidOut(const Snapshot& snapshot)
{
    ReportBook book{snapshot.accounts};
    if (const auto failed = Builder{book, snapshot.categories, snapshot.transactions}.build())
        return std::unexpected(*failed);
    return book;
}

std::expected<ReportBook, ReportError> ReportBook::create(const LedgerSnapshot& snapshot)
{
    return laidOut(snapshot);
}

std::expected<ReportBook, ReportError> ReportBook::create(const ReportSource& source)
{
    return laidOut(source);
}

std::vector<std::string> ReportBook::currencies() const
{
    std::vector<std::string> codes;
    codes.reserve(m_rows.size());
    for (const auto& [code, rows] : m_rows)
        codes.push_back(code);
    return codes;
}
