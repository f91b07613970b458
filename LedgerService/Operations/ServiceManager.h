#pragma once

#include <string>

namespace LedgerService {

/// The program that started the service and wants to know how it is.
namespace ServiceManager {

/// Tells it a state, such as "READY=1". Does nothing when nobody asked (`NOTIFY_SOCKET`).
void tell(const std::string& state);

}

}
