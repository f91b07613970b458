#include "LedgerService/Books/SectionBooking.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Books/BookRefusal.h"

namespace LedgerService {

namespace {

std::optional<Refusal> whyNotNote(std::string_view note)
{
    if (!EntryText::isSound(note))
        return BookRefusal::of(PostingReason::textUnsound);
    return EntryText::fitsNote(note) ? std::nullopt : std::optional{BookRefusal::of(PostingReason::textTooLong)};
}

/// Whether a name is there at all is for the rules of the section.
std::optional<Refusal> whyNotName(std::string_view name)
{
    if (TextFold::trimmed(name).empty() || Naming::isName(name))
        return std::nullopt;
    return Refusal::of(ServiceCode::validationError, "A name or period is one line of 1 to 120 characters.");
}

std::optional<Refusal> whyNotReceipts(const std::vector<std::string>& ids, bool takesReceipts)
{
    if (ids.empty())
        return std::nullopt;
    if (!takesReceipts)
        return Refusal::of(ServiceCode::validationError, "Only money that is booked carries receipts.");
    if (ids.size() > EntryLimits::receipts)
        return BookRefusal::of(PostingReason::tooManyReceipts);
    const std::unordered_set<std::string_view> different{ids.begin(), ids.end()};
    return different.size() == ids.size() ? std::nullopt : std::optional{BookRefusal::of(PostingReason::sameReceipt)};
}

bool isLinked(const Attachment& attachment)
{
    return !EntryText::given(attachment.transactionID).empty();
}

}

std::optional<std::string_view> SectionRows::originalAccountID() const
{
    if (!original || original->legs.empty())
        return std::nullopt;
    return original->legs.front().accountID;
}

std::optional<Refusal> SectionBooking::whyNotShaped(const SectionTexts& texts)
{
    if (auto refusal = whyNotName(EntryText::given(texts.name)))
        return refusal;
    if (auto refusal = whyNotName(EntryText::given(texts.period)))
        return refusal;
    if (auto refusal = whyNotNote(EntryText::given(texts.note)))
        return refusal;
    return texts.attachmentIDs ? whyNotReceipts(*texts.attachmentIDs, texts.takesReceipts) : std::nullopt;
}

std::optional<Refusal> SectionBooking::whyNotOn(std::string_view day, const SectionRows& rows)
{
    const auto refusal = EntryDays::whyNot(day, rows.today, EntryDays::start(rows.settings));
    if (!refusal)
        return std::nullopt;
    return BookRefusal::of(*refusal == EntryDays::Refusal::inFuture ? PostingReason::inFuture
                                                                    : PostingReason::beforeStart);
}

std::expected<EntryChange, Refusal> SectionBooking::book(LedgerTransaction entry, const SectionRows& rows)
{
    if (rows.attachments.size() != entry.attachmentIDs.size())
        return std::unexpected(BookRefusal::of(PostingReason::notFound));
    if (std::ranges::any_of(rows.attachments, isLinked))
        return std::unexpected(BookRefusal::of(PostingReason::receiptLinked));
    std::vector<const Account*> accounts;
    accounts.reserve(rows.accounts.size());
    for (const auto& account : rows.accounts)
        accounts.push_back(&account);
    auto balances = BalanceRules::after(entry.legs, accounts);
    if (!balances)
        return std::unexpected(BookRefusal::of(balances.error().reason == BalanceRules::Reason::insufficientFunds
                                                   ? PostingReason::insufficientFunds
                                                   : PostingReason::balanceLimit));
    require(!balances->empty(), "the accounts of all legs are loaded");
    return EntryChange{std::move(entry), *std::move(balances)};
}

LedgerTransaction SectionBooking::begin(std::string_view kind, std::string_view day, std::string_view note,
                                        const SectionRows& rows)
{
    LedgerTransaction entry;
    entry.id = rows.entryID;
    entry.kind = kind;
    entry.date = day;
    entry.note = note;
    entry.createdAt = rows.now;
    entry.memberID = rows.member.id;
    return entry;
}

LedgerTransaction SectionBooking::opposite(std::string_view day, std::string_view note, const SectionRows& rows)
{
    const auto& original = promised(rows.original, "only money that was booked is undone");
    auto entry = begin(EntryKind::reversal, day, note, rows);
    entry.reversalOf = original.id;
    entry.legs = ReversalRules::legs(original);
    return entry;
}

}
