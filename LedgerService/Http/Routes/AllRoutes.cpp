#include "LedgerService/Http/Routes/AllRoutes.h"

#include <vector>

#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

std::span<const Route> allRoutes()
{
    static const auto routes = [] {
        std::vector<Route> all;
        for (const auto family :
             {RouteFamilies::health, RouteFamilies::session, RouteFamilies::snapshot, RouteFamilies::transactions,
              RouteFamilies::attachments, RouteFamilies::invitations, RouteFamilies::members, RouteFamilies::company}) {
            const auto each = family();
            all.insert(all.end(), each.begin(), each.end());
        }
        return all;
    }();
    return routes;
}

}
