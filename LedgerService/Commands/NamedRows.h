#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerService/Books/SectionBooking.h"
#include "LedgerService/Commands/CommandAct.h"

namespace LedgerService {

/// The rows that a command names, found within its company.
namespace NamedRows {

/// The accounts of the entry's legs, each once.
std::vector<Account> accountsOf(const CommandAct& act, const LedgerTransaction& entry);

/// Those that exist and that the member may link. No more than an entry takes: a command with more is refused whatever
/// they are.
std::vector<Attachment> attachmentsOf(const CommandAct& act, const std::vector<std::string>& ids);

/// What a command of capital or dividends looks at beside its section. `originalEntryID` is the entry of the money that
/// it undoes.
SectionRows sectionRows(const CommandAct& act, const std::optional<std::string>& accountID,
                        const std::optional<std::string>& originalEntryID,
                        const std::optional<std::vector<std::string>>& attachmentIDs);

/// Writes a decided entry and the balances that it leaves.
void write(const CommandAct& act, const EntryChange& change);

}

}
