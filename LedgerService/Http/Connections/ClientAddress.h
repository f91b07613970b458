#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

namespace LedgerService {

/// Network addresses, as clients are counted by them.
namespace ClientAddress {

/// Reads "192.0.2.7", "192.0.2.7:51234", "2001:db8::1" or "[2001:db8::1]:443"; nothing for other texts. An IPv4
/// address that is written as an IPv6 one counts as what it is.
std::optional<boost::asio::ip::address> parse(std::string_view text);

/// What limits count by: an IPv4 address as it is, of an IPv6 address the /64 that one household or host is given.
std::string counted(const boost::asio::ip::address& address);

/// Whether the client is on the machine whose address `local` is, so that what is sent to it crosses no network.
bool isOfThisMachine(const boost::asio::ip::address& client, const boost::asio::ip::address& local);

}

/// The proxies that stand between clients and the service.
class TrustedProxies {
public:
    /// None: every peer is a client.
    TrustedProxies() = default;

    /// Whoever connects is the one proxy in front.
    static TrustedProxies anyPeer();

    /// Reads addresses and networks such as "10.0.0.0/8"; says which text is none.
    static std::expected<TrustedProxies, std::string> create(const std::vector<std::string>& texts);

    [[nodiscard]] bool isProxy(const boost::asio::ip::address& peer) const;

    /// The client behind `peer`: the last of the `forwarded` addresses ("a, b, c", the nearest hop last) that is not
    /// itself a proxy of the list. What a client wrote in front of it counts for nothing.
    [[nodiscard]] boost::asio::ip::address clientOf(const boost::asio::ip::address& peer,
                                                    std::string_view forwarded) const;

private:
    [[nodiscard]] bool isListed(const boost::asio::ip::address& address) const;

    bool m_anyPeer = false;
    std::vector<boost::asio::ip::network_v4> m_networks4;
    std::vector<boost::asio::ip::network_v6> m_networks6;
};

}
