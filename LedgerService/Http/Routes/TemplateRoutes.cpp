#include <array>

#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Commands/TemplateCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

/// Replied as the templates that the member sees once the command is carried out.
struct TemplatesNow {};

}

template <>
struct Answer<TemplatesNow> {
    static Outcome reply(const MemberCall& call, TemplatesNow)
    {
        return Reply{.body = Json::encode(TemplateCommands::list(actOf(call)))};
    }
    static std::string kept(TemplatesNow) { return {}; }
    static Outcome repeated(const MemberCall& call, const std::string&) { return reply(call, {}); }
};

namespace {

template <class Command>
std::optional<Refusal> whyNotShaped(const Command& command)
{
    const auto refused = TemplateRules::whyNotShaped(command.name, command.entry, command.recurrence);
    return refused ? std::optional{SetupRefusal::of(*refused)} : std::nullopt;
}

std::expected<TemplatesNow, Refusal> unlessRefused(std::expected<void, Refusal> done)
{
    if (!done)
        return std::unexpected(std::move(done.error()));
    return TemplatesNow{};
}

std::expected<TemplatesNow, Refusal> list(const MemberCall&)
{
    return TemplatesNow{};
}

std::expected<TemplatesNow, Refusal> create(const MemberCall& call, const TemplateCreate& command)
{
    return unlessRefused(TemplateCommands::create(actOf(call), command));
}

std::expected<TemplatesNow, Refusal> update(const MemberCall& call, const TemplateUpdate& command)
{
    return unlessRefused(TemplateCommands::update(actOf(call), call.parameters.front(), command));
}

std::expected<TemplatesNow, Refusal> remove(const MemberCall& call)
{
    return unlessRefused(TemplateCommands::remove(actOf(call), call.parameters.front()));
}

std::expected<TemplatesNow, Refusal> setDay(const MemberCall& call, const TemplateDay& command)
{
    return unlessRefused(TemplateCommands::setDay(actOf(call), call.parameters.front(), command));
}

constexpr std::array routes{
    Route{"GET", "/v1/templates", reading<&list>},
    Route{"POST", "/v1/templates", writing<&create, &whyNotShaped<TemplateCreate>>},
    Route{"PATCH", "/v1/templates/{id}", writing<&update, &whyNotShaped<TemplateUpdate>>},
    Route{"POST", "/v1/templates/{id}/remove", writing<&remove>},
    Route{"POST", "/v1/templates/{id}/days", writing<&setDay>},
};

}

std::span<const Route> RouteFamilies::templates()
{
    return routes;
}

}
