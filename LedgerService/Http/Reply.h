#pragma once

#include <expected>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "LedgerService/Refusal.h"
#include "LedgerService/Storage/Rows/SessionRepository.h"

namespace LedgerService {

/// A finished answer.
struct Reply {
    int status = 200;
    std::string body = "{}"; // JSON
    std::string allow;       // methods, where the path knows others than the one asked
};

/// An answer with the reader's snapshot, read once the request's own work is committed: writers need not wait for it.
struct SnapshotReply {
    SessionOwner reader;
    /// A key and its text, such as the token; the snapshot then stands beside it under "snapshot".
    std::optional<std::pair<std::string, std::string>> beside;
};

using Outcome = std::expected<std::variant<Reply, SnapshotReply>, Refusal>;

Reply replyOf(const Refusal& refusal);

}
