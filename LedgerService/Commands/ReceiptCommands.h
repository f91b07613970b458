#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

namespace ReceiptCommands {

using EntryCommands::Act;

/// Adds a receipt, whose file is in the folder, to those that the member may link.
std::expected<Attachment, Refusal> add(const Act& act, const ReceiptFolder& folder, Attachment receipt,
                                       const std::string& contentDigest);

enum class Linked { now, before };

/// Gives the receipts to a recorded entry. Those that it has already are not given again.
std::expected<Linked, Refusal> link(const Act& act, std::string_view entryID,
                                    const std::vector<std::string>& attachmentIDs);

}

}
