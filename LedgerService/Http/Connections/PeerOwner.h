#pragma once

#include <optional>

#include <boost/asio/ip/tcp.hpp>
#include <sys/types.h>

namespace LedgerService {

/// Whose program is at the other end of a connection within this computer.
namespace PeerOwner {

/// The user who owns the socket `peer` that is connected to `here`; nothing when the system knows of none, as for a
/// peer on another machine or one that has left.
std::optional<uid_t> of(const boost::asio::ip::tcp::endpoint& peer, const boost::asio::ip::tcp::endpoint& here);

}

}
