#include "LedgerService/Http/Dispatch/CommandOnce.h"

#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Storage/Rows/Companies/CommandRepository.h"

namespace LedgerService {

std::optional<Refusal> CommandOnce::whyNot(std::string_view key)
{
    if (TextFold::trimmed(key).empty() || key.size() > EntryLimits::keyBytes)
        return Refusal::of(ServiceCode::validationError,
                           fmt::format("An idempotency key has 1 to {} bytes.", EntryLimits::keyBytes));
    return std::nullopt;
}

CommandOnce::CommandOnce(const MemberCall& call, std::string_view key, CommandFingerprint command)
    : m_call(call), m_key(key), m_command(std::move(command))
{
}

std::expected<std::optional<std::string>, Refusal> CommandOnce::earlier() const
{
    auto kept = CommandRepository::find(m_call.connection, m_call.owner(), m_key);
    if (!kept)
        return std::nullopt;
    if (!m_command.matches(kept->fingerprint))
        return std::unexpected(Refusal::of(ServiceCode::idempotencyConflict, "The key belongs to another command."));
    return std::move(kept->outcome);
}

void CommandOnce::keep(const std::string& outcome) const
{
    CommandRepository::insert(m_call.connection, m_call.owner(), m_key, {m_command.text(), outcome}, m_call.now);
}

}
