#include "LedgerCLI/tests/ProgramRun.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <sys/wait.h>

namespace LedgerCLI {

namespace {

std::string quoted(const std::string& text)
{
    return "'" + text + "'";
}

std::string contentOf(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

}

ProgramRun ProgramRun::of(const std::string& directory, const std::vector<std::string>& arguments,
                          const std::string& piped)
{
    std::string command = "cd " + quoted(directory) + " && ";
    if (!piped.empty())
        command += "cat " + quoted(piped) + " | ";
    command += "LC_ALL=C " + quoted(TALLYFOLD_CLI_PROGRAM);
    for (const auto& argument : arguments)
        command += " " + quoted(argument);
    const int status = std::system((command + " >out.txt 2>err.txt").c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(directory + "/out.txt"),
            contentOf(directory + "/err.txt")};
}

}
