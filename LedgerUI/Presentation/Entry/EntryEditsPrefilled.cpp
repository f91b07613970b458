#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"

TransactionDraft EntryEdits::refunding(const LedgerRefund& refund, std::string_view locale)
{
    TransactionDraft draft;
    draft.kind = EntryKind::refund;
    draft.source = refund.accountID;
    draft.currency = refund.currency;
    draft.amount = Money::formatDigits(refund.remainingMinor, refund.currency, locale);
    draft.originalIncomeID = refund.incomeID;
    return draft;
}

TransactionDraft EntryEdits::correctionOf(const LedgerTransaction& original, std::string_view locale)
{
    TransactionDraft draft;
    draft.kind = original.kind;
    draft.date = original.date;
    draft.note = original.note;
    draft.categoryID = original.categoryID;
    draft.originalIncomeID = original.originalTransactionID;
    draft.refundReference = original.externalReference.value_or(std::string{});
    const auto digits = [&](const LedgerLeg& leg) {
        return Money::formatDigits(leg.amountMinor < 0 ? -leg.amountMinor : leg.amountMinor, leg.currency, locale);
    };
    for (const auto& leg : original.legs) {
        const bool isTarget = leg.amountMinor > 0;
        (isTarget ? draft.target : draft.source) = leg.accountID;
        const bool isPrimary = isTarget == draft.onlyArrives();
        if (isPrimary) {
            draft.currency = leg.currency;
            draft.amount = digits(leg);
        } else if (draft.kind == EntryKind::exchange) {
            draft.targetCurrency = leg.currency;
            draft.targetAmount = digits(leg);
        }
    }
    return draft;
}
