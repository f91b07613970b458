#pragma once

#include <expected>
#include <string>

namespace LedgerCLI {

/// How the program ends; documented in its help and stable.
enum class ExitCode {
    done = 0,
    usage = 2,    // the command line makes no sense
    file = 3,     // a file cannot be read or written
    snapshot = 4, // the snapshot file holds no snapshot
    refused = 5,  // the books or the member's rights do not allow it
    issues = 6    // an import file was read and cannot be imported
};

struct CommandFailure {
    ExitCode code = ExitCode::refused;
    std::string message; // for a person, in the language asked for
};

/// What a command says on standard output.
struct CommandAnswer {
    std::string text;
    ExitCode code = ExitCode::done;
};

using CommandResult = std::expected<CommandAnswer, CommandFailure>;

enum class OutputFormat { text, csv, json };

/// How an answer is written.
struct OutputStyle {
    std::string locale;
    OutputFormat format = OutputFormat::text;
};

}
