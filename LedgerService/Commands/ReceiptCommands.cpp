#include "LedgerService/Commands/ReceiptCommands.h"

#include <algorithm>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/ReceiptRules.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Access/ReceiptAccess.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

namespace {

/// What one member may have lying about: nobody fills the disk.
constexpr std::int64_t mostLoose = 500;

std::vector<Attachment> known(const EntryCommands::Act& act, const std::vector<std::string>& ids)
{
    std::vector<Attachment> found;
    for (const auto& id : ids) {
        if (found.size() == EntryLimits::receipts) // more are refused whatever they are
            break;
        if (auto receipt = ReceiptAccess::find(act.connection, act.companyID, act.member, id))
            found.push_back(std::move(receipt->attachment));
    }
    return found;
}

}

std::expected<Attachment, Refusal> ReceiptCommands::add(const Act& act, const ReceiptFolder& folder, Attachment receipt,
                                                        const std::string& contentDigest)
{
    if (AttachmentRepository::looseCount(act.connection, act.companyID, act.member.id) >= mostLoose)
        return std::unexpected(
            Refusal::of(ServiceCode::rateLimited, "Too many receipts are linked to nothing; link some of them first."));
    if (!folder.has(contentDigest)) // whoever removes files nobody names holds the database meanwhile, as this does
        return std::unexpected(Refusal::of(ServiceCode::serviceUnavailable, "The file was removed; send it again."));
    receipt.id = Random::identifier();
    receipt.createdAt = act.now;
    AttachmentRepository::insert(act.connection, act.companyID, receipt, act.member.id, contentDigest);
    return receipt;
}

std::expected<ReceiptCommands::Linked, Refusal> ReceiptCommands::link(const Act& act, std::string_view entryID,
                                                                      const std::vector<std::string>& attachmentIDs)
{
    const auto entry = EntryRepository::find(act.connection, act.companyID, entryID);
    if (!entry || !Visibility::seesEntry(*entry, act.member))
        return std::unexpected(BookRefusal::of(PostingReason::notFound));
    if (ReceiptRules::mayLink(*entry, act.member) && ReceiptRules::isLinked(*entry, attachmentIDs))
        return Linked::before;
    if (const auto refused = ReceiptRules::whyNotLink(*entry, act.member, attachmentIDs, known(act, attachmentIDs)))
        return std::unexpected(BookRefusal::of(*refused));
    EntryRepository::linkReceipts(act.connection, act.companyID, entryID, attachmentIDs);
    AttachmentLink linked{entry->attachmentIDs};
    const auto before = linked;
    linked.attachmentIDs.insert(linked.attachmentIDs.end(), attachmentIDs.begin(), attachmentIDs.end());
    act.tell(before, linked);
    return Linked::now;
}

}
