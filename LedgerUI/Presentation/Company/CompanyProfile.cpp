#include "LedgerUI/Presentation/Company/CompanyProfile.h"

#include <algorithm>

#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

std::string trimmed(const std::string& text)
{
    return std::string{TextFold::trimmed(text)};
}

}

CompanyProfile CompanyProfile::of(const LedgerSnapshot& snapshot)
{
    return {.name = snapshot.company.name,
            .countries = snapshot.company.countries,
            .locale = snapshot.currentMember.locale};
}

CompanyProfile CompanyProfile::rebased(const CompanyProfile& before, const CompanyProfile& now) const
{
    return {.name = name == before.name ? now.name : name,
            .countries = countries == before.countries ? now.countries : countries,
            .locale = locale == before.locale ? now.locale : locale};
}

std::map<CompanyProfile::Field, QString> CompanyProfile::messages(std::string_view language) const
{
    std::map<Field, QString> messages;
    if (!Naming::isName(trimmed(name)))
        messages[Field::name] = wordIn(language, companyWords(), "companyNameMissing");
    return messages;
}

std::optional<SettingsUpdate> CompanyProfile::update(const LedgerSnapshot& snapshot) const
{
    SettingsUpdate update;
    if (trimmed(name) != snapshot.company.name)
        update.name = trimmed(name);
    if (countries != snapshot.company.countries)
        update.countries = countries;
    if (locale != snapshot.currentMember.locale)
        update.locale = locale;
    return update == SettingsUpdate{} ? std::nullopt : std::optional{update};
}

CompanyProfile CompanyProfile::withCountries(const std::set<std::string, std::less<>>& chosen) const
{
    auto profile = *this;
    std::erase_if(profile.countries, [&](const std::string& code) { return !chosen.contains(code); });
    for (const auto& code : chosen) {
        if (std::ranges::find(countries, code) == countries.end())
            profile.countries.push_back(code);
    }
    return profile;
}
