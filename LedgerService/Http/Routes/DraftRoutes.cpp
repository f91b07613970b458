#include <array>

#include "LedgerService/Commands/DraftCommands.h"
#include "LedgerService/Http/Dispatch/CommandOnce.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

constexpr std::size_t largestDraft = std::size_t{64} << 10;

std::optional<Refusal> whyNotShaped(const DraftKeep& draft)
{
    if (auto refusal = CommandOnce::whyNot(draft.entry.idempotencyKey))
        return refusal;
    return DraftCommands::whyNotShaped(draft);
}

std::expected<EntryDraftList, Refusal> list(const MemberCall& call)
{
    return DraftCommands::list(actOf(call));
}

std::expected<DraftKept, Refusal> keep(const MemberCall& call, const DraftKeep& draft)
{
    return DraftCommands::keep(actOf(call), call.parameters.front(), draft);
}

std::expected<Done, Refusal> discard(const MemberCall& call)
{
    DraftCommands::discard(actOf(call), call.parameters.front());
    return Done{};
}

constexpr std::array routes{
    Route{"GET", "/v1/me/drafts", reading<&list>},
    Route{"PUT", "/v1/me/drafts/{key}", writing<&keep, &whyNotShaped>, Lane::byMethod, largestDraft},
    Route{"DELETE", "/v1/me/drafts/{key}", writing<&discard>},
};

}

std::span<const Route> RouteFamilies::drafts()
{
    return routes;
}

}
