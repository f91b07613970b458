#include <array>

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Commands/AccountCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

template <class Command>
std::optional<Refusal> whyNotShaped(const Command& command)
{
    const auto refused = AccountRules::whyNotShaped(command);
    return refused ? std::optional{SetupRefusal::of(*refused)} : std::nullopt;
}

std::expected<NewSnapshot, Refusal> create(const MemberCall& call, const AccountCreate& command)
{
    auto account = AccountCommands::create(actOf(call), command);
    if (!account)
        return std::unexpected(std::move(account.error()));
    return NewSnapshot{};
}

/// Also for a body that only says whether the account is archived.
std::expected<NewSnapshot, Refusal> update(const MemberCall& call, const AccountUpdate& command)
{
    auto account = AccountCommands::update(actOf(call), call.parameters.front(), command);
    if (!account)
        return std::unexpected(std::move(account.error()));
    return NewSnapshot{};
}

constexpr std::array routes{
    Route{"POST", "/v1/accounts", writing<&create, &whyNotShaped<AccountCreate>>},
    Route{"PATCH", "/v1/accounts/{id}", writing<&update, &whyNotShaped<AccountUpdate>>},
};

}

std::span<const Route> RouteFamilies::accounts()
{
    return routes;
}

}
