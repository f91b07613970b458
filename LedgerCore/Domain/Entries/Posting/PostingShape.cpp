#include "LedgerCore/Domain/Entries/Posting/PostingShape.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace {

using EntryText::given;

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

/// Appends what is wrong with the fields of one command.
class Fields {
public:
    Fields(const TransactionInput& input, std::vector<PostingRefusal>& refusals) : m_input(input), m_refusals(refusals)
    {
    }

    void refuse(EntryField field, PostingReason reason) { m_refusals.push_back({field, reason}); }

    void judge(const KindFields& fields)
    {
        expect(fields.source, given(m_input.sourceAccountID), EntryField::account);
        expect(fields.target, given(m_input.targetAccountID), PostingShape::targetField(m_input.kind));
        expect(fields.received, given(m_input.targetCurrency), EntryField::destination, PostingReason::currencyMissing);
        if (fields.received == Use::never && m_input.targetAmountMinor)
            refuse(EntryField::targetAmount, PostingReason::foreignField);
        expect(fields.category, given(m_input.categoryID), EntryField::category);
        expect(fields.refund, given(m_input.originalTransactionID), EntryField::original);
        expect(fields.refund, given(m_input.externalReference), EntryField::original);
        expect(fields.purpose, given(m_input.transferPurpose), EntryField::destination);
        judgeAmount(m_input.amountMinor, EntryField::amount);
        if (fields.received == Use::always)
            judgeAmount(m_input.targetAmountMinor.value_or(0), EntryField::targetAmount);
    }

    void judgeText(std::string_view text, bool fits, EntryField field)
    {
        if (!EntryText::isSound(text))
            refuse(field, PostingReason::textUnsound);
        else if (!fits)
            refuse(field, PostingReason::textTooLong);
    }

private:
    void expect(Use use, std::string_view said, EntryField field, PostingReason absent = PostingReason::missing)
    {
        if (use == Use::always && said.empty())
            refuse(field, absent);
        if (use == Use::never && !said.empty())
            refuse(field, PostingReason::foreignField);
    }

    void judgeAmount(std::int64_t minor, EntryField field)
    {
        if (minor <= 0)
            refuse(field, PostingReason::notPositive);
        else if (!Money::isWithinLimit(minor))
            refuse(field, PostingReason::tooLarge);
    }

    const TransactionInput& m_input;
    std::vector<PostingRefusal>& m_refusals;
};

bool areDistinct(const std::vector<std::string>& ids)
{
    return std::set<std::string_view>(ids.begin(), ids.end()).size() == ids.size();
}

void judgeAcrossFields(const TransactionInput& input, Fields& fields)
{
    if (input.currency.empty())
        fields.refuse(EntryField::account, PostingReason::currencyMissing);
    else if (given(input.targetCurrency) == input.currency)
        fields.refuse(EntryField::destination, PostingReason::sameCurrency);
    const auto source = given(input.sourceAccountID);
    if (input.kind == EntryKind::transfer && !source.empty() && source == given(input.targetAccountID))
        fields.refuse(EntryField::destination, PostingReason::sameAccount);
    if (input.kind == EntryKind::refund && given(input.originalTransactionID).empty() &&
        EntryReference::of(input).empty())
        fields.refuse(EntryField::original, PostingReason::originalRequired);
}

}

EntryField PostingShape::targetField(std::string_view kind)
{
    const bool onlyArrives = kind == EntryKind::income || kind == EntryKind::opening;
    return onlyArrives ? EntryField::account : EntryField::destination;
}

void PostingShape::judge(const TransactionInput& input, std::vector<PostingRefusal>& refusals)
{
    Fields fields{input, refusals};
    const auto* const kind = std::ranges::find(recordable, input.kind, &KindFields::kind);
    if (kind == recordable.end())
        return fields.refuse(EntryField::account, PostingReason::unknownKind);
    fields.judge(*kind);
    judgeAcrossFields(input, fields);
    if (!LedgerDay::isValid(input.date))
        fields.refuse(EntryField::date, PostingReason::invalidDay);
    if (!EntryText::isKey(input.idempotencyKey))
        fields.refuse(EntryField::account, PostingReason::invalidKey);
    fields.judgeText(input.note, EntryText::fitsNote(input.note), EntryField::note);
    const auto reference = given(input.externalReference);
    fields.judgeText(reference, EntryText::fitsReference(reference), EntryField::original);
    if (input.attachmentIDs.size() > EntryLimits::receipts)
        fields.refuse(EntryField::receipts, PostingReason::tooManyReceipts);
    else if (input.attachmentIDs.size() > 1 && !areDistinct(input.attachmentIDs))
        fields.refuse(EntryField::receipts, PostingReason::sameReceipt);
}
