#include "LedgerUI/Presentation/Reports/Output/ReportPrint.h"

#include "LedgerUI/Presentation/Reports/Output/ReportExport.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Kind = ReportGridColumn::Kind;

PrintedRow::Level levelOf(ReportGridRow::Level level)
{
    switch (level) {
    case ReportGridRow::Level::plain:
        return PrintedRow::Level::plain;
    case ReportGridRow::Level::heading:
        return PrintedRow::Level::group;
    case ReportGridRow::Level::parent:
        return PrintedRow::Level::parent;
    case ReportGridRow::Level::child:
        return PrintedRow::Level::child;
    case ReportGridRow::Level::total:
        return PrintedRow::Level::total;
    }
    return PrintedRow::Level::plain;
}

}

PrintedTable ReportPrint::table(const ReportGrid& grid, const QString& note)
{
    PrintedTable table{.title = grid.name, .columns = {}, .rows = {}, .note = note};
    for (const auto& column : grid.columns) {
        if (column.kind == Kind::line)
            continue;
        const bool isFigure = column.kind == Kind::figure;
        const bool wraps = column.kind == Kind::name;
        table.columns.push_back({.head = column.head,
                                 .side = isFigure ? PrintedColumn::Side::end : PrintedColumn::Side::start,
                                 .width = wraps ? PrintedColumn::Width::rest : PrintedColumn::Width::content});
    }
    for (const auto& row : grid.rows) {
        PrintedRow printed{.cells = {}, .level = levelOf(row.level)};
        for (std::size_t at = 0; at < row.cells.size(); ++at) {
            if (grid.columns[at].kind != Kind::line)
                printed.cells.push_back({.text = row.cells[at].text, .second = row.cells[at].beside});
        }
        table.rows.push_back(std::move(printed));
    }
    return table;
}

QString ReportPrint::fileName(const ReportSheet& sheet, ReportPart part, const PrintMoment& moment)
{
    return QStringLiteral("tallyfold-report-%1-%2")
        .arg(qString(ReportParts::idOf(part)), PrintHead::days(sheet.query.period, moment));
}

PrintedDocument ReportPrint::document(const ReportSheet& sheet, ReportPart part, const PrintMoment& moment)
{
    const auto& locale = sheet.locale;
    const auto word = [&](std::string_view key) { return wordIn(locale, reportWords(), key); };
    PrintedDocument document{
        .locale = locale,
        .company = qString(sheet.books->snapshot->company.name),
        .title = word(part == ReportPart::summary ? "summary" : "tab." + std::string{ReportParts::idOf(part)}),
        .fileName = fileName(sheet, part, moment)};
    document.facts = ReportExport::scope(sheet, part);
    document.facts.push_back(PrintHead::asOf(moment, locale));
    const auto& chart = part == ReportPart::income ? sheet.trend.chart : sheet.overview.chart;
    const bool hasChart = part == ReportPart::income || part == ReportPart::overview;
    if (hasChart && ChartLayouts::hasMovement(chart))
        document.charts.push_back({.title = word(part == ReportPart::income ? "trend.title" : "chart") +
                                            QStringLiteral(" · ") + qString(chart.currency),
                                   .data = chart,
                                   .books = sheet.books->snapshot});
    for (const auto* each : ReportParts::tables(sheet, part)) {
        auto printed =
            each->id == FundMovementGrids::tableID
                ? table(FundMovementGrids::of(*sheet.books, sheet.query, locale, FundMovementGrids::all).list)
                : table(*each);
        const bool isOfOneCurrency =
            part == ReportPart::overview ? each != &sheet.currencies : each == &sheet.largestExpenses;
        if (isOfOneCurrency)
            printed.title += QStringLiteral(" · ") + qString(sheet.query.currency);
        if (each == &sheet.trend.categories)
            printed.title += QStringLiteral(" · ") + sheet.trend.of;
        document.tables.push_back(std::move(printed));
    }
    if (part == ReportPart::income)
        document.notes.push_back(word("categories.hint"));
    if (part == ReportPart::summary)
        document.notes.push_back(word("summary.scope"));
    return document;
}
