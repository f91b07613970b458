#pragma once

#include <expected>
#include <functional>
#include <string>
#include <string_view>

#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// Commands that create records are carried out at most once per member and idempotency key.
namespace CommandOnce {

/// Gives what `carryOut` made of the command the first time. A key that came with another `content` before is refused
/// with 409; a refused command leaves no trace, so that it can be mended and sent again with its key. `content` is the
/// command's name and its decoded fields, so that the same command in other JSON is still the same.
std::expected<std::string, Refusal> outcome(const MemberCall& call, std::string_view key, std::string_view content,
                                            const std::function<std::expected<std::string, Refusal>()>& carryOut);

}

}
