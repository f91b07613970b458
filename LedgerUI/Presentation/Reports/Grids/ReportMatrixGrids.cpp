#include "LedgerUI/Presentation/Reports/Grids/ReportMatrixGrids.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using std::chrono::sys_days;
using std::chrono::year_month_day;
using Kind = ReportGridColumn::Kind;
using Level = ReportGridRow::Level;
using Tone = ReportGridCell::Tone;

namespace {

constexpr std::size_t monthsShown = 6;

/// A column of movements: its head and what it counts.
struct Moved {
    std::string_view head;
    std::set<Movement> movements;
};

const std::vector<Moved>& movedColumns()
{
    static const std::vector<Moved> all{
        {"movement.income", {Movement::income}},   {"movement.expense", {Movement::expense}},
        {"matrix.transfer", {Movement::transfer}}, {"matrix.exchange", {Movement::exchange}},
        {"movement.refund", {Movement::refund}},   {"matrix.capital", {Movement::capital, Movement::dividend}},
        {"movement.opening", {Movement::opening}}, {"movement.other", {Movement::other}},
    };
    return all;
}

std::int64_t netOf(const ReportMovements& moved, const std::set<Movement>& movements)
{
    std::int64_t net = 0; // within what the book has found to fit
    for (const auto movement : movements)
        net += moved[movement].netMinor();
    return net;
}

std::string_view purposeKey(const Account& account)
{
    if (account.archived)
        return "purpose.archived";
    if (account.purpose == AccountPurpose::employee)
        return "purpose.employee";
    return account.purpose == AccountPurpose::refund ? "purpose.refund" : "purpose.company";
}

class Matrix {
public:
    Matrix(const ReportBooks& books, const ReportQuery& query, std::string_view locale)
        : m_books(books), m_query(query), m_locale(locale)
    {
        for (const auto& account : books.snapshot->accounts)
            m_accounts.emplace(account.id, &account);
    }

    std::expected<ReportMatrixGrids, ReportError> made()
    {
        const auto period = m_books.book->matrix(scope(), {ReportRanges::of(m_query.period)});
        if (!period)
            return std::unexpected(period.error());
        auto months = ReportOverviews::chartMonths(m_query.period, m_query.today);
        months.erase(months.begin(), months.end() - monthsShown);
        std::vector<ReportRange> ranges;
        ranges.reserve(months.size());
        for (const auto& month : months)
            ranges.push_back({sys_days{month / 1}, sys_days{month / std::chrono::last}});
        const auto monthly = m_books.book->matrix(scope(), ranges);
        if (!monthly)
            return std::unexpected(monthly.error());
        return ReportMatrixGrids{.movements = movements(*period), .monthEnds = monthEnds(*monthly, months)};
    }

private:
    [[nodiscard]] ReportScope scope() const { return {.currency = m_query.currency, .accountIDs = m_query.accountIDs}; }
    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    /// What a figure of one account, or of all rows, is the sum of.
    [[nodiscard]] ReportFigure figure(const std::string& accountID, std::set<Movement> movements) const
    {
        auto of = scope();
        if (!accountID.empty())
            of.accountIDs = {{accountID}};
        return {.scope = std::move(of), .movements = std::move(movements)};
    }

    [[nodiscard]] ReportGridCell moved(std::int64_t minor, const std::string& accountID,
                                       const std::set<Movement>& movements) const
    {
        if (minor == 0)
            return {.text = QStringLiteral("–"),
                    .copied = QStringLiteral("0"),
                    .tone = Tone::quiet,
                    .backing = ReportBacking{m_query.period, figure(accountID, movements)},
                    .value = 0};
        const bool isIncome = minor > 0 && movements.contains(Movement::income);
        return ReportGrids::moneyCell(movementText(minor, m_query.currency, m_locale),
                                      isIncome ? Tone::incoming : Tone::plain,
                                      ReportBacking{m_query.period, figure(accountID, movements)});
    }

    /// A balance, opened with everything that led to it.
    [[nodiscard]] ReportGridCell balance(std::int64_t minor, const std::string& accountID, year_month_day last,
                                         Tone tone) const
    {
        return ReportGrids::moneyCell(balanceText(minor, m_query.currency, m_locale), tone,
                                      ReportGrids::balanceBacking(figure(accountID, {}), m_books.firstDay, last));
    }

    /// The columns in which something moved, or all of them.
    [[nodiscard]] std::vector<Moved> columnsShown(const ReportAccountMatrix& matrix) const
    {
        auto shown = movedColumns();
        if (m_query.hidesStillColumns)
            std::erase_if(shown, [&](const Moved& column) {
                return std::ranges::all_of(matrix.rows, [&](const auto& row) {
                    return std::ranges::all_of(column.movements, [&](Movement movement) {
                        return row.cells.front().movements[movement] == MovementFigure{};
                    });
                });
            });
        return shown;
    }

