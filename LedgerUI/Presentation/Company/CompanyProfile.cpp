#include "LedgerUI/Presentation/Company/CompanyProfile.h"

#include <algorithm>
#include <vector>

#include <QLocale>
#include <QStringList>

#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Company/CompanyWords.h"
#include "LedgerUI/Presentation/Text/ListedText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

std::vector<std::string> codesIn(std::string_view typed)
{
    std::vector<std::string> codes;
    for (const auto& each : qString(typed).split(QLatin1Char{','}, Qt::SkipEmptyParts)) {
        const auto code = each.trimmed().toUpper();
        if (!code.isEmpty())
            codes.push_back(code.toStdString());
    }
    return codes;
}

std::string listedCodes(const std::vector<std::string>& codes)
{
    QStringList texts;
    for (const auto& code : codes)
        texts << qString(code);
    return texts.join(QStringLiteral(", ")).toStdString();
}

/// The first that is no code or stands there for the second time.
std::optional<std::string> wrongCode(const std::vector<std::string>& codes)
{
    for (auto code = codes.begin(); code != codes.end(); ++code) {
        if (!Naming::isCountry(*code) || std::find(codes.begin(), code, *code) != code)
            return *code;
    }
    return std::nullopt;
}

std::string trimmed(const std::string& text)
{
    return std::string{TextFold::trimmed(text)};
}

}

CompanyProfile CompanyProfile::of(const LedgerSnapshot& snapshot)
{
    return {.name = snapshot.company.name,
            .countries = listedCodes(snapshot.company.countries),
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
    if (const auto wrong = wrongCode(codesIn(countries)))
        messages[Field::countries] = wordIn(language, companyWords(), "countriesWrong", {*wrong});
    return messages;
}

std::optional<SettingsUpdate> CompanyProfile::update(const LedgerSnapshot& snapshot) const
{
    SettingsUpdate update;
    if (trimmed(name) != snapshot.company.name)
        update.name = trimmed(name);
    if (const auto codes = codesIn(countries); codes != snapshot.company.countries)
        update.countries = codes;
    if (locale != snapshot.currentMember.locale)
        update.locale = locale;
    return update == SettingsUpdate{} ? std::nullopt : std::optional{update};
}

QString CompanyProfile::countryNames(std::string_view language) const
{
    QStringList names;
    for (const auto& code : codesIn(countries)) {
        const auto territory = QLocale::codeToTerritory(qString(code));
        if (territory != QLocale::AnyTerritory)
            names << QLocale{QLocale::AnyLanguage, territory}.nativeTerritoryName();
    }
    return listed(names, language);
}
