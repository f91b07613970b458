#include "LedgerUI/Presentation/Ledger/Listing/LedgerStatement.h"

#include <algorithm>
#include <numeric>
#include <ranges>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

namespace {

/// A balance and the row after whose entry it stands.
struct Reached {
    std::uint32_t row = 0;
    LedgerStatement::Balance balance;
};

/// Goes through the movements of one account from the first entry to the last.
class Walk {
public:
    Walk(const LedgerBook& book, std::uint32_t account, const Period& period)
        : m_book(book), m_account(account), m_first(period.isAllTime() ? 0 : dayNumber(period.firstDay())),
          m_last(period.isAllTime() ? LedgerBook::none : dayNumber(period.lastDay())), m_lines(book.currencies().size())
    {
    }

    /// False where a sum does not fit, or does not come to what the account holds.
    bool run(const Account& account, const std::vector<int>& places)
    {
        for (const auto at : std::views::reverse(m_book.order())) {
            if (!take(at, places[at]))
                return false;
        }
        const auto explains = [&](std::uint32_t currency) {
            return m_lines[currency].now == account.balance(m_book.currencies().id(currency));
        };
        const auto numbers = std::views::iota(std::uint32_t{0}, static_cast<std::uint32_t>(m_lines.size()));
        return std::ranges::all_of(numbers, explains) && std::ranges::all_of(account.balances, [&](const auto& each) {
                   return each.second == 0 || m_book.currencies().contains(each.first);
               });
    }

    [[nodiscard]] std::vector<LedgerStatement::Line> lines() const
    {
        std::vector<LedgerStatement::Line> lines;
        for (std::uint32_t currency = 0; currency < m_lines.size(); ++currency) {
            const auto& line = m_lines[currency];
            if (line.isUsed)
                lines.push_back({.currency = m_book.currencies().id(currency),
                                 .opening = line.opening,
                                 .incoming = line.incoming,
                                 .outgoing = line.outgoing,
                                 .closing = line.closing});
        }
        std::ranges::sort(lines, {}, [](const LedgerStatement::Line& line) { return pickerPlace(line.currency); });
        return lines;
    }
    [[nodiscard]] const std::vector<Reached>& reached() const { return m_reached; }

private:
    struct Line {
        std::int64_t now = 0;
        std::int64_t opening = 0;
        std::int64_t incoming = 0;
        std::int64_t outgoing = 0;
        std::int64_t closing = 0;
        bool isUsed = false;
    };

    bool take(std::uint32_t at, int row)
    {
        const auto day = m_book.entry(at).day;
        const auto begin = m_reached.size();
        for (const auto& leg : m_book.legs(at)) {
            if (leg.account != m_account)
                continue;
            auto& line = m_lines[leg.currency];
            line.isUsed = true;
            if (!add(line.now, leg.amountMinor))
                return false;
            if (day < m_first)
                line.opening = line.now;
            if (day <= m_last)
                line.closing = line.now;
            const bool isInside = day >= m_first && day <= m_last;
            if (isInside && !add(leg.amountMinor > 0 ? line.incoming : line.outgoing, leg.amountMinor))
                return false;
            if (row >= 0)
                note(begin, {static_cast<std::uint32_t>(row), {leg.currency, line.now}});
        }
        return true;
    }

    /// An entry with several legs in a currency leaves one balance in it.
    void note(std::size_t begin, const Reached& fresh)
    {
        const auto ofEntry = std::span{m_reached}.subspan(begin);
        const auto same = std::ranges::find_if(
            ofEntry, [&](const Reached& each) { return each.balance.currency == fresh.balance.currency; });
        if (same == ofEntry.end())
            m_reached.push_back(fresh);
        else
            *same = fresh;
    }

    static bool add(std::int64_t& sum, std::int64_t amount)
    {
        const auto added = Money::add(sum, amount);
        sum = added.value_or(sum);
        return added.has_value();
    }

    const LedgerBook& m_book;
    std::uint32_t m_account;
    std::uint32_t m_first;
    std::uint32_t m_last;
    std::vector<Line> m_lines; // by currency
    std::vector<Reached> m_reached;
};

std::vector<LedgerStatement::Balance> widestOf(const std::vector<LedgerStatement::Balance>& balances)
{
    std::vector<LedgerStatement::Balance> widest;
    const auto magnitude = [](std::int64_t minor) { return minor < 0 ? -minor : minor; };
    for (const auto& each : balances) {
        const auto known = std::ranges::find(widest, each.currency, &LedgerStatement::Balance::currency);
        if (known == widest.end())
            widest.push_back(each);
        else if (magnitude(each.minor) > magnitude(known->minor))
            *known = each;
    }
    return widest;
}

}

std::optional<LedgerStatement> statementOf(const LedgerBook& book, const LedgerFilter& filter,
                                           const std::vector<int>& places, std::size_t lines)
{
    if (filter.accountIDs.size() != 1)
        return std::nullopt;
    const auto& id = *filter.accountIDs.begin();
    const auto* account = book.snapshot().account(id);
    const auto number = book.accounts().find(id);
    if (!account || !number)
        return std::nullopt;
    Walk walk{book, *number, filter.period};
    if (!walk.run(*account, places))
        return std::nullopt;
    LedgerStatement statement{.accountID = id, .lines = walk.lines(), .firstOf = {}, .balances = {}, .widest = {}};
    statement.firstOf.resize(lines + 1);
    for (const auto& each : walk.reached())
        ++statement.firstOf[each.row + 1];
    std::partial_sum(statement.firstOf.begin(), statement.firstOf.end(), statement.firstOf.begin());
    auto next = statement.firstOf;
    statement.balances.resize(walk.reached().size());
    for (const auto& each : walk.reached())
        statement.balances[next[each.row]++] = each.balance;
    statement.widest = widestOf(statement.balances);
    return statement;
}
