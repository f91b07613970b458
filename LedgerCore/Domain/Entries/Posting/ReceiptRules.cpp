#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"

#include <algorithm>
#include <set>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

bool isUnwanted(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F || byte == '/' || byte == '\\';
}

}

bool ReceiptRules::isName(std::string_view name)
{
    const auto trimmed = TextFold::trimmed(name); // as it is kept
    return !trimmed.empty() && TextFold::isValidUtf8(name) && TextFold::length(name) <= nameLength &&
           std::ranges::none_of(name, isUnwanted) && trimmed != "." && trimmed != "..";
}

bool ReceiptRules::mayLink(const LedgerTransaction& entry, const Member& member)
{
    return member.active && (entry.memberID == member.id || LedgerEntryAccess::canCorrect(entry, member));
}

std::optional<PostingReason> ReceiptRules::whyNotShaped(std::span<const std::string> ids)
{
    using enum PostingReason;
    if (ids.empty() || std::ranges::any_of(ids, &std::string::empty))
        return missing;
    if (ids.size() > EntryLimits::receipts)
        return tooManyReceipts;
    return std::set<std::string_view>{ids.begin(), ids.end()}.size() != ids.size() ? std::optional{sameReceipt}
                                                                                   : std::nullopt;
}

std::optional<PostingReason> ReceiptRules::whyNotLink(const LedgerTransaction& entry, const Member& member,
                                                      std::span<const std::string> ids,
                                                      std::span<const Attachment> found)
{
    using enum PostingReason;
    if (!mayLink(entry, member))
        return notGranted;
    if (auto refused = whyNotShaped(ids))
        return refused;
    if (entry.attachmentIDs.size() + ids.size() > EntryLimits::receipts)
        return tooManyReceipts;
    if (found.size() != ids.size())
        return notFound;
    const auto isTaken = [](const Attachment& each) { return each.transactionID && !each.transactionID->empty(); };
    return std::ranges::any_of(found, isTaken) ? std::optional{receiptLinked} : std::nullopt;
}

bool ReceiptRules::isLinked(const LedgerTransaction& entry, std::span<const std::string> ids)
{
    return !ids.empty() && std::ranges::all_of(ids, [&](const std::string& id) {
        return std::ranges::find(entry.attachmentIDs, id) != entry.attachmentIDs.end();
    });
}
