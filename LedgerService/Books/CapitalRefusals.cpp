#include "LedgerService/Books/CapitalRefusals.h"

#include <string>
#include <utility>

namespace LedgerService {

namespace {

std::string_view wordsFor(CapitalRefusal refusal)
{
    switch (refusal) {
        using enum CapitalRefusal;
    case unknownAction:
        return "The action is not one of capital.";
    case noAuthority:
        return "The member may not do this with capital.";
    case contributionsDisabled:
        return "The company records no new contributions.";
    case staleRevision:
        return "The capital section has changed since.";
    case invalidDate:
        return "The date is no calendar day.";
    case dateOrder:
        return "The day lies before a recorded capital action.";
    case nameRequired:
        return "An owner has a name.";
    case participantUnavailable:
        return "There is no such owner, or the owner is archived.";
    case memberUnavailable:
        return "There is no such member, or the member is another owner.";
    case currencyUnsupported:
        return "The currency is not supported.";
    case amountNotPositive:
        return "An amount is above zero.";
    case amountLimit:
        return "The owners' recorded sum would leave the supported range.";
    case accountUnavailable:
        return "There is no such account that takes the member's contributions in this currency.";
    case contributionUnavailable:
        return "There is no such contribution, or it is itself a reversal.";
    case alreadyReversed:
        return "The contribution is already reversed.";
    case amountUnreadable:
        return "An amount cannot be read.";
    case baselineNegative:
        return "Historical contributions are not negative.";
    case zeroBaselineUnconfirmed:
        return "A baseline of zero needs to be confirmed.";
    case baselineBoundary:
        return "A baseline covers up to a calendar day that is not after its recording.";
    case baselineOverlap:
        return "Covered time and recorded contributions meet.";
    case baselineConflict:
        return "A baseline supersedes the one in force.";
    case baselineCoverage:
        return "A baseline lists every owner who is not archived, and nobody twice.";
    case sharesIncomplete:
        return "Shares add up to 100 % and list nobody twice.";
    case visibilityRequired:
        return "The command does not say whether the section is shown.";
    case integrity:
        return "The recorded capital breaks its own rules.";
    }
    std::unreachable();
}

}

Refusal CapitalRefusals::of(CapitalRefusal refusal)
{
    return Refusal::of(serviceCode(refusal), std::string{wordsFor(refusal)});
}

}
