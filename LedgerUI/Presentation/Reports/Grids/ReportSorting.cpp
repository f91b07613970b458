#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"

#include <algorithm>
#include <compare>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Text/Collation.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using Direction = ReportSort::Direction;
using Kind = ReportGridColumn::Kind;
using Level = ReportGridRow::Level;

namespace {

class Sorting {
public:
    Sorting(const ReportGrid& grid, std::size_t column, Direction direction, std::string_view locale)
        : m_column(column), m_isFigure(grid.columns[column].kind == Kind::figure),
          m_isDescending(direction == Direction::descending), m_locale(locale)
    {
    }

    std::vector<ReportGridRow> sorted(std::vector<ReportGridRow> rows) &&
    {
        for (auto& row : rows) {
            if (row.level == Level::heading || row.level == Level::total) {
                closeGroup();
                m_sorted.push_back(std::move(row));
                continue;
            }
            const bool isPart = !row.parentID.empty() && !m_group.empty();
            auto& siblings = isPart ? m_group.back().parts : m_group;
            auto key = keyOf(row);
            key.place = ++m_seen;
            siblings.push_back({.key = std::move(key), .row = std::move(row), .parts = {}});
        }
        closeGroup();
        return std::move(m_sorted);
    }

private:
    struct Key {
        std::size_t currency = 0; // in the order in which they come
        bool isBlank = false;
        std::int64_t value = 0;
        std::string text = {};
        std::size_t place = 0; // in the order of the books
    };
    struct Family {
        Key key;
        ReportGridRow row;
        std::vector<Family> parts;
    };

    [[nodiscard]] Key keyOf(const ReportGridRow& row)
    {
        const auto& cell = row.cells[m_column];
        const auto& text = cell.copied.isEmpty() ? cell.text : cell.copied; // days stand in the order of time
        if (!m_isFigure && !cell.value)
            return {.isBlank = text.isEmpty(), .text = Collation::sortKey(text.toStdString(), m_locale)};
        return {.currency = m_isFigure ? placeOf(row.currency) : 0,
                .isBlank = !cell.value,
                .value = cell.value.value_or(0)};
    }

    [[nodiscard]] std::size_t placeOf(const std::string& currency)
    {
        const auto found = std::ranges::find(m_currencies, currency);
        const auto place = static_cast<std::size_t>(found - m_currencies.begin());
        if (found == m_currencies.end())
            m_currencies.push_back(currency);
        return place;
    }

    /// Rows that compare alike keep the order of the books.
    [[nodiscard]] bool isBefore(const Key& left, const Key& right) const
    {
        if (left.currency != right.currency)
            return left.currency < right.currency;
        if (left.isBlank != right.isBlank)
            return right.isBlank;
        const auto& first = m_isDescending ? right : left;
        const auto& second = m_isDescending ? left : right;
        if (const auto order = std::tie(first.value, first.text) <=> std::tie(second.value, second.text); order != 0)
            return order < 0;
        return left.place < right.place;
    }

    void hand(std::vector<Family>& siblings)
    {
        std::ranges::sort(
            siblings, [this](const Key& left, const Key& right) { return isBefore(left, right); }, &Family::key);
        for (auto& each : siblings) {
            m_sorted.push_back(std::move(each.row));
            hand(each.parts);
        }
    }

    void closeGroup()
    {
        hand(m_group);
        m_group.clear();
    }

    std::size_t m_column;
    bool m_isFigure;
    bool m_isDescending;
    std::string_view m_locale;
    std::size_t m_seen = 0;
    std::vector<std::string> m_currencies;
    std::vector<Family> m_group;
    std::vector<ReportGridRow> m_sorted;
};

/// Figures the largest first; where all of them take away, those that take the most.
Direction firstDirection(const ReportGrid& grid, std::size_t column)
{
    if (grid.columns[column].kind != Kind::figure)
        return Direction::ascending;
    const auto hasAny = [&](auto&& isSuch) {
        return std::ranges::any_of(grid.rows, [&](const ReportGridRow& row) {
            const auto& value = row.cells[column].value;
            return value && isSuch(*value);
        });
    };
    const bool takesAway =
        hasAny([](std::int64_t value) { return value < 0; }) && !hasAny([](std::int64_t value) { return value > 0; });
    return takesAway ? Direction::ascending : Direction::descending;
}

Direction opposite(Direction direction)
{
    return direction == Direction::ascending ? Direction::descending : Direction::ascending;
}

}

bool ReportSorting::isOffered(const ReportGrid& grid, std::size_t column)
{
    const auto& asked = grid.columns[column];
    if (asked.id.empty() || asked.kind != Kind::figure)
        return !asked.id.empty() && asked.kind != Kind::line;
    std::set<std::string_view> seen;
    return std::ranges::any_of(grid.rows, [&](const ReportGridRow& row) { return !seen.insert(row.currency).second; });
}

std::optional<ReportSort> ReportSorting::pressed(const ReportGrid& grid, std::size_t column)
{
    const auto& asked = grid.columns[column];
    const auto first = firstDirection(grid, column);
    if (!grid.sort || grid.sort->column != asked.id)
        return ReportSort{asked.id, first};
    if (grid.sort->direction == first)
        return turned(grid);
    return std::nullopt;
}

std::optional<ReportSort> ReportSorting::next(const ReportGrid& grid, const std::function<bool(std::size_t)>& isShown)
{
    std::size_t at = 0;
    if (grid.sort) {
        const auto found = std::ranges::find(grid.columns, grid.sort->column, &ReportGridColumn::id);
        at = static_cast<std::size_t>(found - grid.columns.begin()) + 1;
    }
    for (; at < grid.columns.size(); ++at) {
        if (isOffered(grid, at) && isShown(at))
            return ReportSort{grid.columns[at].id, firstDirection(grid, at)};
    }
    return std::nullopt;
}

std::optional<ReportSort> ReportSorting::turned(const ReportGrid& grid)
{
    if (!grid.sort)
        return std::nullopt;
    return ReportSort{grid.sort->column, opposite(grid.sort->direction)};
}

ReportQuery ReportSorting::asked(ReportQuery query, const ReportGrid& grid, const std::optional<ReportSort>& sort)
{
    query.sorts.erase(grid.id);
    if (sort)
        query.sorts.emplace(grid.id, *sort);
    return query;
}

void ReportSorting::apply(ReportGrid& grid, const ReportSorts& sorts, std::string_view locale)
{
    const auto asked = sorts.find(grid.id);
    if (asked == sorts.end())
        return;
    const auto& [id, direction] = asked->second;
    const auto found = std::ranges::find(grid.columns, id, &ReportGridColumn::id);
    const auto column = static_cast<std::size_t>(found - grid.columns.begin());
    if (found == grid.columns.end() || !isOffered(grid, column))
        return;
    grid.rows = Sorting{grid, column, direction, locale}.sorted(std::move(grid.rows));
    grid.sort = asked->second;
    grid.sorted =
        wordIn(locale, reportWords(), direction == Direction::ascending ? "sort.ascending" : "sort.descending",
               {found->head.toStdString()});
}
