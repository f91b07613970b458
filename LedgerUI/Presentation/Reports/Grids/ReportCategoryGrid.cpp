#include "LedgerUI/Presentation/Reports/Grids/ReportCategoryGrid.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportTrend.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using Kind = ReportGridColumn::Kind;
using Level = ReportGridRow::Level;
using Lines = ReportFigure::Lines;
using Tone = ReportGridCell::Tone;

namespace {

/// One category's money with that of the periods that it is compared with, such that more is more on either side.
struct Sum {
    std::int64_t now = 0;
    std::int64_t before = 0;
    std::int64_t lastYear = 0;
};

using Sums = std::map<std::string, Sum, std::less<>>;

class Categories {
public:
    Categories(const ReportBooks& books, const ReportQuery& query, const Period& period, std::string_view locale)
        : m_books(books), m_query(query), m_period(period), m_locale(locale), m_directory{books.snapshot->categories}
    {
    }

    std::expected<ReportGrid, ReportError> made() &&
    {
        const std::pair<std::optional<Period>, std::int64_t Sum::*> looks[] = {
            {m_period, &Sum::now},
            {m_period.previous(), &Sum::before},
            {ReportTrends::yearBefore(m_period), &Sum::lastYear}};
        for (const auto& [period, field] : looks) {
            if (!period)
                continue;
            const auto report = m_books.book->report(scope(), {ReportRanges::of(*period)});
            if (!report)
                return std::unexpected(report.error());
            take(report->periods.front(), field);
        }
        m_grid = {.id = "categories",
                  .name = word(isExpense() ? "table.expenseCategories" : "table.incomeCategories"),
                  .columns = {{.id = "category", .head = word("category"), .kind = Kind::name},
                              {.id = "amount", .head = word("amount")},
                              {.id = "share", .head = word("share")},
                              {.id = "change.before", .head = word("change.before"), .isSpare = true},
                              {.id = "change.lastYear", .head = word("change.lastYear"), .isSpare = true}},
                  .rows = {},
                  .partOf = word("partOf"),
                  .currency = ReportGrids::currencyOf(m_query.currency, m_locale)};
        addRows();
        return std::move(m_grid);
    }

private:
    [[nodiscard]] bool isExpense() const { return m_query.side == Movement::expense; }
    [[nodiscard]] ReportScope scope() const { return {.currency = m_query.currency, .accountIDs = m_query.accountIDs}; }

    void take(const ReportPeriod& figures, std::int64_t Sum::* field)
    {
        const auto add = [&](Sums& sums, const ReportCategoryLine& line) {
            if (line.side == m_query.side)
                sums[line.categoryID].*field = isExpense() ? -line.netMinor() : line.netMinor();
        };
        for (const auto& line : figures.categories)
            add(m_alone, line);
        for (const auto& line : figures.parentCategories)
            add(m_tops, line);
        m_total.*field = isExpense() ? -figures.movements.expenseMinor() : figures.movements.incomeMinor();
    }

    void addRows()
    {
        for (const auto& [id, sum] : m_tops)
            m_whole += std::max<std::int64_t>(0, sum.now); // within what the book has found to fit
        for (const auto& [_, sum] : m_tops)
            m_most = std::max(m_most, sum.now);
        for (const auto& id : largestFirst(m_tops)) {
            const auto children = childrenOf(id);
            const bool isParent = !children.empty();
            m_grid.rows.push_back(row(id, m_tops.at(id), isParent ? Level::parent : Level::plain,
                                      isParent ? Lines::categoryWithChildren : Lines::categoryAlone));
            for (const auto& child : children) {
                auto shown = row(child, m_alone.at(child), Level::child, Lines::categoryAlone);
                shown.parentID = m_grid.rows[place(id)].id;
                if (child == id) // what was booked to the parent itself
                    shown.id += " alone";
                m_grid.rows.push_back(std::move(shown));
            }
        }
        if (m_grid.rows.empty())
            return;
        auto total = row({}, m_total, Level::total, Lines::all);
        total.id = "total";
        total.cells.front() = {.text = word(isExpense() ? "total.expense" : "total.income")};
        total.cells[2].text = ReportOverviews::shareText(m_whole, m_whole, m_locale);
        total.cells[2].tone = Tone::plain;
        total.cells[2].bar.reset();
        m_grid.rows.push_back(std::move(total));
    }

    [[nodiscard]] std::size_t place(const std::string& id) const
    {
        const auto found = std::ranges::find(m_grid.rows, "category " + id, &ReportGridRow::id);
        return static_cast<std::size_t>(found - m_grid.rows.begin());
    }

