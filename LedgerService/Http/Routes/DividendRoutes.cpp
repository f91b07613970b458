#include <array>

#include "LedgerService/Books/DividendRows.h"
#include "LedgerService/Commands/DividendSubmission.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

std::expected<NewSnapshot, Refusal> submit(const MemberCall& call, const DividendCommand& command)
{
    if (auto submitted = DividendSubmission::submit(actOf(call), command); !submitted)
        return std::unexpected(std::move(submitted.error()));
    return NewSnapshot{};
}

std::optional<Refusal> whyNot(const DividendCommand& command)
{
    return whyNotShaped(command);
}

constexpr std::array routes{
    Route{"POST", "/v1/dividends/commands", writing<&submit, &whyNot>},
};

}

std::span<const Route> RouteFamilies::dividends()
{
    return routes;
}

}
