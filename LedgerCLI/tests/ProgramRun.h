#pragma once

#include <string>
#include <vector>

/// One run of the real program.
struct ProgramRun {
    int code = -1;
    std::string output;
    std::string errors;

    /// Runs it in `directory` with English texts unless the arguments say otherwise.
    static ProgramRun of(const std::string& directory, const std::vector<std::string>& arguments);
};
