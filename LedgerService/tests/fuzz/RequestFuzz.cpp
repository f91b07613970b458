#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/parser.hpp>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Http/Connections/RequestHead.h"
#include "LedgerService/Http/RouteTable.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Http/Routes/QueryText.h"

namespace LedgerService {

namespace {

namespace http = boost::beast::http;
using Parser = http::request_parser<http::buffer_body>;

constexpr std::uint32_t headerBytes = 16 * 1024;
constexpr std::size_t bodyBytes = 1 << 20;

/// What the parser makes of bytes that arrive in pieces of this size, as a connection reads them.
struct Parsing {
    bool headRead = false;
    bool refused = false;
    std::string target;
    std::string body;
    Parser parser;

    Parsing(std::string_view bytes, std::size_t piece)
    {
        parser.header_limit(headerBytes);
        parser.body_limit(bodyBytes);
        std::string waiting;
        while (!refused && !parser.is_done() && !bytes.empty()) {
            const auto next = bytes.substr(0, piece);
            bytes.remove_prefix(next.size());
            waiting += next;
            while (!waiting.empty() && !refused && !parser.is_done() && take(waiting)) {
            }
        }
    }

private:
    /// Whether the parser took anything.
    bool take(std::string& waiting)
    {
        std::array<char, 512> block{};
        if (headRead)
            parser.get().body() = {.data = block.data(), .size = block.size(), .more = true};
        boost::beast::error_code failure;
        const auto taken = parser.put(boost::asio::buffer(waiting), failure);
        if (headRead)
            body.append(block.data(), block.size() - parser.get().body().size);
        if (!headRead && parser.is_header_done()) {
            headRead = true;
            target = parser.get().target();
        }
        waiting.erase(0, taken);
        refused = failure && failure != http::error::need_more && failure != http::error::need_buffer;
        return taken > 0;
    }
};

void checkRoute(const Request& request)
{
    static const RouteTable routes{allRoutes()};
    const auto match = routes.match(request.method, request.path);
    if (!match.route)
        return;
    const auto braces = std::ranges::count(match.route->pattern, '{');
    require(match.parameters.size() == static_cast<std::size_t>(braces), "each name in braces has its value");
    for (const auto& each : match.parameters)
        require(!each.empty() && each.find('/') == std::string::npos, "a value is one segment of the path");
    if (const auto fields = QueryText::fieldsOf(request.query); fields && request.query.empty())
        require(fields->empty(), "no query has no fields");
}

void check(const RequestHead::Header& header)
{
    const auto peer = boost::asio::ip::make_address("192.0.2.77");
    const auto request =
        RequestHead::read(header, {.peer = peer, .local = boost::asio::ip::address_v4::any()}, TrustedProxies{});
    if (!request) {
        require(request.error().status == 400 || request.error().status == 501, "a head is refused in plain words");
        return;
    }
    require(request->path.find('?') == std::string::npos, "a query is no part of the path");
    require(request->remote == "192.0.2.77", "nobody names another address than the own");
    require(request->onlyReads == (request->method == "GET" || request->method == "HEAD"), "what reads is known");
    checkRoute(*request);
}

}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace LedgerService;
    if (size == 0)
        return 0;
    const std::string_view bytes{reinterpret_cast<const char*>(data) + 1, size - 1};
    const Parsing pieces{bytes, std::size_t{1} + data[0]};
    const Parsing whole{bytes, bytes.size() + 1};
    if (!whole.refused && !pieces.refused) { // where it is refused depends on how much is looked at together
        require(whole.headRead == pieces.headRead && whole.target == pieces.target && whole.body == pieces.body,
                "a request is the same in whatever pieces it arrives");
    }
    if (whole.headRead)
        check(whole.parser.get());
    return 0;
}
