#include "LedgerCLI/TextTable.h"

#include <algorithm>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace LedgerCLI {

namespace {

std::size_t widthOf(UChar32 letter)
{
    if (letter < 0)
        return 1;
    const auto type = u_charType(letter);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR)
        return 0;
    const auto width = u_getIntPropertyValue(letter, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// What of a cell stands in its column: no controls, and of a text too wide for it the beginning.
std::string fitted(const std::string& cell, std::size_t widest)
{
    constexpr std::string_view cutMark = "…"; // one cell wide
    std::string plain;
    std::size_t taken = 0;
    std::size_t bytesBesideMark = 0;
    const auto length = static_cast<std::int32_t>(cell.size());
    for (std::int32_t at = 0; at < length;) {
        const auto start = at;
        UChar32 letter = 0;
        U8_NEXT(cell.data(), at, length, letter); // NOLINT(bugprone-inc-dec-in-conditions)
        const auto type = letter < 0 ? static_cast<std::int8_t>(U_CONTROL_CHAR) : u_charType(letter);
        const bool breaks = type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR;
        taken += breaks ? 1 : widthOf(letter);
        if (taken > widest)
            return plain.substr(0, bytesBesideMark).append(cutMark);
        if (breaks)
            plain += ' ';
        else
            plain.append(cell, static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
        if (taken < widest)
            bytesBesideMark = plain.size();
    }
    return plain;
}

void appendCell(std::string& line, std::string_view cell, std::size_t width, const TextTable::Column& column)
{
    const std::string padding(width - TextTable::width(cell), ' ');
    if (column.alignment == TextTable::Alignment::right)
        line += padding;
    line += cell;
    if (column.alignment == TextTable::Alignment::left)
        line += padding;
}

}

void TextTable::add(std::vector<std::string> cells)
{
    std::ranges::transform(cells, m_columns, cells.begin(),
                           [](const auto& cell, const auto& column) { return fitted(cell, column.widest); });
    m_rows.push_back(std::move(cells));
}

std::size_t TextTable::width(std::string_view text)
{
    std::size_t width = 0;
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 letter = 0;
        U8_NEXT(text.data(), at, length, letter); // NOLINT(bugprone-inc-dec-in-conditions)
        width += widthOf(letter);
    }
    return width;
}

std::string TextTable::text() const
{
    std::vector<std::string> titles;
    titles.reserve(m_columns.size());
    for (const auto& column : m_columns)
        titles.push_back(column.title);
    auto rows = m_rows;
    if (std::ranges::any_of(titles, [](const auto& title) { return !title.empty(); }))
        rows.insert(rows.begin(), titles);

    std::vector<std::size_t> widths(m_columns.size());
    for (const auto& row : rows) {
        for (std::size_t at = 0; at < row.size(); ++at)
            widths[at] = std::max(widths[at], width(row[at]));
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t at = 0; at < row.size(); ++at) {
            line += at > 0 ? "  " : "";
            appendCell(line, row[at], widths[at], m_columns[at]);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}
