#pragma once

#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace LedgerService {

/// What of a company a member gets to see.
namespace Visibility {

/// Everyone, for names are needed on entries; without addresses and rights for those who do not manage the company.
std::vector<Member> members(std::vector<Member> all, const Member& reader);

/// Whether one of these accounts is among those that the reader views.
bool seesAny(const std::vector<std::string>& accountIDs, const Member& reader);

/// Entries are seen whole by whoever views an account of one of their legs.
bool seesEntry(const LedgerTransaction& entry, const Member& reader);

std::vector<Account> accounts(std::vector<Account> all, const Member& reader);

}

}
