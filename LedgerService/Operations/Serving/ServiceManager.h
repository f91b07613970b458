#pragma once

#include <optional>
#include <string>

namespace LedgerService {

/// The program that started the service and wants to know how it is.
namespace ServiceManager {

/// Tells it a state, such as "READY=1". Does nothing when nobody asked (`NOTIFY_SOCKET`).
void tell(const std::string& state);

/// The listening socket that it opened for the service and hands over as the first file past the standard ones
/// (`LISTEN_PID`, `LISTEN_FDS`); nothing when it hands over none. Processes that the service starts get none.
std::optional<int> takeSocket();

}

}
