#pragma once

#include <cstddef>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

/// The further blocks of a long body: each call gives the next one, an empty text ends the body. Called by one thread
/// at a time, a reader's, as fast as the client takes them; what it holds between two calls must be little. Throws when
/// it cannot go on: the connection is then cut off, so that the client does not take a part for the whole.
using BodyBlocks = std::function<std::string()>;

/// A finished answer.
struct Reply {
    int status = 200;
    std::string body = "{}";                                       // the first block of it when there are more
    std::vector<std::pair<std::string, std::string>> headers = {}; // beside those that every reply carries
    BodyBlocks more = {};
    std::size_t heldBytes = 0; // the memory that `more` holds until the last block is made, if that is not little
    std::string contentType = "application/json";
};

/// An answer with the reader's snapshot, read once the request's own work is committed: writers need not wait for it.
struct SnapshotReply {
    SessionOwner reader;
    SnapshotAsked asked;
    /// A key and its text, such as the token; the snapshot then stands beside it under "snapshot".
    std::optional<std::pair<std::string, std::string>> beside;
    bool opensSession = false; // the token stands beside it: nobody can prefer to go without
};

using Outcome = std::expected<std::variant<Reply, SnapshotReply>, Refusal>;

Reply replyOf(const Refusal& refusal);

/// {"ok":true}
Reply okReply();

}
