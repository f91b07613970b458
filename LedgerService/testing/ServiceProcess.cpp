#include "LedgerService/testing/ServiceProcess.h"

#include <array>
#include <charconv>
#include <csignal>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

[[noreturn]] void become(const std::vector<std::string>& arguments, int output)
{
    std::vector<char*> raw;
    for (const auto& each : arguments)
        raw.push_back(const_cast<char*>(each.c_str()));
    raw.push_back(nullptr);
    dup2(output, STDOUT_FILENO);
    execv(raw.front(), raw.data());
    _exit(127);
}

std::string readLine(int input)
{
    std::string line;
    char each = 0;
    while (read(input, &each, 1) == 1 && each != '\n')
        line += each;
    return line;
}

/// The number after the last colon of "… listening on http://127.0.0.1:48731".
std::uint16_t portOf(std::string_view readyLine)
{
    std::uint16_t port = 0;
    const auto digits = readyLine.substr(readyLine.rfind(':') + 1);
    std::from_chars(digits.data(), digits.data() + digits.size(), port);
    return port;
}

}

ServiceProcess::ServiceProcess(const std::string& program, const std::string& databaseFile,
                               const std::vector<std::string>& furtherArguments, Logging logging)
{
    std::vector<std::string> arguments{program, "serve", "--listen", "127.0.0.1:0", "--database", databaseFile};
    if (logging == Logging::failures)
        arguments.emplace_back("--quiet");
    arguments.insert(arguments.end(), furtherArguments.begin(), furtherArguments.end());
    std::array<int, 2> pipe{};
    require(pipe2(pipe.data(), O_CLOEXEC) == 0, "a pipe can be made");
    m_process = fork();
    require(m_process >= 0, "a process can be started");
    if (m_process == 0)
        become(arguments, pipe[1]);
    close(pipe[1]);
    m_port = portOf(readLine(pipe[0]));
    close(pipe[0]);
}

ServiceProcess::~ServiceProcess()
{
    if (m_process > 0)
        stop();
}

std::chrono::nanoseconds ServiceProcess::processorTime() const
{
    clockid_t clock{};
    timespec time{};
    require(clock_getcpuclockid(m_process, &clock) == 0 && clock_gettime(clock, &time) == 0, "the process is there");
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

ServiceProcess::Memory ServiceProcess::memory() const
{
    constexpr std::uint64_t kibibyte = 1024;
    std::ifstream status{"/proc/" + std::to_string(m_process) + "/status"};
    Memory memory;
    for (std::string name; status >> name;) {
        if (name == "VmRSS:")
            status >> memory.now;
        else if (name == "VmHWM:")
            status >> memory.most;
    }
    return {memory.now * kibibyte, memory.most * kibibyte};
}

int ServiceProcess::stop()
{
    ::kill(m_process, SIGTERM);
    return wait();
}

void ServiceProcess::hangUp() const
{
    ::kill(m_process, SIGHUP);
}

void ServiceProcess::kill()
{
    ::kill(m_process, SIGKILL);
    wait();
}

int ServiceProcess::wait()
{
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}
