#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerService/Http/Dispatch/CommandFingerprint.h"
#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// A command that is carried out at most once per member and idempotency key. A refused command leaves no trace, so
/// that it can be mended and sent again with its key.
class CommandOnce {
public:
    /// What is wrong with the key itself.
    static std::optional<Refusal> whyNot(std::string_view key);

    CommandOnce(const MemberCall& call, std::string_view key, CommandFingerprint command);

    /// What was kept of this command when it was carried out, nothing if it was not yet, or the refusal of a key that
    /// came with another command before.
    [[nodiscard]] std::expected<std::optional<std::string>, Refusal> earlier() const;

    /// Keeps what the replies to repetitions are made from.
    void keep(const std::string& outcome) const;

private:
    const MemberCall& m_call;
    std::string_view m_key;
    CommandFingerprint m_command;
};

}
