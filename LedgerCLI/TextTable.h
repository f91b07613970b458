#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerCLI {

/// Rows of text set in columns for a terminal, with wide and combining letters taken into account.
class TextTable {
public:
    enum class Alignment { left, right };

    struct Column {
        std::string title;
        Alignment alignment = Alignment::left;
        std::size_t widest = 200; // terminal cells; a wider text is cut, lest one cell widen every row
    };

    /// Without titles there is no heading.
    explicit TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    /// One cell a column. Line ends and control characters, by which a text could take over the terminal, become
    /// blanks.
    void add(std::vector<std::string> cells);

    [[nodiscard]] std::string text() const;

    /// Terminal cells that the text takes.
    static std::size_t width(std::string_view text);

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

}
