#pragma once

#include <string_view>

#include "LedgerUI/Presentation/Print/PrintHead.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// What documents of capital and dividends are made of.
namespace RecordPrint {

struct Ground {
    const LedgerSnapshot& snapshot;
    CapitalQuestion question;
    std::string locale;
    PrintMoment moment;
};

/// A document without tables yet: whose it is, of which period and currency, and of which moment.
PrintedDocument document(const Ground& ground, const QString& title, std::string_view fileName);

/// A table as the screen shows it, its sums below.
PrintedTable table(const RecordRows& rows, const QString& title = {}, const QString& note = {});
/// Names and values, without heads.
PrintedTable list(const std::vector<std::pair<QString, QString>>& values, const QString& title = {},
                  const QString& note = {});

/// Adds a table that has rows.
void add(PrintedDocument& document, PrintedTable table);
/// Adds what is to be known of the whole document, unless it is said already or empty.
void addNote(PrintedDocument& document, const QString& note);

}
