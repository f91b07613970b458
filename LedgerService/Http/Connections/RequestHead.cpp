#include "LedgerService/Http/Connections/RequestHead.h"

#include <iterator>
#include <optional>

#include <boost/beast/core/string.hpp>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

namespace LedgerService {

namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr unsigned version11 = 11;

std::string_view textOf(auto view)
{
    return {view.data(), view.size()};
}

std::string bearerOf(std::string_view header)
{
    constexpr std::string_view scheme = "Bearer ";
    return beast::iequals(header.substr(0, scheme.size()), scheme) ? std::string{header.substr(scheme.size())}
                                                                   : std::string{};
}

/// The path of "/v1/snapshot?x=1", and of the whole address that a proxy may send instead.
std::string_view pathOf(std::string_view target)
{
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (!beast::iequals(target.substr(0, scheme.size()), scheme))
            continue;
        const auto path = target.find_first_of("/?", scheme.size());
        if (path == std::string_view::npos || target[path] == '?')
            return "/";
        target.remove_prefix(path);
        break;
    }
    return target.substr(0, target.find('?'));
}

std::string_view queryOf(std::string_view target)
{
    const auto mark = target.find('?');
    return mark == std::string_view::npos ? std::string_view{} : target.substr(mark + 1);
}

/// All lines of a list field as one list.
std::string joined(const RequestHead::Header& header, std::string_view name)
{
    std::string list;
    const auto [first, last] = header.equal_range(beast::string_view{name.data(), name.size()});
    for (auto each = first; each != last; ++each) {
        list += list.empty() ? "" : ", ";
        list += textOf(each->value());
    }
    return list;
}

std::optional<Refusal> whyNotServed(const RequestHead::Header& header)
{
    const auto encodings = header.count(http::field::transfer_encoding);
    if (encodings > 1 || (encodings == 1 && !beast::iequals(header[http::field::transfer_encoding], "chunked")))
        return Refusal::of(ServiceCode::notImplemented, "The service does not know this transfer coding.");
    if (encodings == 1 && header.version() < version11)
        return Refusal::of(ServiceCode::validationError, "HTTP/1.0 has no transfer codings.");
    const auto hosts = header.count(http::field::host);
    if (hosts > 1 || (hosts == 0 && header.version() >= version11))
        return Refusal::of(ServiceCode::validationError, "The request names no host, or several.");
    if (header.count(http::field::authorization) > 1)
        return Refusal::of(ServiceCode::validationError, "The request carries several tokens.");
    return std::nullopt;
}

}

std::expected<Request, Refusal> RequestHead::read(const Header& header, const Ends& ends, const TrustedProxies& proxies)
{
    if (auto refusal = whyNotServed(header))
        return std::unexpected(*std::move(refusal));
    Request request;
    request.method = header.method() == http::verb::unknown ? "(unknown)" : textOf(header.method_string());
    request.onlyReads = header.method() == http::verb::get || header.method() == http::verb::head;
    request.path = pathOf(textOf(header.target()));
    request.query = queryOf(textOf(header.target()));
    request.token = bearerOf(textOf(header[http::field::authorization]));
    const auto client = proxies.clientOf(ends.peer, joined(header, "X-Forwarded-For"));
    request.remote = ClientAddress::counted(client);
    if (!ClientAddress::isOfThisMachine(client, ends.local)) // there it would only cost time
        request.coding = ContentCodings::preferred(joined(header, "Accept-Encoding"));
    request.ifNoneMatch = joined(header, "If-None-Match");
    request.instanceManipulations = joined(header, "A-IM");
    request.prefer = joined(header, "Prefer");
    request.fromWebPage = header.find(http::field::origin) != header.end();
    return request;
}

}
