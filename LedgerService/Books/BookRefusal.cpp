#include "LedgerService/Books/BookRefusal.h"

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Books/RefusalTable.h"

namespace LedgerService {

namespace {

using Answer = RefusalAnswer;

constexpr std::string_view invalid = ServiceCode::validationError;

constexpr Answer inactive{ServiceCode::inactiveMember, "The member is deactivated."};
constexpr Answer unknown{ServiceCode::notFound,
                         "The command names a record that does not exist or that the member does not see."};
constexpr Answer archived{ServiceCode::accountArchived, "An archived account takes no new entries."};
constexpr Answer noDay{invalid, "The date is no calendar day."};
constexpr Answer future{invalid, "The day lies in the future."};
constexpr Answer beforeTheBooks{ServiceCode::financialBeforeStartDate,
                                "The day lies before the bookkeeping start date."};
// The words name these.
static_assert(EntryLimits::noteLength == 2'000 && EntryLimits::referenceLength == 200 && EntryLimits::keyBytes == 200 &&
              EntryLimits::receipts == 10);

constexpr Answer noKey{invalid, "An idempotency key has 1 to 200 bytes."};
constexpr Answer foreign{invalid, "The fields given are not those of the kind."};
constexpr Answer currencies{invalid, "An entry has a currency, an exchange two different ones."};
constexpr Answer amounts{invalid, "An amount is above zero and within the supported range."};
constexpr Answer receipts{invalid, "An entry carries at most ten different receipts."};
constexpr Answer opened{ServiceCode::financialOpeningExists, "The account already has an opening in this currency."};
constexpr Answer drawn{ServiceCode::insufficientFunds, "The employee fund holds less than that in this currency."};
constexpr Answer beyondLimit{ServiceCode::balanceLimit, "The balance would leave the supported range."};
constexpr Answer notCorrected{ServiceCode::forbidden, "The member may not correct the entry."};

constexpr auto postings = []() consteval {
    using enum PostingReason;
    return RefusalTable{
        {
            {inactiveMember, inactive},
            {unknownKind, {invalid, "No entry of this kind can be recorded."}},
            {foreignField, foreign},
            {missing, foreign},
            {currencyMissing, currencies},
            {invalidDay, noDay},
            {invalidKey, noKey},
            {textTooLong, {invalid, "A note has at most 2,000 characters, a reference 200."}},
            {textUnsound, {invalid, "A text is not well-formed."}},
            {notPositive, amounts},
            {tooLarge, amounts},
            {sameCurrency, currencies},
            {sameAccount, {invalid, "A transfer joins two different accounts."}},
            {tooManyReceipts, receipts},
            {sameReceipt, receipts},
            {originalRequired,
             {ServiceCode::refundReferenceRequired, "A refund needs an original income or an external reference."}},
            {notFound, unknown},
            {accountArchived, archived},
            {notGranted, {ServiceCode::forbidden, "The member may not record this kind of entry on the account."}},
            {notResponsible, {ServiceCode::exclusiveOperator, "Only the responsible member uses this account."}},
            {kindRefused, {ServiceCode::forbidden, "The account does not take this kind of entry."}},
            {restrictedToRestricted,
             {ServiceCode::forbidden, "Money of a float or refund account goes back to a company account."}},
            {wrongPurpose, {invalid, "The transfer's purpose is not the one of its accounts."}},
            {currencyNotHeld, {invalid, "The account does not hold the currency."}},
            {wrongCategoryKind, {invalid, "The category is of another kind."}},
            {categoryArchived, {ServiceCode::categoryArchived, "An archived category takes no new entries."}},
            {receiptLinked, {ServiceCode::attachmentLinked, "A receipt is already linked to an entry."}},
            {inFuture, future},
            {beforeStart, beforeTheBooks},
            {startUnreadable, noDay},
            {openingDay,
             {ServiceCode::financialOpeningDateMismatch, "Openings are booked on the bookkeeping start date."}},
            {beforeOriginal, {invalid, "The day lies before the income that is refunded."}},
            {notRefundable, {ServiceCode::invalidRefundOriginal, "A refund names an income in its own currency."}},
            {originalUnavailable,
             {ServiceCode::refundOriginalUnavailable, "The original is reversed, or the member may not refund it."}},
            {duplicateReference, {ServiceCode::duplicateRefund, "A refund with this reference is already recorded."}},
            {refundLimit, {ServiceCode::refundLimit, "The refunds would exceed the original income."}},
            {openingExists, opened},
            {historyIncomplete, opened},
            {insufficientFunds, drawn},
            {reserveUnknown, drawn},
            {balanceLimit, beyondLimit},
        },
        balanceLimit};
}();

constexpr auto reversals = []() consteval {
    using enum ReversalRules::Refusal;
    return RefusalTable{
        {
            {inactiveMember, inactive},
            {invalidDay, noDay},
            {invalidKey, noKey},
            {reasonTooLong, {invalid, "A reason has at most 2,000 characters."}},
            {reasonUnsound, {invalid, "The reason is not well-formed."}},
            {notFound, unknown},
            {isReversal, {invalid, "A reversal is not reversed; record the entry again."}},
            {alreadyReversed, {ServiceCode::alreadyReversed, "The entry is already reversed."}},
            {capitalCorrection,
             {ServiceCode::capitalCorrectionRequired, "A contribution is corrected among the capital records."}},
            {dividendCorrection,
             {ServiceCode::dividendCorrectionRequired, "A dividend is corrected among the dividend records."}},
            {noLegs, notCorrected},
            {notPermitted, notCorrected},
            {refundsExist, {ServiceCode::refundsExist, "Refunds of this income must be reversed first."}},
            {accountArchived, archived},
            {inFuture, future},
            {beforeStart, beforeTheBooks},
            {beforeOriginal, {invalid, "The day lies before the entry that is reversed."}},
            {insufficientFunds, drawn},
            {balanceLimit, beyondLimit},
        },
        balanceLimit};
}();

}

Refusal BookRefusal::of(PostingReason reason)
{
    return postings.of(reason);
}

Refusal BookRefusal::of(ReversalRules::Refusal refusal)
{
    return reversals.of(refusal);
}

}
