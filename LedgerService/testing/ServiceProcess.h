#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

namespace LedgerService {

/// The service's program as a child process, listening on a free port of 127.0.0.1.
class ServiceProcess {
public:
    enum class Logging { failures, requests };

    /// Starts `program` on the database and waits until it is ready; `port()` is 0 when it did not get so far.
    ServiceProcess(const std::string& program, const std::string& databaseFile,
                   const std::vector<std::string>& furtherArguments = {}, Logging logging = Logging::failures);
    /// Ends a child that is still running, cleanly.
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;

    [[nodiscard]] std::uint16_t port() const { return m_port; }

    /// What all its threads have computed so far, however long they waited.
    [[nodiscard]] std::chrono::nanoseconds processorTime() const;

    /// The memory that it holds now, and the most that it has held, in bytes.
    struct Memory {
        std::uint64_t now = 0;
        std::uint64_t most = 0;
    };
    [[nodiscard]] Memory memory() const;

    /// Asks it to end and gives its exit code, or -1 when it did not exit by itself.
    int stop();

    /// Asks it to read again what it can read while it runs.
    void hangUp() const;

    /// Ends it as a power failure would.
    void kill();

private:
    int wait();

    pid_t m_process = -1;
    std::uint16_t m_port = 0;
};

}
