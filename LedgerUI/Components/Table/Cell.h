#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

#include "LedgerUI/Theme/ThemeColor.h"
#include "LedgerUI/Theme/TypeScale.h"

/// A text in a cell, with a glyph before it where it has one.
struct CellText {
    QString text;
    TypeStep step = TypeStep::body;
    ThemeColor ink = Token::text;
    QString glyph = {};
    bool isStruck = false;
    bool isBold = false;
};

/// A code at the left end of a line and a figure at its right end.
struct CellAmount {
    QString code;
    CellText figure;
};

/// What stands at the right end of the first line: a chip with a word, or a glyph with a count.
struct CellMark {
    QString word;
    QString glyph = {};
};

/// A bar as long as its part of the room: before the only line, or under the first of two.
struct CellBar {
    double fraction = 0;
    ThemeColor ink = Token::text2;
};

/// What one cell of a table shows. Lines stand one above the other; `beside` takes what the only line leaves.
struct Cell {
    int indent = 0;     // of everything, with `fold` in the room that it leaves
    QString fold = {};  // the glyph that unfolds a tree
    QString glyph = {}; // at the left end, in the middle of the height
    ThemeColor glyphInk = Token::text2;
    std::vector<CellText> lines = {};
    std::optional<CellText> beside = {};
    std::vector<CellMark> marks = {};
    std::vector<CellAmount> amounts = {};
    std::vector<CellAmount> sums = {}; // one beside the other at the right end of the only line, as many as find room
    std::optional<CellBar> bar = {};
    std::vector<std::int64_t> values = {}; // drawn as a line through the whole cell, without a scale
    bool wraps = false;                    // the only line may go on in a second one
    bool isHead = false;                   // of a group of rows: the texts stand at the bottom
    bool spansRow = false;                 // the same in every column of its row, painted once through all of them
    bool joinsBelow = false;               // no line parts it from the cell below
};
