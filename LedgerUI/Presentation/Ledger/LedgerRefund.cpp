#include "LedgerUI/Presentation/Ledger/LedgerRefund.h"

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

std::int64_t remaining(const LedgerBook& book, const LedgerTransaction& income, std::string_view currency)
{
    auto left = PostingRules::receivedMinor(income, currency);
    for (const auto at : book.refundsOf(income.id)) {
        const auto& refund = book.transaction(at);
        for (const auto& leg : refund.legs) {
            if (!refund.reversedBy && leg.currency == currency)
                left = Money::add(left, leg.amountMinor).value_or(0);
        }
    }
    return left;
}

}

std::optional<LedgerRefund> refundOf(const LedgerBook& book, std::uint32_t at)
{
    const auto& income = book.transaction(at);
    const auto& snapshot = book.snapshot();
    const auto lookup = [&](std::string_view id) { return snapshot.account(id); };
    for (const auto& leg : income.legs) {
        if (LedgerEntryAccess::whyNotRefund(income, lookup, snapshot.currentMember, leg.currency))
            continue;
        if (const auto left = remaining(book, income, leg.currency); left > 0)
            return LedgerRefund{income.id, leg.accountID, leg.currency, left};
    }
    return std::nullopt;
}
