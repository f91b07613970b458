#include "LedgerService/Books/DividendRefusals.h"

#include <string>
#include <utility>

namespace LedgerService {

namespace {

std::string_view wordsFor(DividendRefusal refusal)
{
    switch (refusal) {
        using enum DividendRefusal;
    case unknownAction:
        return "The action is not one of dividends.";
    case noAuthority:
        return "The member may not do this with dividends, or not on this account.";
    case dividendsDisabled:
        return "The company makes no new allocations and advances.";
    case staleRevision:
        return "The dividend section has changed since.";
    case invalidDate:
        return "The date is no calendar day.";
    case dateOrder:
        return "The day lies before a recorded dividend action.";
    case nameRequired:
        return "A participant has a name.";
    case participantUnavailable:
        return "There is no such participant, or the participant is archived.";
    case memberUnavailable:
        return "There is no such member, or the member is another participant.";
    case ratioInvalid:
        return "A ratio lies between 0 and 100 %.";
    case visibilityRequired:
        return "The command does not say whether the section is shown.";
    case periodRequired:
        return "An allocation has a period.";
    case currencyUnsupported:
        return "The currency is not supported, or not that of the record.";
    case amountNotPositive:
        return "An amount is above zero.";
    case amountLimit:
        return "The sum of the currency would leave the supported range.";
    case sharesIncomplete:
        return "Ratios add up to 100 % and list nobody twice.";
    case batchUnavailable:
        return "There is no such allocation to the participant, or it is cancelled.";
    case advanceUnavailable:
        return "There is no such advance to the participant, or it is reversed.";
    case overpayment:
        return "The amount exceeds what is unpaid, or what is left of the advance.";
    case overapplication:
        return "The amount exceeds what is unpaid or what is left of the advance.";
    case dependencies:
        return "Payments, offsets or returns must be reversed first.";
    case movementUnavailable:
        return "There is no such movement, or it is itself a reversal.";
    case alreadyReversed:
        return "The movement is already reversed.";
    case ownershipMissing:
        return "No ownership shares are in force on the day.";
    case integrity:
        return "The recorded dividends break their own rules.";
    }
    std::unreachable();
}

}

Refusal DividendRefusals::of(DividendRefusal refusal)
{
    return Refusal::of(serviceCode(refusal), std::string{wordsFor(refusal)});
}

}
