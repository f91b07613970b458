#include "LedgerUI/Presentation/Accounts/AccountBook.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/EntryPlaces.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"

namespace {

using Minor = AccountBook::Minor;

void add(Minor& sum, std::int64_t amount)
{
    sum = sum ? Money::add(*sum, amount) : std::nullopt;
}

int monthNumber(std::chrono::year_month month)
{
    return static_cast<int>(month.year()) * 12 + static_cast<int>(static_cast<unsigned>(month.month())) - 1;
}

/// Whether `left` was recorded for a later day, or later for the same one.
bool isNewer(const LedgerTransaction& left, const LedgerTransaction& right)
{
    return std::tie(left.date, left.createdAt) > std::tie(right.date, right.createdAt);
}

}

/// What is gathered for each line on the way through the entries.
class AccountBook::Builder {
public:
    explicit Builder(AccountBook& book)
        : m_book(book), m_thisMonth(monthNumber({book.m_today.year(), book.m_today.month()}))
    {
        const auto& accounts = book.snapshot().accounts;
        for (std::uint32_t at = 0; at < accounts.size(); ++at) {
            m_firstLine.emplace(accounts[at].id, book.m_lines.size());
            for (auto& currency : currenciesOf(accounts[at]))
                book.m_lines.push_back(
                    {.account = at, .currency = currency, .balance = accounts[at].balance(currency)});
        }
        m_sums.resize(book.m_lines.size());
    }

    void gather()
    {
        const auto& entries = m_book.snapshot().transactions;
        EntryPlaces places;
        places.extend(entries);
        for (std::uint32_t at = 0; at < entries.size(); ++at) {
            const auto& entry = entries[at];
            const auto day = LedgerDay::parse(entry.date);
            const int month = day ? monthNumber({day->year(), day->month()}) : 0;
            const bool isOpening = isAboutOpening(entry, places);
            for (const auto& leg : entry.legs) {
                if (const auto line = lineOf(leg))
                    take(*line, at, leg.amountMinor, month, isOpening);
            }
        }
        for (std::size_t at = 0; at < m_sums.size(); ++at)
            finish(m_book.m_lines[at], m_sums[at]);
    }

private:
    /// Movements altogether and by months, the last one with all that is after it.
    struct Sum {
        Minor all = 0;
        std::array<Minor, months> byMonth{};

        Sum() { byMonth.fill(0); }
    };

    bool isAboutOpening(const LedgerTransaction& entry, const EntryPlaces& places) const
    {
        if (entry.kind == EntryKind::opening)
            return true;
        if (entry.kind != EntryKind::reversal || !entry.reversalOf)
            return false;
        const auto& entries = m_book.snapshot().transactions;
        const auto original = places.find(entries, *entry.reversalOf);
        return original != EntryPlaces::none && entries[original].kind == EntryKind::opening;
    }

    std::optional<std::size_t> lineOf(const LedgerLeg& leg) const
    {
        const auto found = m_firstLine.find(leg.accountID);
        if (found == m_firstLine.end())
            return std::nullopt;
        const auto& lines = m_book.m_lines;
        for (auto at = found->second; at < lines.size() && m_book.account(lines[at]).id == leg.accountID; ++at) {
            if (lines[at].currency == leg.currency)
                return at;
        }
        return std::nullopt;
    }

    void take(std::size_t at, std::uint32_t entry, std::int64_t amount, int month, bool isOpening)
    {
        auto& line = m_book.m_lines[at];
        auto& sum = m_sums[at];
        add(sum.all, amount);
        const int ago = m_thisMonth - month;
        if (ago < static_cast<int>(months))
            add(sum.byMonth[months - 1 - static_cast<std::size_t>(std::max(ago, 0))], amount);
        if (ago == 0 && !isOpening)
            add(amount < 0 ? line.outgoing : line.incoming, amount);
        const auto& entries = m_book.snapshot().transactions;
        if (entries[entry].kind == EntryKind::opening && !entries[entry].reversedBy)
            line.opening = Movement{entry, amount};
        const auto place = std::ranges::find_if(
            line.latest, [&](const Movement& each) { return !isNewer(entries[each.entry], entries[entry]); });
        if (line.latest.size() == latestKept && place == line.latest.end())
            return;
        line.latest.insert(place, {entry, amount});
        if (line.latest.size() > latestKept)
            line.latest.pop_back();
    }

    /// Back from the balance of now, month by month.
    static void finish(Line& line, const Sum& sum)
    {
        if (sum.all != line.balance)
            return;
        std::array<std::int64_t, months> ends{};
        Minor balance = line.balance;
        for (std::size_t at = months; at-- > 0;) {
            if (!balance)
                return;
            ends[at] = *balance;
            const auto& moved = sum.byMonth[at];
            balance = moved ? Money::add(*balance, -*moved) : std::nullopt;
        }
        line.monthEnds = ends;
    }

    AccountBook& m_book;
    int m_thisMonth;
    std::unordered_map<std::string_view, std::size_t> m_firstLine; // by account
    std::vector<Sum> m_sums;
};

AccountBook::AccountBook(SnapshotPointer snapshot, std::chrono::year_month_day today)
    : m_snapshot{std::move(snapshot)}, m_today{today}
{
    Builder{*this}.gather();
    for (auto& eligibility : OpeningBalancePolicy::evaluateAll(*m_snapshot)) {
        const auto found = std::ranges::find_if(m_lines, [&](const Line& each) {
            return account(each).id == eligibility.accountID && each.currency == eligibility.currency;
        });
        if (found != m_lines.end())
            found->eligibility = std::move(eligibility);
    }
}

const AccountBook::Line* AccountBook::line(std::string_view accountID, std::string_view currency) const
{
    const auto found = std::ranges::find_if(
        m_lines, [&](const Line& each) { return account(each).id == accountID && each.currency == currency; });
    return found == m_lines.end() ? nullptr : &*found;
}
