#pragma once

#include <cstdint>
#include <functional>
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
    std::int64_t uploadedChange = 0;
    std::int64_t linkedChange = 0;            // 0 while it is not linked
    int accountSet = 0;                       // of the entry that it is linked to
    std::optional<std::string> contentDigest; // of its file; unset for rows that never had one
};

/// What a member gets to see of the receipts after one change and up to another.
struct AttachmentView {
    std::string_view companyID;
    std::string_view memberID;
    std::int64_t after = 0;
    std::int64_t last = 0;
    std::int64_t asOf = 0; // receipts linked after this change are still shown as loose ones
    std::function<bool(int accountSet)> seesEntriesOn;
};

namespace AttachmentRepository {

/// The receipt whoever may see it.
std::optional<StoredAttachment> find(Connection& connection, std::string_view companyID, std::string_view attachmentID);

/// The company's receipts by entry and their order on it, those not yet linked first.
std::vector<StoredAttachment> all(Connection& connection, std::string_view companyID);

/// The receipts, each as its JSON, that the member got to see within the view's changes, in the order in which the
/// member got to see them: one's own since the upload, those of others since they were linked to an entry that one
/// sees. So later ones always come after those that a reader holds already.
std::vector<std::string> seenIn(Connection& connection, const AttachmentView& view);

/// The member's own that were uploaded before the view and linked in it, each as its JSON.
std::vector<std::string> linkedIn(Connection& connection, const AttachmentView& view);

/// How many of the member's own receipts are linked to nothing.
std::int64_t looseCount(Connection& connection, std::string_view companyID, std::string_view memberID);

/// Adds an uploaded receipt; it is linked to nothing yet.
void insert(Connection& connection, std::string_view companyID, const Attachment& attachment, std::string_view memberID,
            std::optional<std::string> contentDigest = std::nullopt);

/// Removes some of the receipts that were uploaded before this stamp and never linked, as the next change of their
/// companies; the digests of their files.
std::vector<std::string> removeLoose(Connection& connection, std::string_view before);

/// Whether any receipt of any company has this file.
bool isNamed(Connection& connection, std::string_view contentDigest);

/// Links the receipts to the entry in this order, after those that it has already.
void link(Connection& connection, std::string_view companyID, std::string_view entryID, int accountSet,
          std::int64_t change, const std::vector<std::string>& attachmentIDs);

}

}
