#pragma once

namespace LedgerCLI {

/// The program: reads its arguments, runs one command, and writes the answer or the failure.
namespace CommandLine {

/// The exit code of the process, an `ExitCode`.
int run(int argumentCount, const char* const* arguments);

}

}
