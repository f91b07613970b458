#include "LedgerUI/Presentation/Print/PrintColumns.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace {

using Level = PrintedRow::Level;
using Width = PrintedColumn::Width;

constexpr std::array scales{PrintScale{}, PrintScale{.body = 76, .small = 68}, PrintScale{.body = 68, .small = 62}};
constexpr double headAtMost = 800;   // of a head that is kept on one line
constexpr double wordsAtLeast = 900; // a column that wraps keeps this much, or its whole text where that is less

struct Wish {
    double least = 0;
    double comfort = 0; // with its head on one line
    double whole = 0;
};

/// What each column needs at least, to be read easily, and with nothing wrapped.
std::vector<Wish> wishes(PrintMetrics& metrics, const PrintedTable& table, const PrintScale& scale)
{
    std::vector<Wish> all(table.columns.size());
    const PrintFont small{scale.small, false};
    const PrintFont head{scale.small, true};
    for (std::size_t at = 0; at < all.size(); ++at) {
        auto& wish = all[at];
        const auto& column = table.columns[at];
        wish.whole = metrics.widestWord(column.head, head);
        for (const auto& row : table.rows) {
            if (row.level == Level::group)
                continue;
            const auto& cell = row.cells[at];
            const double indent = at == 0 && row.level == Level::child ? scale.indent() : 0;
            wish.whole =
                std::max(wish.whole, indent + metrics.width(cell.text, PrintColumns::fontOf(scale, row.level)));
            if (!cell.second.isEmpty())
                wish.whole = std::max(wish.whole, indent + metrics.width(cell.second, small));
        }
        wish.least = column.width == Width::rest ? std::min(wish.whole, wordsAtLeast) : wish.whole;
        wish.comfort = std::max(wish.least, std::min(metrics.width(column.head, head), headAtMost));
    }
    return all;
}

double together(const std::vector<Wish>& all, double Wish::* part, double gap)
{
    const double gaps = all.empty() ? 0 : gap * static_cast<double>(all.size() - 1);
    return std::accumulate(all.begin(), all.end(), gaps,
                           [&](double sum, const Wish& wish) { return sum + wish.*part; });
}

/// The columns from `first` on that fit beside the first column of the table.
std::vector<std::size_t> nextSet(const std::vector<Wish>& all, std::size_t first, double width, double gap)
{
    std::vector<std::size_t> set{0};
    double taken = std::min(all.front().least, width);
    for (auto at = first; at < all.size(); ++at) {
        taken += gap + all[at].least;
        if (taken > width && set.size() > 1)
            break;
        set.push_back(at);
    }
    return set;
}

/// Columns that may wrap share what the others leave, in the measure of their texts; without such columns the first one
/// takes what is left.
std::vector<double> shared(const std::vector<Wish>& all, const PrintedTable& table, const std::vector<std::size_t>& set,
                           double width, double gap)
{
    const double room = width - gap * static_cast<double>(set.size() - 1);
    double fixed = 0;
    double least = 0;
    double wanted = 0;
    for (const auto at : set) {
        const bool wraps = table.columns[at].width == Width::rest;
        fixed += wraps ? 0 : all[at].least;
        least += wraps ? all[at].least : 0;
        wanted += wraps ? all[at].whole - all[at].least : 0;
    }
    const double left = room - fixed - least;
    std::vector<double> widths;
    for (const auto at : set) {
        const auto& wish = all[at];
        const bool wraps = table.columns[at].width == Width::rest;
        double own = wish.least;
        if (wraps && left > 0)
            own += wanted > 0 ? left * (wish.whole - wish.least) / wanted : left * wish.least / least;
        widths.push_back(own);
    }
    if (const double spare = room - std::accumulate(widths.begin(), widths.end(), 0.0); spare > 0)
        widths.front() += spare;
    else if (spare < 0) // a single column wider than the page: its texts are broken
        widths.back() = std::max(widths.back() + spare, room / static_cast<double>(2 * set.size()));
    return widths;
}

}

PrintFont PrintColumns::fontOf(const PrintScale& scale, Level level)
{
    return {.size = scale.body, .isBold = level != Level::plain && level != Level::child};
}

bool PrintColumns::fits(PrintMetrics& metrics, const PrintedTable& table, double width)
{
    return together(wishes(metrics, table, scales.front()), &Wish::least, scales.front().gap()) <= width;
}

PrintColumnPlan PrintColumns::plan(PrintMetrics& metrics, const PrintedTable& table, double width)
{
    PrintColumnPlan plan;
    std::vector<Wish> all;
    for (const auto& scale : scales) {
        plan.scale = scale;
        all = wishes(metrics, table, scale);
        if (together(all, &Wish::least, scale.gap()) <= width)
            break;
    }
    const double gap = plan.scale.gap();
    if (together(all, &Wish::comfort, gap) <= width) {
        for (auto& wish : all) {
            wish.least = wish.comfort;
            wish.whole = std::max(wish.whole, wish.comfort);
        }
    }
    for (std::size_t first = std::min<std::size_t>(1, all.size()); !all.empty();) {
        auto set = nextSet(all, first, width, gap);
        first = set.back() + 1;
        auto widths = shared(all, table, set, width, gap);
        plan.sets.push_back({.columns = std::move(set), .widths = std::move(widths)});
        if (first >= all.size())
            break;
    }
    return plan;
}
