#include "LedgerCore/Domain/Entries/VisibleBooks.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <boost/unordered/unordered_flat_map.hpp>

#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

template <class Row>
using ByID = boost::unordered_flat_map<std::string_view, const Row*>;

// A form asks for few entries, for which an index of all takes longer than looking through them.
constexpr std::size_t foundByLooking = 4;

using Place = std::pair<std::string, std::string>; // account and currency

using PlaceView = std::pair<std::string_view, std::string_view>;

/// The refunds that are not reversed.
struct Refunds {
    boost::unordered_flat_map<std::string_view, std::vector<const LedgerTransaction*>> byIncome;
    std::set<std::string, std::less<>> references; // folded
};

template <class Rows, class Row = typename Rows::value_type>
ByID<Row> indexed(const Rows& rows)
{
    ByID<Row> index;
    index.reserve(rows.size());
    for (const auto& row : rows)
        index.emplace(row.id, &row);
    return index;
}

template <class Row>
const Row* find(const ByID<Row>& index, std::string_view id)
{
    const auto found = index.find(id);
    return found == index.end() ? nullptr : found->second;
}

Refunds refundsIn(const EntryList& entries)
{
    Refunds refunds;
    for (const auto& entry : entries) {
        if (entry.kind != EntryKind::refund || entry.reversedBy)
            continue;
        if (entry.originalTransactionID)
            refunds.byIncome[*entry.originalTransactionID].push_back(&entry);
        if (entry.externalReference)
            refunds.references.insert(EntryReference::folded(*entry.externalReference));
    }
    return refunds;
}

/// Where openings that are not reversed stand.
std::set<PlaceView> openedIn(const EntryList& entries)
{
    std::set<PlaceView> places;
    for (const auto& entry : entries) {
        if (entry.kind != EntryKind::opening || entry.reversedBy)
            continue;
        for (const auto& leg : entry.legs)
            places.emplace(leg.accountID, leg.currency);
    }
    return places;
}

/// The account behind a destination that the member does not see, as far as rules about it need it.
Account standIn(const TransferDestination& destination)
{
    Account account;
    account.id = destination.id;
    account.name = destination.name;
    account.currencies = destination.currencies;
    if (destination.allowsFunding)
        account.purpose = AccountPurpose::employee;
    return account;
}

std::vector<Account> standInsFor(const LedgerSnapshot& snapshot, const ByID<Account>& seen)
{
    std::vector<Account> unseen;
    if (!snapshot.transferDestinations)
        return unseen;
    for (const auto& each : *snapshot.transferDestinations) {
        if (!seen.contains(each.id))
            unseen.push_back(standIn(each));
    }
    return unseen;
}

bool moves(const LedgerTransaction& entry, const Place& place)
{
    return std::ranges::any_of(
        entry.legs, [&](const LedgerLeg& leg) { return leg.accountID == place.first && leg.currency == place.second; });
}

}

struct VisibleBooks::Gathered {
    explicit Gathered(const LedgerSnapshot& books)
        : snapshot(books), accounts(indexed(books.accounts)), categories(indexed(books.categories)),
          unseen(standInsFor(books, accounts)), unseenByID(indexed(unseen))
    {
    }

    const LedgerSnapshot& snapshot;
    ByID<Account> accounts;
    ByID<Category> categories;
    std::vector<Account> unseen; // destinations
    ByID<Account> unseenByID;
    // Each from a pass over all entries, made when it is first needed.
    std::optional<ByID<LedgerTransaction>> entries;                          // for more than a few
    std::map<std::string, const LedgerTransaction*, std::less<>> fewEntries; // null for what is not there
    std::optional<Refunds> refunds;
    std::optional<std::set<PlaceView>> opened;
    std::map<Place, OpeningBalanceEligibility> openings;
    std::optional<std::vector<OpeningBalanceEligibility>> allOpenings;
    std::map<Place, bool> moved;

    const Refunds& allRefunds() { return refunds ? *refunds : refunds.emplace(refundsIn(snapshot.transactions)); }
};

VisibleBooks::VisibleBooks(const LedgerSnapshot& snapshot) : m_gathered(std::make_shared<Gathered>(snapshot)) {}

const LedgerSnapshot& VisibleBooks::snapshot() const
{
    return m_gathered->snapshot;
}

const Account* VisibleBooks::account(std::string_view id) const
{
    return find(m_gathered->accounts, id);
}

const Account* VisibleBooks::destination(std::string_view id) const
{
    const auto* const seen = account(id);
    return seen ? seen : find(m_gathered->unseenByID, id);
}

std::span<const Account> VisibleBooks::unseenDestinations() const
{
    return m_gathered->unseen;
}

const Category* VisibleBooks::category(std::string_view id) const
{
    return find(m_gathered->categories, id);
}

const LedgerTransaction* VisibleBooks::entry(std::string_view id) const
{
    auto& few = m_gathered->fewEntries;
    auto& all = m_gathered->entries;
    if (const auto known = few.find(id); known != few.end())
        return known->second;
    if (!all && few.size() == foundByLooking)
        all = indexed(m_gathered->snapshot.transactions);
    if (all)
        return find(*all, id);
    return few.emplace(id, m_gathered->snapshot.entry(id)).first->second;
}

std::int64_t VisibleBooks::refundedMinor(std::string_view incomeID, std::string_view currency) const
{
    const auto& byIncome = m_gathered->allRefunds().byIncome;
    const auto found = byIncome.find(incomeID);
    std::int64_t sum = 0;
    if (found == byIncome.end())
        return sum;
    for (const auto* refund : found->second) {
        for (const auto& leg : refund->legs) {
            if (leg.currency == currency)
                sum = Money::add(sum, -leg.amountMinor).value_or(sum);
        }
    }
    return sum;
}

bool VisibleBooks::hasRefunds(std::string_view entryID) const
{
    return m_gathered->allRefunds().byIncome.contains(entryID);
}

bool VisibleBooks::isReferenceUsed(std::string_view reference) const
{
    return m_gathered->allRefunds().references.contains(EntryReference::folded(reference));
}

bool VisibleBooks::hasOpening(std::string_view accountID, std::string_view currency) const
{
    auto& opened = m_gathered->opened;
    if (!opened)
        opened = openedIn(m_gathered->snapshot.transactions);
    return opened->contains({accountID, currency});
}

const OpeningBalanceEligibility& VisibleBooks::opening(std::string_view accountID, std::string_view currency) const
{
    auto& known = m_gathered->openings;
    const Place place{accountID, currency};
    const auto found = known.find(place);
    if (found != known.end())
        return found->second;
    return known.emplace(place, OpeningBalancePolicy::evaluate(m_gathered->snapshot, accountID, currency))
        .first->second;
}

const std::vector<OpeningBalanceEligibility>& VisibleBooks::openings() const
{
    auto& all = m_gathered->allOpenings;
    return all ? *all : all.emplace(OpeningBalancePolicy::evaluateAll(m_gathered->snapshot));
}

bool VisibleBooks::isBalanceKnown(const Account& account, std::string_view currency) const
{
    if (account.balances.contains(currency))
        return true;
    const Place place{account.id, currency};
    const auto [at, fresh] = m_gathered->moved.try_emplace(place, false);
    if (fresh)
        at->second = std::ranges::any_of(m_gathered->snapshot.transactions,
                                         [&](const LedgerTransaction& entry) { return moves(entry, place); });
    return !at->second;
}
