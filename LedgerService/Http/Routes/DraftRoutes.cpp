#include <array>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Commands/DraftCommands.h"
#include "LedgerService/Http/Dispatch/CommandOnce.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/QueryText.h"
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

/// "writer=x&takenFrom=y".
std::optional<DraftDiscard> discardOf(std::string_view query)
{
    auto fields = QueryText::fieldsOf(query);
    if (!fields)
        return std::nullopt;
    DraftDiscard by{.writer = (*fields)["writer"], .takenFrom = {}};
    if (const auto taken = fields->find("takenFrom"); taken != fields->end())
        by.takenFrom = taken->second;
    return by;
}

std::expected<Done, Refusal> discard(const MemberCall& call)
{
    const auto by = discardOf(call.request.query);
    if (!by)
        return std::unexpected(Refusal::of(ServiceCode::validationError, "The query is not one of this path."));
    if (auto refusal = DraftCommands::whyNotShaped(*by))
        return std::unexpected(*std::move(refusal));
    const auto done = DraftCommands::discard(actOf(call), call.parameters.front(), *by);
    if (!done)
        return std::unexpected(done.error());
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
