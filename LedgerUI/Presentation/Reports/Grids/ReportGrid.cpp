#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Csv/CsvDocument.h"

namespace {

/// The name of the row that this one is counted in; empty for one that stands alone.
QString parentOf(const ReportGrid& grid, const ReportGridRow& row)
{
    const auto found = std::ranges::find(grid.rows, row.parentID, &ReportGridRow::id);
    return row.parentID.empty() || found == grid.rows.end() ? QString{} : found->cells.front().text;
}

/// What a row says in columns that have words.
QStringList textsOf(const ReportGrid& grid, const ReportGridRow& row)
{
    QStringList texts;
    for (std::size_t column = 0; column < grid.columns.size(); ++column) {
        const auto& cell = row.cells[column];
        if (grid.columns[column].kind == ReportGridColumn::Kind::line)
            continue;
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
    for (const auto& column : grid.columns) {
        if (column.kind == ReportGridColumn::Kind::line)
            continue;
        heads << column.head;
        if (!column.beside.isEmpty())
            heads << column.beside;
        if (&column == grid.columns.data() && !grid.partOf.isEmpty())
            heads << grid.partOf;
    }
    return heads;
}

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
