#include "LedgerCore/Domain/Settings/CompanySettings.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"

bool CompanySettings::areCountries(std::vector<std::string> codes)
{
    std::ranges::sort(codes);
    return std::ranges::all_of(codes, Naming::isCountry) && std::ranges::adjacent_find(codes) == codes.end();
}

std::optional<CompanySettings::Refusal> CompanySettings::whyNot(const SettingsUpdate& update, const Member& member)
{
    if ((update.name || update.countries) && !MemberRights::canManage(member))
        return Refusal::notManager;
    if (update.name && !Naming::isName(*update.name))
        return Refusal::name;
    if (update.countries && !areCountries(*update.countries))
        return Refusal::countries;
    if (update.locale && !AppLanguage::isSupported(*update.locale))
        return Refusal::locale;
    return std::nullopt;
}
