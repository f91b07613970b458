#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"

#include <algorithm>
#include <optional>
#include <ranges>

#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Csv/CsvReader.h"
#include "LedgerCore/Domain/Imports/ImportRowCheck.h"
#include "LedgerCore/Domain/Imports/ImportRowIdentity.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

LedgerImportPlan malformed(std::string_view issue)
{
    return {.inputs = {}, .lines = {}, .issues = {{.line = 1, .message = std::string{issue}}}, .malformed = true};
}

/// A header cell as it is compared: without byte-order marks anywhere and without blanks around.
std::string cleanedHeader(std::string_view cell)
{
    std::string text{cell};
    for (auto at = text.find(CsvDocument::byteOrderMark); at != std::string::npos;
         at = text.find(CsvDocument::byteOrderMark, at))
        text.erase(at, CsvDocument::byteOrderMark.size());
    return std::string{TextFold::trimmed(text)};
}

/// Whether the first line would be a header if its separator were a comma.
bool isHeaderSeparatedBy(char separator, std::string_view text)
{
    text = text.substr(0, text.find_first_of("\r\n"));
    std::vector<std::string> cells;
    for (const auto part : std::views::split(text, separator)) {
        auto cell = cleanedHeader(std::string_view{part});
        if (cell.size() >= 2 && cell.starts_with('"') && cell.ends_with('"'))
            cell = cleanedHeader(std::string_view{cell}.substr(1, cell.size() - 2));
        cells.push_back(std::move(cell));
    }
    return std::ranges::equal(cells, LedgerImportCSV::headers) ||
           std::ranges::equal(cells, LedgerImportCSV::legacyHeaders);
}

/// Of a file whose header cannot be read. Where the columns are only separated otherwise, as spreadsheets do in
/// Indonesia and Vietnam, the issue names the separator.
LedgerImportPlan unread(std::string_view issue, std::string_view text)
{
    auto plan = malformed(issue);
    for (const char separator : {';', '\t'}) {
        if (isHeaderSeparatedBy(separator, text))
            plan.issues.front().value = std::string(1, separator);
    }
    return plan;
}

/// A fault of the file outweighs its header, wherever it stands.
LedgerImportPlan otherHeader(CsvReader& reader, std::string_view text)
{
    auto outcome = CsvReader::Outcome::record;
    while (outcome == CsvReader::Outcome::record)
        outcome = reader.next();
    return unread(outcome == CsvReader::Outcome::fault ? "csv" : "header", text);
}

/// At most so many rows without a fault does the text hold, by its line feeds. What it says is never trusted with more
/// room than such rows could need.
std::size_t rowsExpected(std::string_view text)
{
    constexpr std::string_view shortest = "2024-01-01,income,a,USD,1,b,,,,\n";
    return std::min(static_cast<std::size_t>(std::ranges::count(text, '\n')), text.size() / shortest.size());
}

bool matches(const std::vector<std::string_view>& cells, std::span<const std::string_view> header)
{
    return std::ranges::equal(cells, header, std::ranges::equal_to{}, cleanedHeader);
}

/// Which columns a file has around those of the template.
struct Layout {
    std::size_t before = 0; // the file's own numbers
    bool hasIssues = false;

    [[nodiscard]] std::size_t columns() const { return before + LedgerImportCSV::headers.size(); }

    /// Takes the issue out of a row.
    void strip(std::vector<std::string_view>& cells) const
    {
        if (hasIssues && cells.size() == columns() + 1)
            cells.pop_back();
    }
};

std::optional<Layout> layoutOf(std::vector<std::string_view> header)
{
    const bool hasIssues = !header.empty() && cleanedHeader(header.back()) == LedgerImportCSV::issueHeader;
    if (hasIssues)
        header.pop_back();
    if (matches(header, LedgerImportCSV::headers))
        return Layout{.before = 0, .hasIssues = hasIssues};
    if (matches(header, LedgerImportCSV::legacyHeaders))
        return Layout{.before = 1, .hasIssues = hasIssues};
    return std::nullopt;
}

