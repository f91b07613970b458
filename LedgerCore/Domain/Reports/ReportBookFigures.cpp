#include "LedgerCore/Domain/Reports/ReportBook.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

std::int32_t dayNumber(std::chrono::sys_days day)
{
    return static_cast<std::int32_t>(day.time_since_epoch().count());
}

/// Finds the range of a day. Books are nearly in the order of days, so the last range found is tried first.
class Buckets {
public:
    static constexpr std::size_t before = std::numeric_limits<std::size_t>::max();

    explicit Buckets(const std::vector<ReportRange>& ranges) : m_first(dayNumber(ranges.front().first))
    {
        for (const auto& range : ranges)
            m_ends.push_back(dayNumber(range.last) + 1);
    }

    /// The position of the range, `before` the first one, or the number of ranges after the last.
    std::size_t place(std::int32_t day)
    {
        if (day < m_first)
            return before;
        const auto start = m_last == 0 ? m_first : m_ends[m_last - 1];
        if (day >= start && day < m_ends[m_last])
            return m_last;
        const auto at = static_cast<std::size_t>(std::ranges::upper_bound(m_ends, day) - m_ends.begin());
        if (at < m_ends.size())
            m_last = at;
        return at;
    }

private:
    std::int32_t m_first;
    std::vector<std::int32_t> m_ends; // the day after each range
    std::size_t m_last = 0;
};

void book(ReportMovements& movements, const ReportBook::Row& row)
{
    auto& figure = movements[row.movement];
    (row.reverses ? figure.reversedMinor : figure.bookedMinor) += row.amountMinor;
}

void book(ReportCell& cell, const ReportBook::Row& row)
{
    book(cell.movements, row);
    (row.amountMinor < 0 ? cell.leftMinor : cell.arrivedMinor) += row.amountMinor;
}

/// Carries closings into openings, from the first range on.
template <class Cell>
void carry(std::int64_t openingMinor, std::vector<Cell>& cells)
{
    for (auto& cell : cells) {
        cell.openingMinor = openingMinor;
        openingMinor += cell.movements.netMinor();
        cell.closingMinor = openingMinor;
    }
}

bool isChosen(const ReportFigure& figure, std::string_view category, std::string_view top)
{
    using enum ReportFigure::Lines;
    switch (figure.lines) {
    case all:
        return true;
    case categoryAlone:
        return category == figure.categoryID;
    case categoryWithChildren:
        return category == figure.categoryID || top == figure.categoryID;
    case severalCategories:
        return figure.categoryIDs.contains(category);
    }
    return false;
}

void add(ReportCell& total, const ReportCell& cell)
{
    total.openingMinor += cell.openingMinor;
    total.arrivedMinor += cell.arrivedMinor;
    total.leftMinor += cell.leftMinor;
    total.closingMinor += cell.closingMinor;
    for (std::size_t at = 0; at < allMovements.size(); ++at) {
        total.movements.figures[at].bookedMinor += cell.movements.figures[at].bookedMinor;
        total.movements.figures[at].reversedMinor += cell.movements.figures[at].reversedMinor;
    }
}

}

/// Income and expense of one period by category.
class ReportBook::CategorySums {
public:
    void book(const Row& row, std::size_t categoryCount)
    {
        const bool isExpense = row.movement == Movement::expense;
        if (!isExpense && row.movement != Movement::income && row.movement != Movement::refund)
            return;
        auto& sums = isExpense ? m_expense : m_income;
        sums.resize(categoryCount); // only a period with movement takes the room
        auto& sum = sums[row.category];
        (row.reverses                       ? sum.line.reversedMinor
         : row.movement == Movement::refund ? sum.line.refundedMinor
                                            : sum.line.bookedMinor) += row.amountMinor;
        if (std::exchange(sum.lastEntry, row.entry) != row.entry)
            ++sum.line.entryCount;
    }

    void fill(ReportPeriod& period, const std::vector<CategorySlot>& slots) const
    {
        fill(period, slots, m_income, Movement::income);
        fill(period, slots, m_expense, Movement::expense);
    }

private:
    struct Sum {
        ReportCategoryLine line;
        std::uint32_t lastEntry = std::numeric_limits<std::uint32_t>::max();
    };

    static void fill(ReportPeriod& period, const std::vector<CategorySlot>& slots, const std::vector<Sum>& sums,
                     Movement side)
    {
        std::vector<ReportCategoryLine> parents(sums.size());
        for (std::size_t at = 0; at < sums.size(); ++at) {
            const auto& line = sums[at].line;
            auto& parent = parents[slots[at].top];
            parent.bookedMinor += line.bookedMinor;
            parent.refundedMinor += line.refundedMinor;
            parent.reversedMinor += line.reversedMinor;
            parent.entryCount += line.entryCount;
        }
        const auto append = [&](std::vector<ReportCategoryLine>& lines, std::size_t at, ReportCategoryLine line) {
            if (line.entryCount == 0)
                return;
            line.categoryID = slots[at].id;
            line.side = side;
            lines.push_back(std::move(line));
        };
        for (std::size_t each = 1; each <= sums.size(); ++each) {
            const auto at = each % sums.size(); // the first slot, of no category, comes last
            append(period.categories, at, sums[at].line);
            append(period.parentCategories, at, parents[at]);
        }
    }

    std::vector<Sum> m_income;
    std::vector<Sum> m_expense;
};

const std::vector<ReportBook::Row>& ReportBook::rows(std::string_view currency) const
{
    static const std::vector<Row> none;
    const auto found = m_rows.find(currency);
    return found == m_rows.end() ? none : found->second;
}

