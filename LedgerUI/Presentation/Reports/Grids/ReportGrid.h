#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Reports/ReportFigure.h"
#include "LedgerUI/Presentation/Charts/ChartLayout.h"
#include "LedgerUI/Presentation/Reports/ReportSort.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// The entries behind a figure: those of the period that it is the sum of.
struct ReportBacking {
    Period period;
    ReportFigure figure;

    bool operator==(const ReportBacking&) const = default;
};

/// A bar in a cell, as long as its part of the longest one.
struct ReportBar {
    double fraction = 0;
    ChartRole role = ChartRole::net;

    bool operator==(const ReportBar&) const = default;
};

/// One cell of a report's table.
struct ReportGridCell {
    enum class Tone { plain, quiet, strong, incoming };

    QString text;
    QString beside = {};        // after the text, or under it where the grid's rows have two lines
    QString spoken = {};        // where it is read aloud in other words
    QString copied = {};        // where a spreadsheet wants it written otherwise
    QString glyph = {};         // before the text
    std::string entryKind = {}; // whose glyph, in its colour, stands there instead
    Tone tone = Tone::plain;
    std::optional<ReportBar> bar = {};
    std::vector<std::int64_t> line = {}; // values from left to right, drawn as a line without a scale
    std::optional<ReportBacking> backing = {};
    std::optional<std::int64_t> value = {}; // what it is sorted by, where that is not its text

    bool operator==(const ReportGridCell&) const = default;
};

struct ReportGridColumn {
    enum class Kind {
        name,
        label, // words that are not cut
        figure,
        line
    };

    std::string id = {}; // in every language; none where the table is not sorted by it
    QString head;
    Kind kind = Kind::figure;
    bool isSpare = false; // gives way in a narrow window
    QString beside = {};  // the head of the column that has what stands beside its texts, in copies and files

    bool operator==(const ReportGridColumn&) const = default;
};

struct ReportGridRow {
    enum class Level { plain, heading, parent, child, total };

    std::string id;
    std::vector<ReportGridCell> cells; // one for each column
    Level level = Level::plain;
    std::string parentID = {}; // the row that this one can be folded into
    std::string currency = {}; // of its figures, where the rows have several

    bool operator==(const ReportGridRow&) const = default;
};

/// The currency of all figures of a table, which no row says.
struct ReportGridCurrency {
    QString head; // of the column that says so in copies and files
    QString code;

    bool operator==(const ReportGridCurrency&) const = default;
};

/// A table of a report, ready to be shown, copied and written to a file.
struct ReportGrid {
    std::string id = {}; // in every language
    QString name;
    std::vector<ReportGridColumn> columns;
    std::vector<ReportGridRow> rows;
    QString partOf = {}; // where rows are parts of others: the head of the column that says so in copies and files
    std::optional<ReportGridCurrency> currency = {}; // unset where rows have several
    std::optional<ReportSort> sort = {};             // unset in the order of the books
    QString sorted = {};                             // the same in words
    bool isCut = false;                              // files and paper have more rows

    bool operator==(const ReportGrid&) const = default;
};

namespace ReportGrids {

/// The currency that a table has all its figures in.
ReportGridCurrency currencyOf(std::string_view code, std::string_view locale);

/// An amount as a cell; zero is quiet, what came in has the colour of income.
ReportGridCell moneyCell(const MoneyText& money, ReportGridCell::Tone tone, std::optional<ReportBacking> backing);

/// The entries behind a balance at the end of `last`: those from the first of the books on; none before it. Where time
/// has no end, all of them.
std::optional<ReportBacking> balanceBacking(ReportFigure figure, std::chrono::sys_days first,
                                            std::chrono::sys_days last);

/// Heads and these rows as tab-separated text, each on one line; all rows when none are named. Drawings have no
/// column, what stands beside a text has one of its own, and the currency one before the first figure.
QString spreadsheetText(const ReportGrid& grid, const std::vector<int>& rows = {});

/// The same as a CSV document.
std::string csvText(const ReportGrid& grid);

}
