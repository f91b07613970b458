#include "LedgerService/Http/CommandOnce.h"

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/CommandRepository.h"

namespace LedgerService {

namespace {

constexpr std::size_t maximumKeyBytes = 200;

}

std::expected<std::string, Refusal>
CommandOnce::outcome(const MemberCall& call, std::string_view key, std::string_view content,
                     const std::function<std::expected<std::string, Refusal>()>& carryOut)
{
    if (TextFold::trimmed(key).empty() || key.size() > maximumKeyBytes)
        return std::unexpected(Refusal{400, "validation_error", "The idempotency key is empty or too long."});
    auto fingerprint = Random::digest(content);
    if (const auto earlier = CommandRepository::find(call.connection, call.owner(), key)) {
        if (earlier->fingerprint == fingerprint)
            return earlier->outcome;
        return std::unexpected(Refusal{409, "idempotency_conflict", "The key belongs to another command."});
    }
    auto outcome = carryOut();
    if (outcome)
        CommandRepository::insert(call.connection, call.owner(), key, {std::move(fingerprint), *outcome}, call.now);
    return outcome;
}

}
