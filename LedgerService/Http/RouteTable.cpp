#include "LedgerService/Http/RouteTable.h"

#include <optional>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace LedgerService {

namespace {

/// Takes the text up to the next slash off the front.
std::string_view takeSegment(std::string_view& rest)
{
    const auto end = rest.find('/');
    const auto segment = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return segment;
}

std::optional<std::vector<std::string>> parametersOf(std::string_view pattern, std::string_view path)
{
    std::vector<std::string> parameters;
    if (!path.starts_with('/') || path.ends_with('/'))
        return std::nullopt;
    pattern.remove_prefix(1);
    path.remove_prefix(1);
    while (!pattern.empty() && !path.empty()) {
        const auto wanted = takeSegment(pattern);
        const auto segment = takeSegment(path);
        // What is no text names nothing, and some databases refuse to look for it.
        if (wanted.starts_with('{') && !segment.empty() && TextFold::isValidUtf8(segment))
            parameters.emplace_back(segment);
        else if (wanted != segment)
            return std::nullopt;
    }
    return pattern.empty() && path.empty() ? std::optional{parameters} : std::nullopt;
}

}

RouteMatch RouteTable::match(std::string_view method, std::string_view path) const
{
    RouteMatch match;
    for (const auto& route : m_routes) {
        auto parameters = parametersOf(route.pattern, path);
        if (!parameters)
            continue;
        if (route.method == method || (method == "HEAD" && route.method == "GET"))
            return {.route = &route, .parameters = *std::move(parameters), .allow = {}};
        match.allow += match.allow.empty() ? "" : ", ";
        match.allow += route.method;
        match.allow += route.method == "GET" ? ", HEAD" : "";
    }
    return match;
}

}
