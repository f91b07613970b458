#include <array>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Http/CommandOnce.h"
#include "LedgerService/Http/RequestBody.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"

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

/// The entry of an earlier outcome as it was when it was recorded.
LedgerTransaction recordedBefore(const MemberCall& call, std::string_view outcome)
{
    auto entry = EntryRepository::find(call.connection, call.companyID, CommandOnce::entryIDOf(outcome));
    require(entry.has_value(), "recorded entries stay");
    entry->reversedBy.reset();
    return *std::move(entry);
}

/// Replies with the recorded entry alone: the reply, as the work, does not grow with the ledger.
Outcome post(const MemberCall& call)
{
    const auto input = RequestBody::decode<TransactionInput>(call.request);
    if (!input)
        return std::unexpected(input.error());
    std::optional<LedgerTransaction> entry;
    const auto recorded = CommandOnce::outcome(call, input->idempotencyKey, CommandFingerprint::of("entry", *input),
                                               [&]() -> std::expected<std::string, Refusal> {
                                                   auto posted = EntryCommands::post(actOf(call), *input);
                                                   if (!posted)
                                                       return std::unexpected(std::move(posted.error()));
                                                   entry = *std::move(posted);
                                                   return CommandOnce::recordedEntry(entry->id);
                                               });
    if (!recorded)
        return std::unexpected(recorded.error());
    return Reply{.status = 200, .body = Json::encode(entry ? *entry : recordedBefore(call, *recorded))};
}

Outcome reverse(const MemberCall& call)
{
    const auto command = RequestBody::decode<Reversal>(call.request);
    if (!command)
        return std::unexpected(command.error());
    const auto& entryID = call.parameters.front();
    const auto recorded =
        CommandOnce::outcome(call, command->idempotencyKey, CommandFingerprint::of("reversal\n" + entryID, *command),
                             [&]() -> std::expected<std::string, Refusal> {
                                 const auto entry = EntryCommands::reverse(actOf(call), entryID, *command);
                                 if (!entry)
                                     return std::unexpected(entry.error());
                                 return CommandOnce::recordedEntry(entry->id);
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
