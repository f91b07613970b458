#include "LedgerService/Http/CommandOnce.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Storage/Rows/CommandRepository.h"

namespace LedgerService {

namespace {

constexpr std::size_t maximumKeyBytes = 200;
constexpr std::string_view entryMark = "entry:";

}

std::expected<std::string, Refusal>
CommandOnce::outcome(const MemberCall& call, std::string_view key, const CommandFingerprint& command,
                     const std::function<std::expected<std::string, Refusal>()>& carryOut)
{
    if (TextFold::trimmed(key).empty() || key.size() > maximumKeyBytes)
        return std::unexpected(Refusal{400, ServiceCode::validationError, "The idempotency key is empty or too long."});
    if (const auto earlier = CommandRepository::find(call.connection, call.owner(), key)) {
        if (command.matches(earlier->fingerprint))
            return earlier->outcome;
        return std::unexpected(Refusal{409, ServiceCode::idempotencyConflict, "The key belongs to another command."});
    }
    auto outcome = carryOut();
    if (outcome)
        CommandRepository::insert(call.connection, call.owner(), key, {command.text(), *outcome}, call.now);
    return outcome;
}

std::string CommandOnce::recordedEntry(std::string_view entryID)
{
    return std::string{entryMark}.append(entryID);
}

std::string_view CommandOnce::entryIDOf(std::string_view outcome)
{
    require(outcome.starts_with(entryMark), "only the outcome of a recorded entry names one");
    return outcome.substr(entryMark.size());
}

}
