#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

class Connection;

/// What members have begun and not recorded, by member and idempotency key.
namespace DraftRepository {

std::optional<EntryDraft> find(Connection& connection, const SessionOwner& member, std::string_view key);

/// The one that was changed last at the end.
std::vector<EntryDraft> all(Connection& connection, const SessionOwner& member);

/// In the place of the one with the same key.
void keep(Connection& connection, const SessionOwner& member, const EntryDraft& draft);

void remove(Connection& connection, const SessionOwner& member, std::string_view key);

}

}
