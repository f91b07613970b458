#pragma once

#include <chrono>

#include "LedgerService/Mail/Mail.h"

namespace LedgerService {

class Connection;

/// Mail that waits to be sent. It is written with what it tells of, in one transaction, and stays until some process
/// of the service has sent it or its time is over.
namespace Outbox {

using Instant = std::chrono::system_clock::time_point;

/// The most that may wait.
inline constexpr int mostWaiting = 1000;

/// How long a letter that is not urgent may wait.
inline constexpr std::chrono::hours letterLifetime{48};

bool isFull(Connection& connection);

/// Puts the mail there until it is sent, at most for `lifetime`; leaves it out when the box is full. Expects a writing
/// transaction.
void put(Connection& connection, const Mail& mail, Instant now, std::chrono::seconds lifetime = letterLifetime);

}

}
