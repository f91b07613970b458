#pragma once

#include <optional>
#include <vector>

#include "LedgerUI/Presentation/Print/PrintMetrics.h"
#include "LedgerUI/Presentation/Print/PrintedDocument.h"

/// The sizes of a printed table. A wide one is set smaller before it is cut into parts.
struct PrintScale {
    int body = 85;
    int small = 75;

    [[nodiscard]] double line() const { return body * 1.38; }
    [[nodiscard]] double padding() const { return body * 0.3; }
    [[nodiscard]] double gap() const { return body * 1.3; } // between two columns
    [[nodiscard]] double indent() const { return body * 1.2; }
};

/// Some columns of a table that stand side by side. A table too wide for a page has several, each beginning with the
/// first column.
struct PrintColumnSet {
    std::vector<std::size_t> columns;
    std::vector<double> widths; // of each of these

    bool operator==(const PrintColumnSet&) const = default;
};

struct PrintColumnPlan {
    PrintScale scale;
    std::vector<PrintColumnSet> sets;
};

namespace PrintColumns {

/// Whether all columns fit side by side in this width at full size, with room for words where they may wrap.
bool fits(PrintMetrics& metrics, const PrintedTable& table, double width);

/// How the columns of a table share this width.
PrintColumnPlan plan(PrintMetrics& metrics, const PrintedTable& table, double width);

/// The font of a row's texts.
PrintFont fontOf(const PrintScale& scale, PrintedRow::Level level);

}
