#include "LedgerUI/Presentation/Reports/Grids/ReportOverviewGrids.h"

#include <algorithm>
#include <utility>

#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using Kind = ReportGridColumn::Kind;
using Tone = ReportGridCell::Tone;

namespace {

class CurrencyRow {
public:
    CurrencyRow(const CurrencyOverview& shown, const ReportOverviewGrids::Frame& frame, std::string_view locale)
        : m_shown(shown), m_frame(frame), m_locale(locale)
    {
    }

    [[nodiscard]] std::vector<ReportGridCell> cells() const
    {
        const auto before = std::chrono::sys_days{m_frame.period.firstDay()} - std::chrono::days{1};
        return {{.text = QString::fromStdString(m_shown.currency), .beside = m_shown.name, .tone = Tone::strong},
                balance(m_shown.opening, Tone::plain, before),
                moved(m_shown.income, m_shown.income.sign == MoneyText::Sign::plus ? Tone::incoming : Tone::plain,
                      ReportFigure::incomeMovements()),
                moved(m_shown.expense, Tone::plain, ReportFigure::expenseMovements()),
                moved(m_shown.net, Tone::strong, ReportFigure::netMovements()),
                moved(m_shown.other, Tone::quiet, ReportFigure::otherMovements()),
                balance(m_shown.closing, Tone::strong, m_frame.period.lastDay()),
                {.text = {}, .spoken = spokenLine(), .line = m_shown.monthEnds}};
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

    [[nodiscard]] ReportGridCell balance(const MoneyText& money, Tone tone, std::chrono::sys_days last) const
    {
        return ReportGrids::moneyCell(money, tone, ReportGrids::balanceBacking(figure({}), m_frame.firstDay, last));
    }

    /// What the drawing of the month ends tells, in words.
    [[nodiscard]] QString spokenLine() const
    {
        const auto& ends = m_shown.monthEnds;
        if (ends.empty())
            return {};
        const auto said = [&](std::int64_t minor) {
            return balanceText(minor, m_shown.currency, m_locale).spoken.toStdString();
        };
        const auto [least, most] = std::ranges::minmax(ends);
        return wordIn(m_locale, reportWords(), "twelveMonths.spoken",
                      {said(ends.front()), said(ends.back()), said(least), said(most)});
    }

    const CurrencyOverview& m_shown;
    const ReportOverviewGrids::Frame& m_frame;
    std::string_view m_locale;
};

std::vector<ReportGridColumn> currencyColumns(std::string_view locale)
{
    const auto column = [&](std::string_view key, Kind kind = Kind::figure) {
        return ReportGridColumn{.id = std::string{key}, .head = wordIn(locale, reportWords(), key), .kind = kind};
    };
    auto other = column("other");
    other.isSpare = true;
    auto currency = column("currency", Kind::name);
    currency.beside = wordIn(locale, reportWords(), "currency.name");
    return {currency,          column("opening"),
            column("income"),  column("expense"),
            column("net"),     other,
            column("closing"), column("twelveMonths", Kind::line)};
}

struct Largest {
    std::string_view id;
    std::string_view name; // a key of the words
    const std::vector<ShareRow>& rows;
    ChartRole role;
    ReportFigure figure; // of all of them
};

ReportGrid largest(const Largest& asked, const Period& period, std::string_view locale)
{
    ReportGrid grid{.id = std::string{asked.id},
                    .name = wordIn(locale, reportWords(), asked.name),
                    .columns = {{.head = wordIn(locale, reportWords(), "category"), .kind = Kind::name},
                                {.head = wordIn(locale, reportWords(), "amount"),
                                 .beside = wordIn(locale, reportWords(), "share")}},
                    .rows = {},
                    .currency = ReportGrids::currencyOf(asked.figure.scope.currency, locale)};
    for (const auto& each : asked.rows) {
        ReportBacking backing{.period = period, .figure = asked.figure};
        backing.figure.lines =
            each.categoryID ? ReportFigure::Lines::categoryAlone : ReportFigure::Lines::severalCategories;
        backing.figure.categoryID = each.categoryID.value_or(std::string{});
        backing.figure.categoryIDs = each.rest;
        auto amount = ReportGrids::moneyCell(each.amount, Tone::plain, backing);
        amount.beside = each.share;
        const auto role = each.categoryID ? asked.role : ChartRole::other;
        grid.rows.push_back(
            {.id = each.categoryID ? "category " + *each.categoryID : "rest",
             .cells = {{.text = each.name, .bar = ReportBar{each.fraction, role}, .backing = std::move(backing)},
                       std::move(amount)}});
    }
    return grid;
}

}

ReportGrid ReportOverviewGrids::currencies(const ReportOverview& overview, const Frame& frame, std::string_view locale)
{
    ReportGrid grid{.id = "currencies",
                    .name = wordIn(locale, reportWords(), "table.currencies"),
                    .columns = currencyColumns(locale),
                    .rows = {}};
    for (const auto& each : overview.currencies)
        grid.rows.push_back(
            {.id = each.currency, .cells = CurrencyRow{each, frame, locale}.cells(), .currency = each.currency});
    return grid;
}

ReportGrid ReportOverviewGrids::months(const ReportOverview& overview, const Frame& frame, std::string_view locale)
{
    std::vector<Period> months;
    months.reserve(overview.months.size());
    for (const auto month : overview.months)
        months.push_back(Period::containing(Period::Span::month, month / 1));
    auto grid = ReportPeriodGrids::table(overview.monthly, months, frame.firstDay, locale);
    grid.id = "months";
    grid.name = wordIn(locale, reportWords(), "table.months");
    return grid;
}

ReportGrid ReportOverviewGrids::largestExpenses(const ReportOverview& overview, const Frame& frame,
                                                std::string_view locale)
{
    return largest({.id = "expenses",
                    .name = "table.expenses",
                    .rows = overview.largestExpenses,
                    .role = ChartRole::expense,
                    .figure = {.scope = {.currency = overview.currency, .accountIDs = frame.accountIDs},
                               .movements = ReportFigure::expenseMovements()}},
                   frame.period, locale);
}

ReportGrid ReportOverviewGrids::largestIncome(const ReportOverview& overview, const Frame& frame,
                                              std::string_view locale)
{
    return largest({.id = "income",
                    .name = "table.largestIncome",
                    .rows = overview.largestIncome,
                    .role = ChartRole::income,
                    .figure = {.scope = {.currency = overview.currency, .accountIDs = frame.accountIDs},
                               .movements = ReportFigure::incomeMovements()}},
                   frame.period, locale);
}
