#include "LedgerCLI/ImportPlanCommand.h"

#include <array>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/TextTable.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerCLI {

namespace {

std::string csv(const LedgerImportPlan& plan, std::string_view locale)
{
    constexpr std::array<std::string_view, 4> columns{"line", "issue", "value", "text"};
    CsvDocument document{columns};
    for (const auto& issue : plan.issues)
        document.record({std::to_string(issue.line), issue.message, orEmpty(issue.value),
                         LedgerImportWords::text(issue.message, locale)});
    return document.take();
}

std::string text(const LedgerImportPlan& plan, std::string_view locale)
{
    if (plan.issues.empty() && plan.inputs.empty())
        return std::string{LedgerImportWords::text("noRows", locale)} + "\n";
    if (plan.issues.empty())
        return CommandWords::filled("ready", locale, {std::to_string(plan.inputs.size())}) + "\n";
    TextTable table{{{std::string{CommandWords::text("line", locale)}, TextTable::Alignment::right},
                     {.title = std::string{CommandWords::text("value", locale)}, .widest = 40},
                     {std::string{CommandWords::text("problem", locale)}}}};
    for (const auto& issue : plan.issues)
        table.add({std::to_string(issue.line), std::string{orEmpty(issue.value)},
                   std::string{LedgerImportWords::text(issue.message, locale)}});
    return CommandWords::filled("issues", locale, {std::to_string(plan.issues.size())}) + "\n\n" + table.text();
}

/// A program reads of a file that is too large where it reads of every other issue.
LedgerImportPlan planOf(std::string_view file, const LedgerSnapshot& snapshot)
{
    if (file.size() > LedgerImportCSV::maximumFileSize)
        return {.inputs = {}, .issues = {{.line = 1, .message = "fileSize"}}, .malformed = true};
    return LedgerImportCSV::plan(file, snapshot);
}

}

CommandResult ImportPlanCommand::run(std::string_view file, const LedgerSnapshot& snapshot, const OutputStyle& style)
{
    const auto plan = planOf(file, snapshot);
    const auto code = plan.issues.empty() && !plan.inputs.empty() ? ExitCode::done : ExitCode::issues;
    switch (style.format) {
    case OutputFormat::json:
        return CommandAnswer{Json::encode(plan) + "\n", code};
    case OutputFormat::csv:
        return CommandAnswer{csv(plan, style.locale), code};
    case OutputFormat::text:
        break;
    }
    return CommandAnswer{text(plan, style.locale), code};
}

}
