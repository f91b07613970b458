#pragma once

#include <QString>

/// One figure of a line of figures that add up.
struct RecordFigure {
    QString sign; // before it: "=", "+"; empty for the first
    QString label;
    QString amount;
    QString spoken;

    bool operator==(const RecordFigure&) const = default;
};
