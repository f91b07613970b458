#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

namespace ReceiptCommands {

using EntryCommands::Act;

/// What keeps the member from adding a receipt of so many bytes, whatever it holds. Asked before its file is written,
/// and again with its row: what is refused must not fill the disk.
std::optional<Refusal> whyNotTake(Connection& connection, const SessionOwner& owner, const ReceiptRoom& room,
                                  std::int64_t bytes);

/// Adds a receipt, whose file is in the folder, to those that the member may link.
std::expected<Attachment, Refusal> add(const Act& act, const ReceiptFolder& folder, Attachment receipt,
                                       const std::string& contentDigest);

enum class Linked { now, before };

/// Gives the receipts to a recorded entry. Those that it has already are not given again.
std::expected<Linked, Refusal> link(const Act& act, std::string_view entryID,
                                    const std::vector<std::string>& attachmentIDs);

}

}
