#include "LedgerUI/Presentation/Company/FinancialSettingsForm.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

SwitchesForm SwitchesForm::of(const LedgerSnapshot& snapshot)
{
    return {.contributions = FinancialFeaturePolicy::contributionsEnabled(snapshot),
            .dividends = FinancialFeaturePolicy::dividendsEnabled(snapshot)};
}

SwitchesForm SwitchesForm::rebased(const SwitchesForm& before, const SwitchesForm& now) const
{
    return {.contributions = contributions == before.contributions ? now.contributions : contributions,
            .dividends = dividends == before.dividends ? now.dividends : dividends};
}

std::size_t SwitchesForm::changes(const SwitchesForm& saved) const
{
    return (contributions == saved.contributions ? 0U : 1U) + (dividends == saved.dividends ? 0U : 1U);
}

SetupForm SetupForm::fresh(const LedgerSnapshot& snapshot, std::string_view today)
{
    SetupForm form;
    form.day = FinancialSettingsText::startBounds(snapshot, today).latest;
    if (form.day > today)
        form.day = today;
    return form;
}

DayBounds FinancialSettingsText::startBounds(const LedgerSnapshot& snapshot, std::string_view today)
{
    auto bounds = DayTyping::bounds(snapshot, today);
    bounds.earliest = FinancialSettingsRules::earliestStart;
    if (const auto earliest = OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot)) {
        bounds.latest = std::min(bounds.latest, *earliest);
        if (bounds.latest < *bounds.earliest)
            bounds.earliest.reset();
    }
    return bounds;
}

QString FinancialSettingsText::refusal(FinancialSettingsRules::Refusal refused, std::string_view locale)
{
    using enum FinancialSettingsRules::Refusal;
    const auto& words = bookkeepingWords();
    switch (refused) {
    case noAuthority:
        return wordIn(locale, words, "refused.noAuthority");
    case alreadyInitialized:
        return wordIn(locale, words, "refused.already");
    case invalidStartDate:
        return wordIn(locale, words, "refused.date");
    case startTooEarly:
        return wordIn(locale, words, "refused.tooEarly");
    case startInFuture:
        return wordIn(locale, words, "refused.future");
    case startAfterEntries:
        return wordIn(locale, words, "refused.afterEntries");
    case unknownAction:
    case foreignField:
    case staleRevision:
    case revisionLimit:
    case modeRequired:
    case modeUnsound:
    case switchesRequired:
        break;
    }
    return wordIn(locale, words, "refused.other");
}

bool FinancialSettingsText::isConflict(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && (error->code == ServiceCode::financialSettingsRevisionConflict ||
                     error->code == ServiceCode::financialSettingsInitialized ||
                     error->code == ServiceCode::financialStartDateConflict);
}

FinancialSettingsText::Openings FinancialSettingsText::openings(const LedgerSnapshot& snapshot)
{
    Openings result;
    for (const auto& each : OpeningBalancePolicy::evaluateAll(snapshot)) {
        if (!each.hasAuthority)
            continue;
        ++result.possible;
        if (!each.activeOpeningIDs.empty())
            ++result.active;
    }
    result.areWanted = OpeningBalancePolicy::areWanted(snapshot);
    if (!result.areWanted)
        return result;
    for (const auto& each : OpeningBalancePolicy::eligible(snapshot)) {
        if (result.nextAccount.empty())
            result.nextAccount = each.account->id;
        result.left += each.currencies.size();
    }
    return result;
}
