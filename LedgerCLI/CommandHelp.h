#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
class Error;
}

namespace LedgerCLI {

/// What the program says about its own command line, in English.
namespace CommandHelp {

/// Sets how `program` and the commands added to it later write their help and their complaints.
void install(CLI::App& program);

/// What stands below the options of a command, such as "export ledger", and of those under it: exit codes, examples.
std::string footer(std::string_view command);

/// What is wrong with the arguments, and everything among them that no option takes.
std::string complaint(const CLI::App* program, const CLI::Error& error);

}

}
