#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

/// What a text in a table of records is to be read as; the screen gives each its colour.
enum class RecordTone { plain, quiet, faint, capital, dividend, due };

/// One cell of a table of records.
struct RecordCell {
    QString text;
    QString second = {}; // below the first line, smaller
    QString glyph = {};
    RecordTone tone = RecordTone::plain;
    RecordTone glyphTone = RecordTone::quiet;
    std::optional<std::size_t> swatch = {}; // the place of a person among all, by which their colour is chosen
    QString chip = {};
    QString spoken = {}; // what a reader says instead of the text
    bool isStruck = false;
    bool isBold = false;

    bool operator==(const RecordCell&) const = default;
};

/// The entry in the ledger that booked a record's money, or the word that says why there is none to be opened.
using RecordEntry = std::expected<std::string, std::string_view>;

struct RecordRow {
    std::string id;
    std::vector<RecordCell> cells;
    RecordEntry entry = std::unexpected("remark.noCash");

    bool operator==(const RecordRow&) const = default;
};

/// How a column behaves where the room is short: the one that stretches gives way first, then those that may go leave
/// one after the other, from the left.
enum class ColumnRoom { stretches, stays, mayGo };

struct RecordColumn {
    QString head;
    ColumnRoom room = ColumnRoom::stays;
    bool isAtRight = false; // figures

    bool operator==(const RecordColumn&) const = default;
};

/// A table of records, with its sums where it has them.
struct RecordRows {
    std::vector<RecordColumn> columns;
    std::vector<RecordRow> rows;
    std::optional<RecordRow> total = {};

    bool operator==(const RecordRows&) const = default;
};
