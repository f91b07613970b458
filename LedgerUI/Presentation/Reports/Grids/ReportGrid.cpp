#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// The name of the row that this one is counted in; empty for one that stands alone.
QString parentOf(const ReportGrid& grid, const ReportGridRow& row)
{
    const auto found = std::ranges::find(grid.rows, row.parentID, &ReportGridRow::id);
    return row.parentID.empty() || found == grid.rows.end() ? QString{} : found->cells.front().text;
}

/// Whether the currency of the table is said before this column.
bool followsCurrency(const ReportGrid& grid, std::size_t column)
{
    const auto first = std::ranges::find(grid.columns, ReportGridColumn::Kind::figure, &ReportGridColumn::kind);
    return grid.currency && static_cast<std::ptrdiff_t>(column) == first - grid.columns.begin();
}

/// What a row says in columns that have words.
QStringList textsOf(const ReportGrid& grid, const ReportGridRow& row)
{
    QStringList texts;
    for (std::size_t column = 0; column < grid.columns.size(); ++column) {
        const auto& cell = row.cells[column];
        if (grid.columns[column].kind == ReportGridColumn::Kind::line)
            continue;
        if (followsCurrency(grid, column))
            texts << (row.level == ReportGridRow::Level::heading ? QString{} : grid.currency->code);
        texts << (cell.copied.isEmpty() ? cell.text : cell.copied);
        if (!grid.columns[column].beside.isEmpty())
            texts << cell.beside;
        if (column == 0 && !grid.partOf.isEmpty())
            texts << parentOf(grid, row);
    }
    return texts;
}

QStringList headsOf(const ReportGrid& grid)
{
    QStringList heads;
    for (std::size_t at = 0; at < grid.columns.size(); ++at) {
        const auto& column = grid.columns[at];
        if (column.kind == ReportGridColumn::Kind::line)
            continue;
        if (followsCurrency(grid, at))
            heads << grid.currency->head;
        heads << column.head;
        if (!column.beside.isEmpty())
            heads << column.beside;
        if (at == 0 && !grid.partOf.isEmpty())
            heads << grid.partOf;
    }
    return heads;
}

}

ReportGridCurrency ReportGrids::currencyOf(std::string_view code, std::string_view locale)
{
    return {.head = wordIn(locale, reportWords(), "currency"), .code = qString(code)};
}

ReportGridCell ReportGrids::moneyCell(const MoneyText& money, ReportGridCell::Tone tone,
                                      std::optional<ReportBacking> backing)
{
    return {.text = money.figure(),
            .spoken = money.spoken,
            .copied = money.plain(),
            .tone = tone,
            .backing = std::move(backing),
            .value = money.isKnown() ? std::optional{money.minor} : std::nullopt};
}

std::optional<ReportBacking> ReportGrids::balanceBacking(ReportFigure figure, std::chrono::sys_days first,
                                                         std::chrono::sys_days last)
{
    const bool isEndless = last >= std::chrono::sys_days{Period::allTime().lastDay()};
    const auto days = isEndless ? Period::allTime() : Period::between(first, last);
    if (!days)
        return std::nullopt;
    return ReportBacking{.period = *days, .figure = std::move(figure)};
}

QString ReportGrids::spreadsheetText(const ReportGrid& grid, const std::vector<int>& rows)
{
    QStringList lines{headsOf(grid).join(QLatin1Char('\t'))};
    const auto add = [&](const ReportGridRow& row) {
        auto texts = textsOf(grid, row);
        for (auto& text : texts)
            text = text.simplified();
        lines << texts.join(QLatin1Char('\t'));
    };
    for (const int row : rows)
        add(grid.rows[static_cast<std::size_t>(row)]);
    if (rows.empty())
        std::ranges::for_each(grid.rows, add);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

std::string ReportGrids::csvText(const ReportGrid& grid)
{
    std::vector<std::string> heads;
    for (const auto& head : headsOf(grid))
        heads.push_back(head.toStdString());
    const std::vector<std::string_view> header{heads.begin(), heads.end()};
    CsvDocument document{header};
    for (const auto& row : grid.rows) {
        for (const auto& text : textsOf(grid, row))
            document.field(text.toStdString());
        document.endRecord();
    }
    return document.take();
}
