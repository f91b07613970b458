#include "LedgerService/Http/Connections/ReplyHeader.h"

#include <iterator>

#include <boost/beast/http/status.hpp>
#include <fmt/format.h>

namespace LedgerService {

namespace {

namespace http = boost::beast::http;

}

std::string ReplyHeader::text(const Reply& reply, Framing framing)
{
    const auto reason = http::obsolete_reason(static_cast<http::status>(reply.status));
    std::string header;
    const auto to = std::back_inserter(header);
    fmt::format_to(to, "HTTP/1.1 {} {}\r\n", reply.status, std::string_view{reason.data(), reason.size()});
    header += "Cache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n";
    const bool unchanged = reply.status == static_cast<int>(http::status::not_modified); // never has a body
    if (!unchanged)
        fmt::format_to(to, "Content-Type: {}\r\n", reply.contentType);
    for (const auto& [name, value] : reply.headers)
        fmt::format_to(to, "{}: {}\r\n", name, value);
    if (framing.chunked)
        header += "Transfer-Encoding: chunked\r\n";
    else if (!reply.more && !unchanged)
        fmt::format_to(to, "Content-Length: {}\r\n", reply.body.size());
    if (!framing.keepAlive)
        header += "Connection: close\r\n";
    else if (framing.version10)
        header += "Connection: keep-alive\r\n";
    header += "\r\n";
    return header;
}

}
