#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"

#include "LedgerCore/Client/Errors/APIError.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// The row of capitalWords() for a refusal that the service has no words of its own for; empty for others.
std::string_view keyOf(CapitalRefusal refusal)
{
    switch (refusal) {
    case CapitalRefusal::noAuthority:
        return "refusal.noAuthority";
    case CapitalRefusal::contributionsDisabled:
        return "refusal.contributionsDisabled";
    case CapitalRefusal::nameRequired:
        return "refusal.nameRequired";
    case CapitalRefusal::participantUnavailable:
        return "refusal.ownerUnavailable";
    case CapitalRefusal::memberUnavailable:
        return "refusal.memberUnavailable";
    case CapitalRefusal::currencyUnsupported:
        return "refusal.currencyRequired";
    case CapitalRefusal::amountNotPositive:
        return "refusal.contributionAmount";
    case CapitalRefusal::accountUnavailable:
        return "refusal.capitalAccount";
    case CapitalRefusal::contributionUnavailable:
        return "refusal.contributionUnavailable";
    case CapitalRefusal::baselineNegative:
        return "refusal.baselineNegative";
    case CapitalRefusal::zeroBaselineUnconfirmed:
        return "refusal.zeroBaseline";
    case CapitalRefusal::baselineBoundary:
        return "refusal.baselineBoundary";
    case CapitalRefusal::sharesIncomplete:
        return "refusal.ownershipTotal";
    default:
        return {};
    }
}

std::string_view keyOf(DividendRefusal refusal)
{
    switch (refusal) {
    case DividendRefusal::noAuthority:
        return "refusal.noAuthority";
    case DividendRefusal::nameRequired:
        return "refusal.nameRequired";
    case DividendRefusal::participantUnavailable:
        return "refusal.participantUnavailable";
    case DividendRefusal::memberUnavailable:
        return "refusal.memberUnavailable";
    case DividendRefusal::ratioInvalid:
        return "refusal.ratioInvalid";
    case DividendRefusal::periodRequired:
        return "refusal.periodRequired";
    case DividendRefusal::currencyUnsupported:
        return "refusal.currencyRequired";
    case DividendRefusal::amountNotPositive:
        return "refusal.dividendAmount";
    case DividendRefusal::sharesIncomplete:
        return "refusal.ratioTotal";
    case DividendRefusal::batchUnavailable:
        return "refusal.batchUnavailable";
    case DividendRefusal::advanceUnavailable:
        return "refusal.advanceUnavailable";
    case DividendRefusal::movementUnavailable:
        return "refusal.movementUnavailable";
    default:
        return {};
    }
}

template <class Refusal>
QString text(Refusal refusal, std::string_view locale)
{
    const auto key = keyOf(refusal);
    if (!key.empty())
        return wordIn(locale, capitalWords(), key);
    const APIError answer{.status = 422, .code = std::string{serviceCode(refusal)}, .message = {}};
    return qString(answer.friendlyMessage(locale));
}

}

QString refusalText(CapitalRefusal refusal, std::string_view locale)
{
    return text(refusal, locale);
}

QString refusalText(DividendRefusal refusal, std::string_view locale)
{
    return text(refusal, locale);
}
