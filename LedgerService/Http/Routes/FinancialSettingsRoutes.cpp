#include <array>

#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Commands/FinancialSettingsCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

template <>
std::string commandName<FinancialSettingsCommand>(const MemberCall&)
{
    return "financial settings";
}

namespace {

std::optional<Refusal> whyNotShaped(const FinancialSettingsCommand& command)
{
    const auto refused = FinancialSettingsRules::whyNotShaped(command);
    return refused ? std::optional{SetupRefusal::of(*refused)} : std::nullopt;
}

std::expected<FinancialSettings, Refusal> carryOut(const MemberCall& call, const FinancialSettingsCommand& command)
{
    return FinancialSettingsCommands::carryOut(actOf(call), command);
}

constexpr std::array routes{
    Route{"POST", "/v1/financial-settings/commands", writing<&carryOut, &whyNotShaped>},
};

}

std::span<const Route> RouteFamilies::financialSettings()
{
    return routes;
}

}
