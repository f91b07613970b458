#include "LedgerService/Operations/EnvironmentOptions.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include <CLI/CLI.hpp>

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
            if (value != nullptr && *value != '\0' && !isGiven(*option, arguments))
                added.push_back("--" + option->get_lnames().front() + "=" + value);
        }
    }
    arguments.insert(arguments.end(), added.begin(), added.end());
    return arguments;
}

}
