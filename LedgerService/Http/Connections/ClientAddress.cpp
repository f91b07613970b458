#include "LedgerService/Http/Connections/ClientAddress.h"

#include <algorithm>

#include <fmt/core.h>

namespace LedgerService {

namespace {

namespace ip = boost::asio::ip;

constexpr unsigned short householdBits = 64;

std::string_view trimmed(std::string_view text)
{
    constexpr auto blanks = " \t";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isPort(std::string_view text)
{
    return !text.empty() && text.size() <= 5 &&
           std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

/// The address without its brackets and port.
std::string_view withoutPort(std::string_view text)
{
    if (text.starts_with('[')) {
        const auto end = text.find(']');
        if (end == std::string_view::npos)
            return {};
        const auto rest = text.substr(end + 1);
        return rest.empty() || (rest.starts_with(':') && isPort(rest.substr(1))) ? text.substr(1, end - 1)
                                                                                 : std::string_view{};
    }
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || text.find(':', colon + 1) != std::string_view::npos)
        return text; // IPv4 alone, or IPv6
    return isPort(text.substr(colon + 1)) ? text.substr(0, colon) : std::string_view{};
}

ip::address plain(const ip::address& address)
{
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        return ip::make_address_v4(ip::v4_mapped, address.to_v6());
    return address;
}

template <class Network>
bool holds(const Network& network, const auto& address)
{
    return Network{address, network.prefix_length()}.canonical() == network.canonical();
}

/// Takes the last entry off a list "a, b, c".
std::string_view takeLast(std::string_view& list)
{
    const auto comma = list.rfind(',');
    const auto last = comma == std::string_view::npos ? list : list.substr(comma + 1);
    list = comma == std::string_view::npos ? std::string_view{} : list.substr(0, comma);
    return trimmed(last);
}

}

std::optional<ip::address> ClientAddress::parse(std::string_view text)
{
    boost::system::error_code failure;
    const auto address = ip::make_address(std::string{withoutPort(trimmed(text))}, failure);
    return failure ? std::nullopt : std::optional{plain(address)};
}

std::string ClientAddress::counted(const ip::address& address)
{
    const auto client = plain(address);
    if (client.is_v4())
        return client.to_string();
    auto household = client.to_v6();
    household.scope_id(0);
    return ip::network_v6{household, householdBits}.canonical().to_string();
}

bool ClientAddress::isOfThisMachine(const ip::address& client, const ip::address& local)
{
    return plain(client).is_loopback() || plain(client) == plain(local);
}

TrustedProxies TrustedProxies::anyPeer()
{
    TrustedProxies proxies;
    proxies.m_anyPeer = true;
    return proxies;
}

std::expected<TrustedProxies, std::string> TrustedProxies::create(const std::vector<std::string>& texts)
{
    TrustedProxies proxies;
    for (const auto& text : texts) {
        const bool version6 = text.find(':') != std::string::npos;
        const bool network = text.find('/') != std::string::npos;
        boost::system::error_code failure;
        if (version6)
            proxies.m_networks6.push_back(ip::make_network_v6(network ? text : text + "/128", failure));
        else
            proxies.m_networks4.push_back(ip::make_network_v4(network ? text : text + "/32", failure));
        if (failure)
            return std::unexpected(fmt::format("'{}' is no address and no network such as 10.0.0.0/8", text));
    }
    return proxies;
}

bool TrustedProxies::isListed(const ip::address& address) const
{
    if (address.is_v4())
        return std::ranges::any_of(m_networks4, [&](const auto& each) { return holds(each, address.to_v4()); });
    return std::ranges::any_of(m_networks6, [&](const auto& each) { return holds(each, address.to_v6()); });
}

bool TrustedProxies::isProxy(const ip::address& peer) const
{
    return m_anyPeer || isListed(plain(peer));
}

ip::address TrustedProxies::clientOf(const ip::address& peer, std::string_view forwarded) const
{
    auto client = plain(peer);
    if (!isProxy(client))
        return client;
    while (!forwarded.empty()) {
        const auto hop = ClientAddress::parse(takeLast(forwarded));
        if (!hop)
            return client; // the nearest address that is known
        client = *hop;
        if (m_anyPeer || !isListed(client))
            return client;
    }
    return client;
}

}
