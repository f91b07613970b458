#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace LedgerService {

/// Options that the environment gives: --trusted-proxy of any command is TALLYFOLD_TRUSTED_PROXY.
namespace EnvironmentOptions {

/// Tells each option of each command, nested ones included, its name in the environment, for the help.
void declare(CLI::App& app);

/// Every option of every command as a table in Markdown: its flag, its name in the environment, the commands that take
/// it, and its help.
std::string table(const CLI::App& app);

/// The arguments with what the environment adds to the command among them. What stands among them already is kept: it
/// comes before the environment, which comes before a file of options.
std::vector<std::string> completed(const CLI::App& app, std::vector<std::string> arguments);

}

}
