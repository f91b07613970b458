#include "LedgerCLI/ImportPlanCommand.h"

#include <array>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/TextTable.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Imports/ImportDryRun.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerCLI {

namespace {

/// One thing that keeps the file from being imported, whoever found it.
struct Finding {
    int line = 1;
    std::string message; // a stable word
    std::optional<std::string> value;
    std::string text; // for a person
};
BOOST_DESCRIBE_STRUCT(Finding, (), (line, message, value, text))

/// What programs read.
struct Answer {
    std::vector<TransactionInput> inputs;
    std::vector<LedgerImportIssue> issues;
    std::vector<Finding> refusals; // what the service would say to the rows of a file without issues
    bool malformed = false;
};
BOOST_DESCRIBE_STRUCT(Answer, (), (inputs, issues, refusals, malformed))

/// A program reads of a file that is too large where it reads of every other issue.
LedgerImportPlan planOf(std::string_view file, const LedgerSnapshot& snapshot)
{
    if (file.size() > LedgerImportCSV::maximumFileSize)
        return {.inputs = {}, .lines = {}, .issues = {{.line = 1, .message = "fileSize"}}, .malformed = true};
    return LedgerImportCSV::plan(file, snapshot);
}

std::vector<Finding> refusalsOf(const LedgerImportPlan& plan, const LedgerSnapshot& snapshot, std::string_view today,
                                std::string_view locale)
{
    std::vector<Finding> findings;
    for (const auto& each : ImportDryRun::run(plan, VisibleBooks{snapshot}, today))
        findings.push_back({each.line, std::string{ImportDryRun::key(each)}, {}, each.problem.message(locale)});
    return findings;
}

std::vector<Finding> issuesOf(const LedgerImportPlan& plan, std::string_view locale)
{
    std::vector<Finding> findings;
    findings.reserve(plan.issues.size());
    for (const auto& each : plan.issues)
        findings.push_back({each.line, each.message, each.value, std::string{LedgerImportWords::text(each, locale)}});
    return findings;
}

std::string json(LedgerImportPlan plan, std::vector<Finding> findings)
{
    if (!plan.issues.empty())
        findings.clear();
    return Json::encode(Answer{std::move(plan.inputs), std::move(plan.issues), std::move(findings), plan.malformed}) +
           "\n";
}

std::string csv(const std::vector<Finding>& findings)
{
    constexpr std::array<std::string_view, 4> columns{"line", "issue", "value", "text"};
    CsvDocument document{columns};
    for (const auto& each : findings)
        document.record({std::to_string(each.line), each.message, orEmpty(each.value), each.text});
    return document.take();
}

std::string text(const std::vector<Finding>& findings, std::size_t ready, std::string_view locale)
{
    if (findings.empty() && ready == 0)
        return std::string{LedgerImportWords::text("noRows", locale)} + "\n";
    if (findings.empty())
        return CommandWords::filled("ready", locale, {std::to_string(ready)}) + "\n";
    TextTable table{{{std::string{CommandWords::text("line", locale)}, TextTable::Alignment::right},
                     {.title = std::string{CommandWords::text("value", locale)}, .widest = 40},
                     {std::string{CommandWords::text("problem", locale)}}}};
    for (const auto& each : findings)
        table.add({std::to_string(each.line), std::string{orEmpty(each.value)}, each.text});
    return CommandWords::filled("issues", locale, {std::to_string(findings.size())}) + "\n\n" + table.text();
}

}

CommandResult ImportPlanCommand::run(std::string_view file, const LedgerSnapshot& snapshot, const std::string& today,
                                     const OutputStyle& style)
{
    if (!LedgerDay::isValid(today))
        return std::unexpected(CommandFailure{ExitCode::usage, CommandWords::filled("noDay", style.locale, {today})});
    auto plan = planOf(file, snapshot);
    auto findings =
        plan.issues.empty() ? refusalsOf(plan, snapshot, today, style.locale) : issuesOf(plan, style.locale);
    const auto code = findings.empty() && !plan.inputs.empty() ? ExitCode::done : ExitCode::issues;
    switch (style.format) {
    case OutputFormat::json:
        return CommandAnswer{json(std::move(plan), std::move(findings)), code};
    case OutputFormat::csv:
        return CommandAnswer{csv(findings), code};
    case OutputFormat::text:
        break;
    }
    return CommandAnswer{text(findings, plan.inputs.size(), style.locale), code};
}

}
