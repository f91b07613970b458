#include "LedgerService/Operations/EnvironmentOptions.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

namespace LedgerService {

namespace {

std::string variableOf(const CLI::Option& option)
{
    std::string name = "TALLYFOLD_";
    for (const char each : option.get_lnames().front())
        name += each == '-' ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(each)));
    return name;
}

bool isGiven(const CLI::Option& option, const std::vector<std::string>& arguments)
{
    return std::ranges::any_of(option.get_lnames(), [&](const std::string& name) {
        return std::ranges::any_of(arguments, [flag = "--" + name](const std::string& each) {
            return each == flag || each.starts_with(flag + "=");
        });
    });
}

const auto everyCommand = [](const CLI::App*) { return true; };

/// The command among the arguments from `at` on that stands under `app`, and the place after it; null when there is
/// none.
const CLI::App* commandIn(const CLI::App& app, const std::vector<std::string>& arguments, std::size_t& at)
{
    const auto commands = app.get_subcommands(everyCommand);
    for (; at < arguments.size(); ++at) {
        for (const auto* command : commands) {
            if (command->get_name() == arguments[at]) {
                ++at;
                return command;
            }
        }
    }
    return nullptr;
}

bool isSetting(const CLI::Option& option)
{
    return !option.get_lnames().empty() && option.get_lnames().front() != "help";
}

}

namespace {

/// A row of the table of options.
struct Row {
    std::string flag;
    std::string variable;
    std::string commands;
    std::string help;
};

/// What is to be written after the flag, as the table writes it.
std::string valueOf(const CLI::Option& option)
{
    if (option.get_items_expected_max() == 0)
        return {};
    const auto& own = option.get_option_text();
    std::string text = " ";
    for (const char each : own.empty() ? option.get_type_name() : own)
        text += each == '|' ? std::string{"\\|"} : std::string{each}; // else the table would take it for a border
    return text;
}

void addRows(const CLI::App& app, const std::string& above, std::vector<Row>& rows)
{
    for (const auto* command : app.get_subcommands(everyCommand)) {
        const auto name = above + command->get_name();
        for (const auto* option : command->get_options()) {
            if (!isSetting(*option))
                continue;
            const auto flag = "--" + option->get_lnames().front() + valueOf(*option);
            const auto found = std::ranges::find(rows, flag, &Row::flag);
            if (found != rows.end())
                found->commands += ", " + name;
            else
                rows.push_back({flag, variableOf(*option), name, option->get_description()});
        }
        addRows(*command, name + " ", rows);
    }
}

/// What a text of the environment gives: to an option that may be repeated, a value between every two commas or blanks.
std::vector<std::string> valuesOf(const CLI::Option& option, std::string_view text)
{
    constexpr std::string_view between = ", \t";
    const bool several = option.get_items_expected_max() > 1;
    std::vector<std::string> values;
    while (!text.empty()) {
        const auto end = several ? text.find_first_of(between) : std::string_view::npos;
        if (const auto value = text.substr(0, end); !value.empty())
            values.emplace_back(value);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return values;
}

}

std::string EnvironmentOptions::table(const CLI::App& app)
{
    std::vector<Row> rows;
    addRows(app, "", rows);
    std::string text = "| Option | In the environment | Commands | |\n|---|---|---|---|\n";
    for (const auto& [flag, variable, commands, help] : rows)
        text += fmt::format("| `{}` | `{}` | {} | {} |\n", flag, variable, commands, help);
    return text;
}

void EnvironmentOptions::declare(CLI::App& app)
{
    for (auto* command : app.get_subcommands([](CLI::App*) { return true; })) {
        for (auto* option : command->get_options()) {
            if (isSetting(*option))
                option->envname(variableOf(*option));
        }
        declare(*command);
    }
}

std::vector<std::string> EnvironmentOptions::completed(const CLI::App& app, std::vector<std::string> arguments)
{
    std::vector<std::string> added;
    std::size_t at = 0;
    for (const auto* command = commandIn(app, arguments, at); command; command = commandIn(*command, arguments, at)) {
        for (const auto* option : command->get_options()) {
            const char* const value = isSetting(*option) ? std::getenv(variableOf(*option).c_str()) : nullptr;
            if (value == nullptr || isGiven(*option, arguments))
                continue;
            for (const auto& each : valuesOf(*option, value))
                added.push_back("--" + option->get_lnames().front() + "=" + each);
        }
    }
    arguments.insert(arguments.end(), added.begin(), added.end());
    return arguments;
}

}
