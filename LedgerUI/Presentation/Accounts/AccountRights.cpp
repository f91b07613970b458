#include "LedgerUI/Presentation/Accounts/AccountRights.h"

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

QString accountActionText(std::string_view action, std::string_view locale)
{
    return wordIn(locale, accountWords(), "right." + std::string{action});
}

QString accountRightsText(const Member& member, std::string_view accountID, std::string_view locale)
{
    QStringList rights;
    for (const auto action : AccountGrant::knownActions) {
        if (member.can(action, accountID))
            rights << accountActionText(action, locale);
    }
    if (rights.isEmpty())
        return wordIn(locale, accountWords(), "rights.none");
    const bool hasAll = rights.size() == static_cast<qsizetype>(AccountGrant::knownActions.size());
    return hasAll ? wordIn(locale, accountWords(), "rights.all") : listed(rights, locale);
}