/// A cell as it stands: what a person wrote is not turned into another text, as it is in an export, and quoted only
/// where it must be, so that the file does not grow.
void appendCell(std::string& text, std::string_view cell)
{
    if (cell.find_first_of("\",\r\n") == std::string_view::npos) {
        text += cell;
        return;
    }
    text += '"';
    for (const char each : cell)
        text.append(each == '"' ? 2 : 1, each);
    text += '"';
}

void appendCells(std::string& text, const std::vector<std::string_view>& cells)
{
    for (std::size_t at = 0; at < cells.size(); ++at) {
        if (at > 0)
            text += ',';
        appendCell(text, cells[at]);
    }
}

/// The file with those of its issues, from the first on, for which there are `room` bytes.
std::string written(std::string_view data, const std::map<int, std::string>& issues, std::size_t room)
{
    const std::string_view lineEnd = data.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
    CsvReader reader{data};
    std::string text{CsvDocument::byteOrderMark};
    text.reserve(data.size() + room);
    std::optional<Layout> layout;
    for (int line = 1; reader.next() == CsvReader::Outcome::record; ++line) {
        auto cells = reader.fields();
        if (!layout)
            layout = layoutOf(cells);
        if (!layout)
            return {};
        layout->strip(cells);
        const auto found = issues.find(line);
        std::string issue;
        if (line == 1)
            appendCell(issue, LedgerImportCSV::issueHeader);
        else if (found != issues.end())
            appendCell(issue, found->second);
        // A short row is filled up, or its issue would stand in another column.
        if (!issue.empty() && cells.size() < layout->columns())
            cells.resize(layout->columns());
        appendCells(text, cells);
        if (line == 1 || (!issue.empty() && issue.size() < room)) {
            text += ',' + issue;
            room -= line == 1 ? 0 : issue.size() + 1;
        }
        text += lineEnd;
    }
    return text;
}

}

std::string LedgerImportCSV::templateText()
{
    return CsvDocument{headers}.take();
}

LedgerImportPlan LedgerImportCSV::plan(std::string_view data, const LedgerSnapshot& snapshot)
{
    if (!TextFold::isValidUtf8(data))
        return malformed("encoding");
    CsvReader reader{data};
    auto outcome = reader.next();
    if (outcome == CsvReader::Outcome::fault)
        return unread("csv", data);
    const auto layout = layoutOf(reader.fields());
    if (!layout)
        return otherHeader(reader, data);

    const auto expected = rowsExpected(data);
    LedgerImportPlan plan;
    plan.inputs.reserve(expected);
    plan.lines.reserve(expected);
    ImportRowCheck rows{snapshot, plan};
    ImportRowIdentity identity{snapshot.company.id, expected};
    std::vector<std::string_view> cells;
    for (int line = 2; (outcome = reader.next()) == CsvReader::Outcome::record; ++line) {
        cells.clear();
        std::ranges::transform(reader.fields(), std::back_inserter(cells), TextFold::trimmed);
        layout->strip(cells);
        if (std::ranges::all_of(cells, &std::string_view::empty))
            continue; // spreadsheets leave such rows behind; there is nothing in them to record
        if (cells.size() == layout->columns())
            rows.check(line, std::span{cells}.subspan(layout->before).first<headers.size()>(), identity.next(cells));
        else
            plan.issues.push_back({.line = line, .message = "columns"});
    }
    return outcome == CsvReader::Outcome::fault ? malformed("csv") : plan;
}

std::string LedgerImportCSV::withIssues(std::string_view data, const std::map<int, std::string>& issues)
{
    const auto withoutIssues = written(data, issues, 0).size();
    return written(data, issues, maximumFileSize - std::min(withoutIssues, maximumFileSize));
}
