#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

class Connection;

/// A command that was carried out, and what it led to.
struct RecordedCommand {
    std::string fingerprint; // of the command's content
    std::string outcome;     // what a repetition is answered from
};

/// The commands carried out so far, by member and idempotency key.
namespace CommandRepository {

std::optional<RecordedCommand> find(Connection& connection, const SessionOwner& member, std::string_view key);

void insert(Connection& connection, const SessionOwner& member, std::string_view key, const RecordedCommand& command,
            std::string_view now);

}

}
