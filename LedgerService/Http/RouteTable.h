#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// Where a request leads.
struct RouteMatch {
    const Route* route = nullptr;        // null when the path or its method is unknown
    std::vector<std::string> parameters; // of the path, in order
    std::string allow;                   // the methods of a known path, when the method is not among them
};

/// All routes of the service.
class RouteTable {
public:
    explicit RouteTable(std::span<const Route> routes) : m_routes(routes) {}

    [[nodiscard]] RouteMatch match(std::string_view method, std::string_view path) const;

private:
    std::span<const Route> m_routes;
};

}
