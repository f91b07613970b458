#include "LedgerUI/Presentation/Capital/CapitalActions.h"

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

QString CapitalActions::whyNot(std::string_view action, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto context = CapitalContext::of(snapshot);
    if (!CapitalRules::mayUse(action, snapshot.currentMember))
        return refusalText(CapitalRefusal::noAuthority, locale);
    if (action == CapitalAction::contribute && !context.contributionsEnabled)
        return refusalText(CapitalRefusal::contributionsDisabled, locale);
    const bool needsOwners = action == CapitalAction::contribute || action == CapitalAction::setBaseline ||
                             action == CapitalAction::setOwnership;
    if (needsOwners && !RecordDrafts::hasPeople(context.state.participants))
        return wordIn(locale, capitalWords(), "whyNot.noOwners");
    if (action == CapitalAction::contribute && CapitalAccess::accounts(snapshot, std::nullopt).empty())
        return wordIn(locale, capitalWords(), "whyNot.noAccount");
    return {};
}
