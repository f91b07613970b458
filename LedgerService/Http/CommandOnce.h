#pragma once

#include <expected>
#include <functional>
#include <string>
#include <string_view>

#include "LedgerService/Http/CommandFingerprint.h"
#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// Commands that create records are carried out at most once per member and idempotency key.
namespace CommandOnce {

/// Gives what `carryOut` made of the command the first time. A key that came with another command before is refused
/// with 409; a refused command leaves no trace, so that it can be mended and sent again with its key.
std::expected<std::string, Refusal> outcome(const MemberCall& call, std::string_view key,
                                            const CommandFingerprint& command,
                                            const std::function<std::expected<std::string, Refusal>()>& carryOut);

/// How the outcome of a command that recorded an entry is kept: by the entry's id alone, for the entry is kept anyway.
std::string recordedEntry(std::string_view entryID);

/// The id in such an outcome.
std::string_view entryIDOf(std::string_view outcome);

}

}
