#include "LedgerService/Access/ReceiptAccess.h"

#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"

namespace LedgerService {

std::optional<StoredAttachment> ReceiptAccess::find(Connection& connection, std::string_view companyID,
                                                    const Member& member, std::string_view attachmentID)
{
    auto stored = AttachmentRepository::find(connection, companyID, attachmentID);
    if (!stored)
        return std::nullopt;
    const bool seen =
        stored->attachment.transactionID
            ? Visibility::seesAny(AccountSetRepository::accountIDs(connection, companyID, stored->accountSet), member)
            : stored->memberID == member.id;
    return seen ? std::move(stored) : std::nullopt;
}

}
