#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"

#include <utility>

#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using std::chrono::sys_days;
using Kind = ReportGridColumn::Kind;
using Tone = ReportGridCell::Tone;

namespace {

/// Periods stand in the order of their first days.
std::int64_t dayCount(const Period& period)
{
    return sys_days{period.firstDay()}.time_since_epoch().count();
}

class PeriodRows {
public:
    PeriodRows(const ReportScope& scope, std::chrono::year_month_day firstDay, std::string_view locale)
        : m_scope(scope), m_firstDay(firstDay), m_locale(locale)
    {
    }

    [[nodiscard]] ReportGridRow row(const ReportPeriod& figures, const Period& period) const
    {
        const auto income = figures.movements.incomeMinor();
        const auto expense = figures.movements.expenseMinor();
        return {
            .id = ReportPeriodGrids::idOf(period),
            .cells = {{.text = periodLabel(period, m_locale), .value = dayCount(period)},
                      moved(income, income > 0 ? Tone::incoming : Tone::plain, period, ReportFigure::incomeMovements()),
                      moved(expense, Tone::plain, period, ReportFigure::expenseMovements()),
                      moved(income + expense, Tone::strong, period, ReportFigure::netMovements()),
                      closing(figures.closingMinor, period)}};
    }

private:
    [[nodiscard]] ReportGridCell moved(std::int64_t minor, Tone tone, const Period& period,
                                       std::set<Movement> movements) const
    {
        return ReportGrids::moneyCell(
            movementText(minor, m_scope.currency, m_locale), tone,
            ReportBacking{.period = period, .figure = {.scope = m_scope, .movements = std::move(movements)}});
    }

    [[nodiscard]] ReportGridCell closing(std::int64_t minor, const Period& period) const
    {
        return ReportGrids::moneyCell(balanceText(minor, m_scope.currency, m_locale), Tone::plain,
                                      ReportGrids::balanceBacking({.scope = m_scope}, m_firstDay, period.lastDay()));
    }

    const ReportScope& m_scope;
    std::chrono::year_month_day m_firstDay;
    std::string_view m_locale;
};

}

std::string ReportPeriodGrids::idOf(const Period& period)
{
    return std::to_string(dayCount(period));
}

ReportGrid ReportPeriodGrids::table(const Report& report, const std::vector<Period>& periods,
                                    std::chrono::year_month_day firstDay, std::string_view locale)
{
    const auto word = [&](std::string_view key) { return wordIn(locale, reportWords(), key); };
    ReportGrid grid{.id = "periods",
                    .name = word("table.periods"),
                    .columns = {{.id = "period", .head = word("period"), .kind = Kind::name},
                                {.id = "income", .head = word("income")},
                                {.id = "expense", .head = word("expense")},
                                {.id = "net", .head = word("net"), .isSpare = true},
                                {.id = "closing", .head = word("closing")}},
                    .rows = {},
                    .currency = ReportGrids::currencyOf(report.scope.currency, locale)};
    const PeriodRows rows{report.scope, firstDay, locale};
    for (auto at = report.periods.size(); at-- > 0;)
        grid.rows.push_back(rows.row(report.periods[at], periods[at]));
    return grid;
}
