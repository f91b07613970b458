#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Attachment.h"

namespace LedgerService {

class Connection;

/// A receipt with the member who uploaded it.
struct StoredAttachment {
    Attachment attachment;
    std::string memberID;
};

namespace AttachmentRepository {

std::optional<Attachment> find(Connection& connection, std::string_view companyID, std::string_view attachmentID);

/// The company's receipts by entry and their order on it, those not yet linked first.
std::vector<StoredAttachment> all(Connection& connection, std::string_view companyID);

void insert(Connection& connection, std::string_view companyID, const StoredAttachment& stored);

/// Links the receipts to the entry in this order, after those that it has already.
void link(Connection& connection, std::string_view companyID, std::string_view entryID,
          const std::vector<std::string>& attachmentIDs);

}

}
