#include "LedgerCLI/CommandHelp.h"

#include <array>
#include <memory>

#include <CLI/CLI.hpp>
#include <fmt/ranges.h>

namespace LedgerCLI {

namespace {

constexpr std::string_view exitCodes = R"(Exit codes:
  0  done
  2  the command line makes no sense
  3  a file cannot be read or written
  4  the snapshot file holds no snapshot
  5  refused by the books or by the member's rights
  6  the import file has issues, or nothing to import
)";

constexpr std::array<std::string_view, 11> examples{
    "balances --snapshot books.json",
    "balances --snapshot - --format json < books.json",
    "report --snapshot books.json --currency USD --from 2024-01-01 --to 2024-12-31 --by quarter",
    "report --snapshot books.json --currency IDR --from 2024-01-01 --to 2024-12-31 --by total --format csv",
    "export ledger --snapshot books.json --from 2024-01-01 --to 2024-12-31 --out ledger.csv --receipt-index",
    "export ledger --snapshot books.json --from 2024-01-01 --to 2024-01-31 --kind expense --currency USD --out -",
    "export capital --snapshot books.json --out capital.csv",
    "export dividends --snapshot books.json --out dividends.csv",
    "import-plan old-books.csv --snapshot books.json --locale vi",
    "template --out old-books.csv",
    "allocate --snapshot books.json --total 1000.00 --currency USD --share ana=6000 --share budi=4000"};

/// Options say on their own line whether they are required, whatever their value is called.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_desc(const CLI::Option* option) const override
    {
        return option->get_description() + (option->get_required() ? " (required)" : "");
    }
};

}

void CommandHelp::install(CLI::App& program)
{
    program.formatter(std::make_shared<HelpFormatter>());
    program.failure_message(complaint);
    program.footer(footer(""));
}

std::string CommandHelp::footer(std::string_view command)
{
    auto text = std::string{exitCodes} + "\nExamples:";
    for (const auto example : examples) {
        if (example.starts_with(command))
            text += fmt::format("\n  tallyfold-cli {}", example);
    }
    return text;
}

std::string CommandHelp::complaint(const CLI::App* program, const CLI::Error& error)
{
    std::string text;
    if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr)
        text += fmt::format("tallyfold-cli: {}\n", error.what());
    if (const auto extras = program->remaining(true); !extras.empty())
        text += fmt::format("tallyfold-cli: not expected: {}\n", fmt::join(extras, " "));
    return text + "Add --help to see what is expected.\n";
}

}
