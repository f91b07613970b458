#include "LedgerUI/Presentation/Reports/ReportOverviewGrids.h"

#include <utility>

#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Presentation/Text/Words.h"

using Kind = ReportGridColumn::Kind;
using Tone = ReportGridCell::Tone;

namespace {

class CurrencyRow {
public:
    CurrencyRow(const CurrencyOverview& shown, const ReportOverviewGrids::Frame& frame) : m_shown(shown), m_frame(frame)
    {
    }

    [[nodiscard]] std::vector<ReportGridCell> cells() const
    {
        const auto before = std::chrono::sys_days{m_frame.period.firstDay()} - std::chrono::days{1};
        const std::chrono::sys_days last{m_frame.period.lastDay()};
        const bool isOpenEnded = m_frame.period.isAllTime();
        return {{.text = QString::fromStdString(m_shown.currency), .beside = m_shown.name, .tone = Tone::strong},
                balance(m_shown.opening, Tone::plain,
                        isOpenEnded ? std::nullopt : ReportOverviewGrids::daysUntil(m_frame, before)),
                moved(m_shown.income, m_shown.income.sign == MoneyText::Sign::plus ? Tone::incoming : Tone::plain,
                      ReportFigure::incomeMovements()),
                moved(m_shown.expense, Tone::plain, ReportFigure::expenseMovements()),
                moved(m_shown.net, Tone::strong, ReportFigure::netMovements()),
                moved(m_shown.other, Tone::quiet, ReportFigure::otherMovements()),
                balance(m_shown.closing, Tone::strong,
                        isOpenEnded ? m_frame.period : ReportOverviewGrids::daysUntil(m_frame, last)),
                {.text = {}, .line = m_shown.monthEnds}};
    }

private:
    [[nodiscard]] ReportFigure figure(std::set<Movement> movements) const
    {
        return {.scope = {.currency = m_shown.currency, .accountIDs = m_frame.accountIDs},
                .movements = std::move(movements)};
    }

    [[nodiscard]] ReportGridCell moved(const MoneyText& money, Tone tone, std::set<Movement> movements) const
    {
        return ReportGrids::moneyCell(money, tone,
                                      ReportBacking{.period = m_frame.period, .figure = figure(std::move(movements))});
    }

    [[nodiscard]] ReportGridCell balance(const MoneyText& money, Tone tone, const std::optional<Period>& days) const
    {
        std::optional<ReportBacking> backing;
        if (days)
            backing = ReportBacking{.period = *days, .figure = figure({})};
        return ReportGrids::moneyCell(money, tone, std::move(backing));
    }

    const CurrencyOverview& m_shown;
    const ReportOverviewGrids::Frame& m_frame;
};

std::vector<ReportGridColumn> currencyColumns(std::string_view locale)
{
    const auto column = [&](std::string_view key, Kind kind = Kind::figure) {
        return ReportGridColumn{.head = wordIn(locale, reportWords(), key), .kind = kind};
    };
    auto other = column("other");
    other.isSpare = true;
    return {column("currency", Kind::name),
            column("opening"),
            column("income"),
            column("expense"),
            column("net"),
            other,
            column("closing"),
            column("twelveMonths", Kind::line)};
}

}

std::optional<Period> ReportOverviewGrids::daysUntil(const Frame& frame, std::chrono::sys_days last)
{
    return Period::between(frame.firstDay, last);
}

ReportGrid ReportOverviewGrids::currencies(const ReportOverview& overview, const Frame& frame, std::string_view locale)
{
    ReportGrid grid{
        .name = wordIn(locale, reportWords(), "table.currencies"), .columns = currencyColumns(locale), .rows = {}};
    for (const auto& each : overview.currencies)
        grid.rows.push_back({.id = each.currency, .cells = CurrencyRow{each, frame}.cells()});
    return grid;
}

ReportGrid ReportOverviewGrids::largestExpenses(const ReportOverview& overview, const Frame& frame,
                                                std::string_view locale)
{
    ReportGrid grid{.name = wordIn(locale, reportWords(), "table.expenses"),
                    .columns = {{.head = wordIn(locale, reportWords(), "category"), .kind = Kind::name},
                                {.head = wordIn(locale, reportWords(), "amount")}},
                    .rows = {}};
    for (const auto& each : overview.largestExpenses) {
        std::optional<ReportBacking> backing;
        if (each.categoryID)
            backing = ReportBacking{.period = frame.period,
                                    .figure = {.scope = {.currency = overview.currency, .accountIDs = frame.accountIDs},
                                               .movements = ReportFigure::expenseMovements(),
                                               .lines = ReportFigure::Lines::categoryAlone,
                                               .categoryID = *each.categoryID}};
        auto amount = ReportGrids::moneyCell(each.amount, Tone::plain, backing);
        amount.beside = each.share;
        const auto role = each.categoryID ? ChartRole::expense : ChartRole::other;
        grid.rows.push_back({.id = each.categoryID ? "category " + *each.categoryID : "rest",
                             .cells = {{.text = each.name, .bar = ReportBar{each.fraction, role}, .backing = backing},
                                       std::move(amount)}});
    }
    return grid;
}
