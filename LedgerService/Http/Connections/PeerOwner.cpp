#include "LedgerService/Http/Connections/PeerOwner.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include <boost/asio/ip/address.hpp>
#include <fmt/core.h>

namespace LedgerService {

namespace {

using boost::asio::ip::tcp;

/// An address as the kernel prints it: the bytes of the network taken for numbers of this machine, 32 bits each.
std::string printed(const auto& bytes)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint32_t)) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes.data() + at, sizeof word);
        text += fmt::format("{:08X}", word);
    }
    return text;
}

std::string printed(const tcp::endpoint& endpoint)
{
    const auto address = endpoint.address();
    return fmt::format("{}:{:04X}",
                       address.is_v4() ? printed(address.to_v4().to_bytes()) : printed(address.to_v6().to_bytes()),
                       endpoint.port());
}

/// The same end, as a program has it that speaks IPv6 to an IPv4 address.
tcp::endpoint mapped(const tcp::endpoint& endpoint)
{
    using namespace boost::asio::ip;
    return {make_address_v6(v4_mapped, endpoint.address().to_v4()), endpoint.port()};
}

/// From a table of sockets as the kernel writes it.
std::optional<uid_t> ownerIn(std::istream& table, const tcp::endpoint& peer, const tcp::endpoint& here)
{
    const auto wanted = printed(peer) + " " + printed(here);
    for (std::string line; std::getline(table, line);) {
        if (!line.contains(wanted))
            continue;
        std::istringstream fields{line};
        std::string number;
        std::string local;
        std::string remote;
        std::string skipped; // state, queues, timer, retransmissions
        uid_t owner = 0;
        if (fields >> number >> local >> remote && local + " " + remote == wanted &&
            fields >> skipped >> skipped >> skipped >> skipped >> owner)
            return owner;
    }
    return std::nullopt;
}

}

std::optional<uid_t> PeerOwner::of(const tcp::endpoint& peer, const tcp::endpoint& here)
{
    std::ifstream newer{"/proc/net/tcp6"};
    if (peer.address().is_v6())
        return ownerIn(newer, peer, here);
    std::ifstream table{"/proc/net/tcp"};
    const auto found = ownerIn(table, peer, here);
    return found ? found : ownerIn(newer, mapped(peer), mapped(here));
}

}
