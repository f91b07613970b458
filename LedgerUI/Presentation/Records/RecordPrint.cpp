#include "LedgerUI/Presentation/Records/RecordPrint.h"

#include <QStringList>

#include "LedgerUI/Presentation/Text/Words.h"

namespace {

using Side = PrintedColumn::Side;
using Width = PrintedColumn::Width;

PrintedRow rowOf(const RecordRow& row, PrintedRow::Level level)
{
    PrintedRow printed{.cells = {}, .level = level};
    for (const auto& cell : row.cells) {
        QStringList second{cell.chip, cell.second};
        second.removeAll(QString{});
        printed.cells.push_back({.text = cell.text, .second = second.join(QStringLiteral(" · "))});
    }
    return printed;
}

}

PrintedDocument RecordPrint::document(const Ground& ground, const QString& title, std::string_view fileName)
{
    const auto& question = ground.question;
    return {
        .locale = ground.locale,
        .company = qString(ground.snapshot.company.name),
        .title = title,
        .facts = {PrintHead::period(question.period, ground.locale),
                  PrintHead::currency(question.currency, ground.locale), PrintHead::asOf(ground.moment, ground.locale)},
        .tables = {},
        .notes = {},
        .fileName =
            QStringLiteral("tallyfold-%1-%2-%3")
                .arg(qString(fileName), qString(question.currency), PrintHead::days(question.period, ground.moment))};
}

PrintedTable RecordPrint::table(const RecordRows& rows, const QString& title, const QString& note)
{
    PrintedTable printed{.title = title, .columns = {}, .rows = {}, .note = note};
    for (const auto& column : rows.columns)
        printed.columns.push_back({.head = column.head,
                                   .side = column.isAtRight ? Side::end : Side::start,
                                   .width = column.room == ColumnRoom::stretches ? Width::rest : Width::content});
    for (const auto& row : rows.rows)
        printed.rows.push_back(rowOf(row, PrintedRow::Level::plain));
    if (rows.total)
        printed.rows.push_back(rowOf(*rows.total, PrintedRow::Level::total));
    return printed;
}

PrintedTable RecordPrint::list(const std::vector<std::pair<QString, QString>>& values, const QString& title,
                               const QString& note)
{
    PrintedTable printed{.title = title,
                         .columns = {{.head = {}, .width = Width::rest}, {.head = {}, .side = Side::end}},
                         .rows = {},
                         .note = note};
    for (const auto& [name, value] : values)
        printed.rows.push_back({.cells = {{name}, {value}}});
    return printed;
}

void RecordPrint::add(PrintedDocument& document, PrintedTable table)
{
    if (!table.rows.empty())
        document.tables.push_back(std::move(table));
}

void RecordPrint::addNote(PrintedDocument& document, const QString& note)
{
    if (!note.isEmpty())
        document.notes.push_back(note);
}
