#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <QStringList>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// Small books for the tables of reports, and their rows as texts.
namespace ReportGridSample {

using namespace std::chrono_literals;
using Span = Period::Span;
using Texts = std::vector<std::string>;

inline constexpr auto today = 2026y / 11 / 20;
inline constexpr auto english = "en-US";

inline Period month(std::chrono::year_month_day day)
{
    return Period::containing(Span::month, day);
}

inline Period between(std::chrono::year_month_day first, int days)
{
    const auto period = Period::between(first, std::chrono::sys_days{first} + std::chrono::days{days - 1});
    require(period.has_value(), "the days are in order");
    return *period;
}

/// Two months of a shop in dollars, and what it spent on the year before.
inline SnapshotBuilder books()
{
    return snapshot()
        .account("bank", {"USD"})
        .account("cash", {"USD", "IDR"})
        .category("sales", "income", "Sales")
        .category("premises", "expense", "Premises")
        .category("rent", "expense", "Rent", "premises")
        .category("power", "expense", "Power", "premises")
        .category("wages", "expense", "Wages")
        .category("stamps", "expense", "Stamps")
        .category("fees", "expense", "Fees")
        .expense("l1", "2025-11-10", "bank", "USD", 10'000, "rent")
        .income("o1", "2026-10-02", "bank", "USD", 40'000, "sales")
        .expense("o2", "2026-10-03", "bank", "USD", 20'000, "rent")
        .expense("o3", "2026-10-04", "bank", "USD", 5'000, "power")
        .income("n1", "2026-11-02", "bank", "USD", 100'000, "sales")
        .expense("n2", "2026-11-03", "bank", "USD", 25'000, "rent")
        .expense("n3", "2026-11-05", "bank", "USD", 60'000, "wages")
        .expense("n4", "2026-11-06", "cash", "USD", 3'000, "premises")
        .expense("n5", "2026-11-07", "bank", "USD", 100, "stamps")
        .expense("n6", "2026-11-08", "bank", "USD", 100, "fees")
        .transfer("n7", "2026-11-09", "bank", "cash", "USD", 7'000)
        .income("n8", "2026-11-10", "cash", "IDR", 900'000, "sales");
}

inline ReportBooks heldOf(const SnapshotBuilder& builder)
{
    return ReportBooks{builder.share()};
}

/// Each row as a person reads it, cell by cell.
inline Texts read(const ReportGrid& grid)
{
    Texts rows;
    for (const auto& row : grid.rows) {
        QStringList cells;
        for (const auto& cell : row.cells)
            cells << (cell.beside.isEmpty() ? cell.text : cell.text + QLatin1Char{' '} + cell.beside);
        rows.push_back(cells.join(QStringLiteral(" | ")).replace(QChar::Nbsp, QLatin1Char{' '}).toStdString());
    }
    return rows;
}

}
