#pragma once

#include <cstdint>
#include <string>

namespace LedgerService {
class ServiceProcess;
}

/// What the service holds and how many it answers while clients ask without a pause.
namespace SteadyRequests {

/// The memory of the service in the course of 100,000 requests of several kinds, by several clients at once.
void measureMemory(const LedgerService::ServiceProcess& service, const std::string& token);

/// Whole snapshots a second, asked for by as many clients at once as the machine has processors.
void measureSnapshots(std::uint16_t port, const std::string& token, int seconds);

}
