#include <array>

#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Http/CommandOnce.h"
#include "LedgerService/Http/RequestBody.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"

namespace LedgerService {

namespace {

EntryCommands::Act actOf(const MemberCall& call)
{
    return {.connection = call.connection,
            .companyID = call.companyID,
            .member = call.member,
            .today = call.today,
            .now = call.now};
}

/// Replies with the recorded entry alone: the reply, as the work, does not grow with the ledger.
Outcome post(const MemberCall& call)
{
    const auto input = RequestBody::decode<TransactionInput>(call.request);
    if (!input)
        return std::unexpected(input.error());
    auto recorded = CommandOnce::outcome(call, input->idempotencyKey, "entry\n" + Json::encode(*input),
                                         [&]() -> std::expected<std::string, Refusal> {
                                             const auto entry = EntryCommands::post(actOf(call), *input);
                                             if (!entry)
                                                 return std::unexpected(entry.error());
                                             return Json::encode(*entry);
                                         });
    if (!recorded)
        return std::unexpected(std::move(recorded.error()));
    return Reply{.status = 200, .body = *std::move(recorded)};
}

Outcome reverse(const MemberCall& call)
{
    const auto command = RequestBody::decode<Reversal>(call.request);
    if (!command)
        return std::unexpected(command.error());
    const auto& entryID = call.parameters.front();
    const auto recorded =
        CommandOnce::outcome(call, command->idempotencyKey, "reversal\n" + entryID + "\n" + Json::encode(*command),
                             [&]() -> std::expected<std::string, Refusal> {
                                 auto entry = EntryCommands::reverse(actOf(call), entryID, *command);
                                 if (!entry)
                                     return std::unexpected(std::move(entry.error()));
                                 return std::move(entry->id);
                             });
    if (!recorded)
        return std::unexpected(recorded.error());
    return SnapshotReply{.reader = call.owner(), .asked = {}, .beside = {}};
}

constexpr std::array routes{
    Route{"POST", "/v1/transactions", Writing{post}},
    Route{"POST", "/v1/transactions/{id}/reverse", Writing{reverse}},
};

}

std::span<const Route> RouteFamilies::transactions()
{
    return routes;
}

}
