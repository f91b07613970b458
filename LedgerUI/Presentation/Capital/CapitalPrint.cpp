#include "LedgerUI/Presentation/Capital/CapitalPrint.h"

#include <QStringList>

#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using RecordPrint::Ground;

QString text(const Ground& ground, std::string_view key)
{
    return wordIn(ground.locale, capitalWords(), key);
}

QString joined(QStringList parts, const QString& between)
{
    parts.removeAll(QString{});
    return parts.join(between);
}

/// Each version with a row per owner who has a share.
PrintedTable ownershipOf(const std::vector<OwnershipBar>& versions, const Ground& ground)
{
    PrintedTable table{.title = text(ground, "ownership.title"),
                       .columns = {{.head = text(ground, "column.owner"), .width = PrintedColumn::Width::rest},
                                   {.head = text(ground, "column.ownership"), .side = PrintedColumn::Side::end}},
                       .rows = {}};
    for (const auto& version : versions) {
        table.rows.push_back({.cells = {{joined({version.day, version.state}, QStringLiteral(" · "))}, {}},
                              .level = PrintedRow::Level::group});
        for (const auto& share : version.shares)
            table.rows.push_back({.cells = {{share.name}, {share.percent}}, .level = PrintedRow::Level::child});
    }
    return table;
}

PrintedTable baselineOf(const BaselineSection& baseline, const Ground& ground)
{
    std::vector<std::pair<QString, QString>> lines;
    lines.reserve(baseline.lines.size());
    for (const auto& line : baseline.lines)
        lines.emplace_back(line.label, line.value);
    auto table = RecordPrint::list(lines, QStringLiteral("%1: %2").arg(text(ground, "baseline.title"), baseline.title),
                                   baseline.second);
    if (!table.rows.empty())
        table.rows.back().level = PrintedRow::Level::total;
    return table;
}

}

std::optional<PrintedDocument> CapitalPrint::overview(const Ground& ground)
{
    const auto shown = CapitalOverviews::overview(ground.snapshot, ground.question, ground.moment.day, ground.locale);
    if (!shown)
        return std::nullopt;
    auto document = RecordPrint::document(ground, wordIn(ground.locale, workspaceWords(), "dividends"), "capital");
    RecordPrint::add(document, RecordPrint::table(shown->owners, shown->title,
                                                  joined({shown->since, shown->warning}, QStringLiteral("\n"))));
    RecordPrint::add(document, ownershipOf(shown->ownership, ground));
    RecordPrint::add(document, RecordPrint::table(shown->latest, text(ground, "latest.title")));
    for (const auto& note : shown->printedNotes)
        RecordPrint::addNote(document, note);
    return document;
}

std::optional<PrintedDocument> CapitalPrint::contributions(const Ground& ground)
{
    const auto shown = ContributionLists::list(ground.snapshot, ground.question, ground.locale);
    if (!shown)
        return std::nullopt;
    auto document = RecordPrint::document(ground, text(ground, "tab.contributions"), "contributions");
    RecordPrint::add(document, RecordPrint::table(shown->rows, {}, shown->warning));
    for (const auto& baseline : shown->baselines)
        RecordPrint::add(document, baselineOf(baseline, ground));
    RecordPrint::addNote(document, text(ground, "note.recorded"));
    return document;
}
