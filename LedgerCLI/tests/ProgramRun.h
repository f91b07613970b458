#pragma once

#include <string>
#include <vector>

namespace LedgerCLI {

/// One run of the real program.
struct ProgramRun {
    int code = -1;
    std::string output;
    std::string errors;

    /// Runs it in `directory` with English texts unless the arguments say otherwise. Its standard input is a pipe from
    /// the file `piped` where one is named.
    static ProgramRun of(const std::string& directory, const std::vector<std::string>& arguments,
                         const std::string& piped);
};

}