    static std::vector<std::string> largestFirst(const Sums& sums)
    {
        std::vector<std::string> ids;
        for (const auto& [id, sum] : sums)
            ids.push_back(id);
        std::ranges::sort(ids, [&](const auto& left, const auto& right) {
            const auto leftNow = sums.at(left).now;
            const auto rightNow = sums.at(right).now;
            return leftNow != rightNow ? leftNow > rightNow : left < right;
        });
        return ids;
    }

    /// Those below a top-level category, itself among them where it was booked to; none where it stands alone.
    [[nodiscard]] std::vector<std::string> childrenOf(const std::string& top) const
    {
        Sums below;
        for (const auto& [id, sum] : m_alone) {
            if (topOf(id) == top)
                below.emplace(id, sum);
        }
        if (below.size() == 1 && below.begin()->first == top)
            return {};
        return largestFirst(below);
    }

    [[nodiscard]] std::string topOf(const std::string& id) const
    {
        const auto* category = m_directory.find(id);
        for (std::size_t step = 0; category && step < m_books.snapshot->categories.size(); ++step) {
            const auto* parent = m_directory.parent(*category);
            if (!parent)
                return category->id;
            category = parent;
        }
        return id;
    }

    [[nodiscard]] QString nameOf(const std::string& id) const
    {
        const auto* category = m_directory.find(id);
        return category ? qString(m_directory.pathName(*category, m_locale)) : word("noCategory");
    }

    [[nodiscard]] ReportGridRow row(const std::string& id, const Sum& sum, Level level, Lines lines) const
    {
        const ReportBacking backing{
            .period = m_period,
            .figure = {.scope = scope(),
                       .movements = isExpense() ? ReportFigure::expenseMovements() : ReportFigure::incomeMovements(),
                       .lines = lines,
                       .categoryID = id}};
        const bool folds = level == Level::parent;
        ReportGridCell name{.text = nameOf(id)};
        if (!folds)
            name.backing = backing;
        ReportGridCell share{.text = QStringLiteral("–"), .tone = Tone::quiet, .backing = backing};
        if (sum.now > 0) {
            share.value = sum.now;
            share.text = ReportOverviews::shareText(sum.now, m_whole, m_locale);
            share.bar = ReportBar{.fraction = static_cast<double>(sum.now) / static_cast<double>(m_most),
                                  .role = isExpense() ? ChartRole::expense : ChartRole::income};
        }
        return {
            .id = "category " + id,
            .cells = {std::move(name),
                      ReportGrids::moneyCell(balanceText(sum.now, m_query.currency, m_locale), Tone::plain, backing),
                      std::move(share), change(sum.before, sum.now, m_period.previous(), backing),
                      change(sum.lastYear, sum.now, ReportTrends::yearBefore(m_period), backing)},
            .level = level};
    }

    /// Opens what it is compared with, which no other figure shows; where there was nothing, what is new.
    [[nodiscard]] ReportGridCell change(std::int64_t before, std::int64_t now, const std::optional<Period>& compared,
                                        ReportBacking backing) const
    {
        if (!compared)
            return {.text = QStringLiteral("–"), .tone = Tone::quiet};
        if (before != 0)
            backing.period = *compared;
        return {.text = ReportTrends::changeText(before, now, m_locale),
                .spoken = before == 0 ? QString{} : spokenChange(before, now, *compared),
                .tone = Tone::quiet,
                .backing = std::move(backing),
                .value = ReportTrends::changeTenths(before, now)};
    }

    /// "+2.6 %, against 112,640,000 in October 2026".
    [[nodiscard]] QString spokenChange(std::int64_t before, std::int64_t now, const Period& compared) const
    {
        return wordIn(m_locale, reportWords(), "change.spoken",
                      {ReportTrends::changeText(before, now, m_locale).toStdString(),
                       balanceText(before, m_query.currency, m_locale).spoken.toStdString(),
                       periodLabel(compared, m_locale).toStdString()});
    }

    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    const ReportBooks& m_books;
    const ReportQuery& m_query;
    Period m_period;
    std::string_view m_locale;
    CategoryDirectory m_directory;
    Sums m_alone;
    Sums m_tops;
    Sum m_total;
    std::int64_t m_whole = 0;
    std::int64_t m_most = 1;
    ReportGrid m_grid;
};

}

std::expected<ReportGrid, ReportError> ReportCategoryGrids::categories(const ReportBooks& books,
                                                                       const ReportQuery& query, const Period& period,
                                                                       std::string_view locale)
{
    return Categories{books, query, period, locale}.made();
}
