#include "LedgerService/Commands/ReceiptCommands.h"

#include <chrono>

#include <fmt/core.h>

#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"

namespace LedgerService {

namespace {

/// What one member may have lying about: nobody fills the disk.
constexpr std::int64_t mostLoose = 500;
constexpr unsigned bitsOfMebi = 20;

}

std::optional<Refusal> ReceiptCommands::whyNotTake(Connection& connection, const SessionOwner& owner,
                                                   const ReceiptRoom& room, std::int64_t bytes)
{
    if (AttachmentRepository::looseCount(connection, owner.companyID, owner.memberID) >= mostLoose)
        return Refusal::of(ServiceCode::rateLimited,
                           fmt::format("A member has at most {} receipts that are linked to nothing.", mostLoose),
                           std::chrono::hours{1});
    const auto use = ReceiptSpace::of(connection, owner.companyID);
    const auto most = use.demonstration ? room.demonstration : room.company;
    if (use.bytes + bytes > most)
        return Refusal::of(ServiceCode::insufficientStorage,
                           fmt::format("The company has room for {} MiB of receipts.", most >> bitsOfMebi));
    return std::nullopt;
}

std::expected<Attachment, Refusal> ReceiptCommands::add(const Act& act, const ReceiptFolder& folder, Attachment receipt,
                                                        const std::string& contentDigest)
{
    if (auto refusal = whyNotTake(act.connection, {act.companyID, act.member.id}, folder.room(), receipt.byteCount))
        return std::unexpected(*std::move(refusal));
    if (!folder.has(contentDigest)) // whoever removes files nobody names holds the database meanwhile, as this does
        return std::unexpected(Refusal::of(ServiceCode::serviceUnavailable, "The file was removed; send it again.",
                                           std::chrono::seconds{1}));
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
    if (const auto refused =
            ReceiptRules::whyNotLink(*entry, act.member, attachmentIDs, NamedRows::attachmentsOf(act, attachmentIDs)))
        return std::unexpected(BookRefusal::of(*refused));
    EntryRepository::linkReceipts(act.connection, act.companyID, entryID, attachmentIDs);
    AttachmentLink linked{entry->attachmentIDs};
    const auto before = linked;
    linked.attachmentIDs.insert(linked.attachmentIDs.end(), attachmentIDs.begin(), attachmentIDs.end());
    act.tell(before, linked);
    return Linked::now;
}

}
