#include "LedgerCore/Domain/Text/Country.h"

#include <algorithm>

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Collation.h"
#include "LedgerCore/Domain/Text/Naming.h"

std::string Country::name(std::string_view code, std::string_view locale)
{
    std::string text{code};
    if (!Naming::isCountry(code))
        return text;
    const std::string language{AppLanguage::locale(locale)};
    icu::UnicodeString name;
    icu::Locale{"", text.c_str()}.getDisplayCountry(icu::Locale::createFromName(language.c_str()), name);
    std::string shown;
    name.toUTF8String(shown);
    return shown.empty() ? text : shown;
}

std::vector<std::string> Country::all(std::string_view locale)
{
    std::vector<std::pair<std::string, std::string>> named;
    for (const auto* const* code = icu::Locale::getISOCountries(); *code != nullptr; ++code)
        named.emplace_back(Collation::sortKey(name(*code, locale), locale), *code);
    std::ranges::sort(named);
    std::vector<std::string> codes;
    codes.reserve(named.size());
    for (auto& each : named)
        codes.push_back(std::move(each.second));
    return codes;
}
