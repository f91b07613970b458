#pragma once

#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Print/PrintedChart.h"

/// A cell of a printed table; line ends in its texts are kept.
struct PrintedCell {
    QString text;
    QString second = {}; // below it, smaller and quieter

    bool operator==(const PrintedCell&) const = default;
};

struct PrintedColumn {
    enum class Side { start, end };
    enum class Width {
        content, // as wide as its widest text
        rest     // takes what is left, and wraps where that is little
    };

    QString head;
    Side side = Side::start;
    Width width = Width::content;

    bool operator==(const PrintedColumn&) const = default;
};

struct PrintedRow {
    enum class Level {
        plain,
        parent,
        group, // the head of those below it: its first cell takes the whole width
        child,
        total
    };

    std::vector<PrintedCell> cells; // one for each column
    Level level = Level::plain;

    bool operator==(const PrintedRow&) const = default;
};

/// A table on paper. Without any head it is a list of names and values.
struct PrintedTable {
    QString title = {};
    std::vector<PrintedColumn> columns;
    std::vector<PrintedRow> rows;
    QString note = {}; // below it

    bool operator==(const PrintedTable&) const = default;
};

/// What a document is about, said above its tables: "Period: November 2026".
struct PrintedFact {
    QString label;
    QString value;

    bool operator==(const PrintedFact&) const = default;
};

/// A document as it goes to paper, in one language and before anything is known of paper.
struct PrintedDocument {
    std::string locale;
    QString company;
    QString title;
    std::vector<PrintedFact> facts = {};
    std::vector<PrintedChart> charts = {}; // above the tables
    std::vector<PrintedTable> tables = {};
    std::vector<QString> notes = {};
    QString fileName = {}; // that a saved document is offered under, without an ending

    bool operator==(const PrintedDocument&) const = default;
};
