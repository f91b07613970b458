#include "LedgerService/Books/EntryShape.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/PostingContext.h"

namespace LedgerService {

namespace {

using EntryShape::given;

enum class Use { never, always, sometimes };

/// Which fields a kind of entry has.
struct KindFields {
    std::string_view kind;
    Use source = Use::never;
    Use target = Use::never;
    Use received = Use::never; // currency and amount on the target's side
    Use category = Use::never;
    Use refund = Use::never; // original income and external reference
    Use purpose = Use::never;
};

constexpr std::array recordable{
    KindFields{.kind = EntryKind::income, .target = Use::always, .category = Use::always},
    KindFields{.kind = EntryKind::expense, .source = Use::always, .category = Use::always},
    KindFields{.kind = EntryKind::transfer, .source = Use::always, .target = Use::always, .purpose = Use::sometimes},
    KindFields{.kind = EntryKind::exchange, .source = Use::always, .target = Use::always, .received = Use::always},
    KindFields{.kind = EntryKind::refund, .source = Use::always, .refund = Use::sometimes},
    KindFields{.kind = EntryKind::opening, .target = Use::always},
};

bool fits(Use use, bool given)
{
    return use == Use::sometimes || given == (use == Use::always);
}

bool hasFieldsOf(const KindFields& fields, const TransactionInput& input)
{
    const bool refund = !given(input.originalTransactionID).empty() || !given(input.externalReference).empty();
    return fits(fields.source, !given(input.sourceAccountID).empty()) &&
           fits(fields.target, !given(input.targetAccountID).empty()) &&
           fits(fields.received, !given(input.targetCurrency).empty()) &&
           fits(fields.received, input.targetAmountMinor.has_value()) &&
           fits(fields.category, !given(input.categoryID).empty()) && fits(fields.refund, refund) &&
           fits(fields.purpose, !given(input.transferPurpose).empty());
}

bool isAmount(std::int64_t minor)
{
    return minor > 0 && Money::isWithinLimit(minor);
}

/// A NUL would end the text early in some stores and files.
bool isSound(std::string_view text, std::size_t maximumLength)
{
    return TextFold::isValidUtf8(text) && !text.contains('\0') && TextFold::length(text) <= maximumLength;
}

bool isKey(std::string_view key)
{
    return !key.empty() && key.size() <= EntryShape::maximumKeyLength;
}

bool areDistinct(const std::vector<std::string>& ids)
{
    return std::set<std::string_view>(ids.begin(), ids.end()).size() == ids.size();
}

}

std::optional<Refusal> EntryShape::whyNot(const TransactionInput& input)
{
    using BookRefusal::invalid;
    const auto* const fields = std::ranges::find(recordable, input.kind, &KindFields::kind);
    if (fields == recordable.end())
        return invalid("No entry of this kind can be recorded.");
    if (!hasFieldsOf(*fields, input))
        return invalid("The fields given are not those of the kind.");
    if (!LedgerDay::isValid(input.date))
        return invalid("The date is no calendar day.");
    if (!isKey(input.idempotencyKey))
        return invalid("The idempotency key is empty or too long.");
    if (!isSound(input.note, maximumNoteLength))
        return invalid("The note is too long or no text.");
    if (!isSound(given(input.externalReference), maximumReferenceLength))
        return invalid("The reference is too long or no text.");
    if (!isAmount(input.amountMinor) || (input.targetAmountMinor && !isAmount(*input.targetAmountMinor)))
        return invalid("An amount is above zero and within the supported range.");
    if (input.currency.empty() || input.targetCurrency == input.currency)
        return invalid("An entry has a currency, an exchange two different ones.");
    if (input.attachmentIDs.size() > maximumAttachments || !areDistinct(input.attachmentIDs))
        return invalid("An entry carries at most ten different receipts.");
    if (input.kind == EntryKind::transfer && input.sourceAccountID == input.targetAccountID)
        return invalid("A transfer joins two different accounts.");
    if (input.kind == EntryKind::refund && given(input.originalTransactionID).empty() && refundReference(input).empty())
        return BookRefusal::refundReferenceRequired();
    return std::nullopt;
}

std::optional<Refusal> EntryShape::whyNot(const Reversal& command)
{
    using BookRefusal::invalid;
    if (!LedgerDay::isValid(command.date))
        return invalid("The date is no calendar day.");
    if (!isKey(command.idempotencyKey))
        return invalid("The idempotency key is empty or too long.");
    if (!isSound(command.reason, maximumNoteLength))
        return invalid("The reason is too long or no text.");
    return std::nullopt;
}

}
