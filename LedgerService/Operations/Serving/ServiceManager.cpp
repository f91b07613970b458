#include "LedgerService/Operations/Serving/ServiceManager.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace LedgerService {

void ServiceManager::tell(const std::string& state)
{
    const char* const name = std::getenv("NOTIFY_SOCKET");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name == nullptr || (name[0] != '/' && name[0] != '@') || std::strlen(name) >= sizeof(address.sun_path))
        return;
    const auto length = std::strlen(name);
    std::memcpy(address.sun_path, name, length);
    if (name[0] == '@') // a name that no file has
        address.sun_path[0] = '\0';
    const int opened = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (opened < 0)
        return;
    // Nobody waits for an answer: a manager that does not listen is told nothing.
    static_cast<void>(sendto(opened, state.data(), state.size(), MSG_NOSIGNAL,
                             reinterpret_cast<const sockaddr*>(&address),
                             static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length)));
    close(opened);
}

std::optional<int> ServiceManager::takeSocket()
{
    constexpr int firstHandedOver = 3;
    const char* const process = std::getenv("LISTEN_PID");
    const char* const count = std::getenv("LISTEN_FDS");
    const bool isForUs =
        process != nullptr && count != nullptr && std::to_string(getpid()) == process && std::strcmp(count, "0") != 0;
    unsetenv("LISTEN_PID");
    unsetenv("LISTEN_FDS");
    if (!isForUs)
        return std::nullopt;
    fcntl(firstHandedOver, F_SETFD, FD_CLOEXEC);
    return firstHandedOver;
}

}