    [[nodiscard]] std::vector<ReportGridCell> movementCells(QString name, const std::string& accountID,
                                                            const ReportCell& cell,
                                                            const std::vector<Moved>& columns) const
    {
        const auto before = year_month_day{sys_days{m_query.period.firstDay()} - std::chrono::days{1}};
        std::vector<ReportGridCell> cells{{.text = std::move(name)},
                                          balance(cell.openingMinor, accountID, before, Tone::plain)};
        for (const auto& column : columns)
            cells.push_back(moved(netOf(cell.movements, column.movements), accountID, column.movements));
        cells.push_back(balance(cell.closingMinor, accountID, m_query.period.lastDay(), Tone::strong));
        return cells;
    }

    [[nodiscard]] ReportGrid movements(const ReportAccountMatrix& matrix) const
    {
        const auto shown = columnsShown(matrix);
        ReportGrid grid{.id = "accounts",
                        .name = word("table.movements"),
                        .columns = {{.id = "account", .head = word("account"), .kind = Kind::name},
                                    {.id = "opening", .head = word("opening")}},
                        .rows = {},
                        .currency = ReportGrids::currencyOf(m_query.currency, m_locale)};
        for (const auto& column : shown)
            grid.columns.push_back({.id = std::string{column.head}, .head = word(column.head)});
        grid.columns.push_back({.id = "closing", .head = word("closing")});
        fill(grid, matrix, [&](QString name, const std::string& id, const std::vector<ReportCell>& cells) {
            return movementCells(std::move(name), id, cells.front(), shown);
        });
        return grid;
    }

    [[nodiscard]] ReportGrid monthEnds(const ReportAccountMatrix& matrix,
                                       const std::vector<std::chrono::year_month>& months) const
    {
        ReportGrid grid{.id = "monthEnds",
                        .name = word("table.monthEnds"),
                        .columns = {{.id = "account", .head = word("account"), .kind = Kind::name}},
                        .rows = {},
                        .currency = ReportGrids::currencyOf(m_query.currency, m_locale)};
        const bool coversYears = months.front().year() != months.back().year();
        for (const auto& month : months)
            grid.columns.push_back({.id = LedgerDay::format(month / 1),
                                    .head = coversYears ? DayText::shortMonthOfYear(month, m_locale)
                                                        : DayText::shortMonth(month.month(), m_locale)});
        grid.columns.push_back({.id = "trend", .head = word("trend"), .kind = Kind::line, .isSpare = true});
        fill(grid, matrix, [&](QString name, const std::string& id, const std::vector<ReportCell>& cells) {
            std::vector<ReportGridCell> shown{{.text = std::move(name)}};
            ReportGridCell line;
            for (std::size_t at = 0; at < cells.size(); ++at) {
                const auto last = year_month_day{months[at] / std::chrono::last};
                shown.push_back(
                    balance(cells[at].closingMinor, id, last, at + 1 == cells.size() ? Tone::strong : Tone::plain));
                line.line.push_back(cells[at].closingMinor);
            }
            shown.push_back(std::move(line));
            return shown;
        });
        return grid;
    }

    /// A row for each account, after the heading of its purpose, and the total.
    template <class CellsOf>
    void fill(ReportGrid& grid, const ReportAccountMatrix& matrix, CellsOf&& cellsOf) const
    {
        for (const auto* purpose : {"purpose.company", "purpose.employee", "purpose.refund", "purpose.archived"}) {
            bool isHeaded = false;
            for (const auto& row : matrix.rows) {
                const auto& account = *m_accounts.at(row.accountID);
                if (purposeKey(account) != purpose)
                    continue;
                if (!std::exchange(isHeaded, true)) {
                    std::vector<ReportGridCell> heading(grid.columns.size());
                    heading.front() = {.text = word(purpose), .tone = Tone::strong};
                    grid.rows.push_back({.id = purpose, .cells = std::move(heading), .level = Level::heading});
                }
                grid.rows.push_back({.id = "account " + account.id,
                                     .cells = cellsOf(QString::fromStdString(account.name), account.id, row.cells)});
            }
        }
        if (!matrix.rows.empty())
            grid.rows.push_back(
                {.id = "total", .cells = cellsOf(word("total"), {}, matrix.totals), .level = Level::total});
    }

    const ReportBooks& m_books;
    const ReportQuery& m_query;
    std::string_view m_locale;
    std::map<std::string, const Account*, std::less<>> m_accounts;
};

}

std::expected<ReportMatrixGrids, ReportError> ReportMatrixGrids::of(const ReportBooks& books, const ReportQuery& query,
                                                                    std::string_view locale)
{
    return Matrix{books, query, locale}.made();
}