std::vector<bool> ReportBook::accountsInScope(const ReportScope& scope) const
{
    std::vector<bool> inScope;
    inScope.reserve(m_accounts->size());
    for (const auto& account : *m_accounts)
        inScope.push_back(!scope.accountIDs || scope.accountIDs->contains(account.id));
    return inScope;
}

std::expected<Report, ReportError> ReportBook::report(ReportScope scope, const std::vector<ReportRange>& ranges) const
{
    if (ranges.empty() || !ReportRanges::areContiguous(ranges))
        return std::unexpected(ReportError::invalidRanges);
    const auto inScope = accountsInScope(scope);
    Report report;
    for (const auto& range : ranges)
        report.periods.push_back({.days = range});
    std::vector<CategorySums> categories(ranges.size());
    std::vector<std::uint32_t> lastEntries(ranges.size(), std::numeric_limits<std::uint32_t>::max());
    std::int64_t opening = 0;

    Buckets buckets{ranges};
    for (const auto& row : rows(scope.currency)) {
        if (!inScope[row.account])
            continue;
        const auto at = buckets.place(row.day);
        if (at == Buckets::before) {
            opening += row.amountMinor;
        } else if (at < ranges.size()) {
            auto& period = report.periods[at];
            book(period.movements, row);
            categories[at].book(row, m_categories.size());
            if (std::exchange(lastEntries[at], row.entry) != row.entry)
                ++period.entryCount;
        }
    }
    carry(opening, report.periods);
    for (std::size_t at = 0; at < ranges.size(); ++at)
        categories[at].fill(report.periods[at], m_categories);
    report.scope = std::move(scope);
    return report;
}

std::expected<ReportAccountMatrix, ReportError> ReportBook::matrix(ReportScope scope,
                                                                   std::vector<ReportRange> ranges) const
{
    if (ranges.empty() || !ReportRanges::areContiguous(ranges))
        return std::unexpected(ReportError::invalidRanges);
    const auto inScope = accountsInScope(scope);
    struct Line {
        std::int64_t openingMinor = 0;
        std::vector<ReportCell> cells;
        bool moved = false;
    };
    std::vector<Line> lines(inScope.size());
    Buckets buckets{ranges};
    for (const auto& row : rows(scope.currency)) {
        if (!inScope[row.account])
            continue;
        auto& line = lines[row.account];
        line.moved = true;
        const auto at = buckets.place(row.day);
        if (at == Buckets::before) {
            line.openingMinor += row.amountMinor;
        } else if (at < ranges.size()) {
            line.cells.resize(ranges.size());
            book(line.cells[at], row);
        }
    }

    ReportAccountMatrix matrix;
    matrix.totals.resize(ranges.size());
    for (std::size_t account = 0; account < lines.size(); ++account) {
        auto& line = lines[account];
        const auto& known = (*m_accounts)[account];
        if (!inScope[account] || (!line.moved && !known.holds(scope.currency)))
            continue;
        line.cells.resize(ranges.size());
        carry(line.openingMinor, line.cells);
        for (std::size_t at = 0; at < ranges.size(); ++at)
            add(matrix.totals[at], line.cells[at]);
        matrix.rows.push_back({known.id, std::move(line.cells)});
    }
    matrix.scope = std::move(scope);
    matrix.ranges = std::move(ranges);
    return matrix;
}

std::expected<ReportDailyBalances, ReportError> ReportBook::dailyBalances(const ReportScope& scope,
                                                                          ReportRange range) const
{
    if (range.last < range.first)
        return std::unexpected(ReportError::invalidRanges);
    const auto first = dayNumber(range.first);
    const auto inScope = accountsInScope(scope);
    ReportDailyBalances balances;
    balances.firstDay = range.first;
    balances.closingMinor.resize(static_cast<std::size_t>((range.last - range.first).count()) + 1);
    for (const auto& row : rows(scope.currency)) {
        if (!inScope[row.account])
            continue;
        const auto at = static_cast<std::size_t>(std::max(row.day, first) - first);
        if (at < balances.closingMinor.size())
            balances.closingMinor[at] += row.amountMinor; // what came before stands in the first day
    }
    std::int64_t held = 0;
    for (auto& day : balances.closingMinor)
        day = held += day;
    return balances;
}

std::vector<bool> ReportBook::categoriesOf(const ReportFigure& figure) const
{
    std::vector<bool> chosen;
    chosen.reserve(m_categories.size());
    for (const auto& slot : m_categories)
        chosen.push_back(isChosen(figure, slot.id, m_categories[slot.top].id));
    return chosen;
}

std::vector<ReportFigureLeg> ReportBook::legs(const ReportFigure& figure, ReportRange range) const
{
    const auto inScope = accountsInScope(figure.scope);
    const auto ofCategory = categoriesOf(figure);
    const auto first = dayNumber(range.first);
    const auto last = dayNumber(range.last);
    std::vector<ReportFigureLeg> found;
    for (const auto& row : rows(figure.scope.currency)) {
        const bool isMeant = (figure.movements.empty() || figure.movements.contains(row.movement)) &&
                             (figure.legs == ReportFigure::Legs::all || !row.isEarnedOrSpent()) &&
                             goes(figure.direction, row.amountMinor);
        if (isMeant && row.day >= first && row.day <= last && inScope[row.account] && ofCategory[row.category])
            found.push_back({.entry = row.entry, .amountMinor = row.amountMinor, .reverses = row.reverses});
    }
    return found;
}
