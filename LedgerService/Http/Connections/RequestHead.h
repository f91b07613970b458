#pragma once

#include <expected>

#include <boost/asio/ip/address.hpp>
#include <boost/beast/http/fields.hpp>
#include <boost/beast/http/message.hpp>

#include "LedgerService/Http/Connections/ClientAddress.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What the service takes from a request's header. It is read before the body arrives, so that fields in a trailer
/// count for nothing.
namespace RequestHead {

using Header = boost::beast::http::request_header<>;

/// Between which addresses the connection runs.
struct Ends {
    boost::asio::ip::address peer;
    boost::asio::ip::address local;
};

/// The request without its body, or why a header like this is not served: its host is missing or ambiguous, or it
/// encodes the body in a way that the service does not know and so could not find the end of.
std::expected<Request, Refusal> read(const Header& header, const Ends& ends, const TrustedProxies& proxies);

}

}
