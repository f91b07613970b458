#include "LedgerService/Http/Routes/AllRoutes.h"

#include <array>
#include <vector>

#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

namespace {

constexpr std::array families{
    RouteFamilies::health,       RouteFamilies::session,
    RouteFamilies::registration, RouteFamilies::access,
    RouteFamilies::snapshot,     RouteFamilies::transactions,
    RouteFamilies::attachments,  RouteFamilies::accounts,
    RouteFamilies::categories,   RouteFamilies::financialSettings,
    RouteFamilies::invitations,  RouteFamilies::members,
    RouteFamilies::company,      RouteFamilies::audit,
    RouteFamilies::capital,      RouteFamilies::dividends,
    RouteFamilies::templates,    RouteFamilies::drafts,
};

}

std::span<const Route> allRoutes()
{
    static const auto routes = [] {
        std::vector<Route> all;
        for (const auto family : families) {
            const auto each = family();
            all.insert(all.end(), each.begin(), each.end());
        }
        return all;
    }();
    return routes;
}

}
