#pragma once

#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"

namespace LedgerService {

class Connection;

/// Who gets to see which receipt.
namespace ReceiptAccess {

/// The receipt, if the member may know of it: those of entries that the member sees, and the member's own that are
/// linked to nothing.
std::optional<StoredAttachment> find(Connection& connection, std::string_view companyID, const Member& member,
                                     std::string_view attachmentID);

}

}
