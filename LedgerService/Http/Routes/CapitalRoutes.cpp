#include <array>

#include "LedgerService/Books/CapitalRows.h"
#include "LedgerService/Commands/CapitalSubmission.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

std::expected<NewSnapshot, Refusal> submit(const MemberCall& call, const CapitalCommand& command)
{
    if (auto submitted = CapitalSubmission::submit(actOf(call), command); !submitted)
        return std::unexpected(std::move(submitted.error()));
    return NewSnapshot{};
}

std::optional<Refusal> whyNot(const CapitalCommand& command)
{
    return whyNotShaped(command);
}

constexpr std::array routes{
    Route{"POST", "/v1/capital/commands", writing<&submit, &whyNot>},
};

}

std::span<const Route> RouteFamilies::capital()
{
    return routes;
}

}
