#include "LedgerCore/Domain/Text/AppLanguage.h"

#include <algorithm>
#include <optional>

namespace {

std::optional<std::string_view> supportedTag(std::string_view identifier)
{
    std::string language{identifier.substr(0, identifier.find_first_of("-_"))};
    std::ranges::transform(language, language.begin(),
                           [](char each) { return each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each; });
    for (const auto tag : AppLanguage::supportedLocales) {
        if (tag.substr(0, 2) == language)
            return tag;
    }
    return std::nullopt;
}

}

std::string_view AppLanguage::resolve(std::span<const std::string> preferredLocalizations)
{
    for (const auto& identifier : preferredLocalizations) {
        if (const auto tag = supportedTag(identifier))
            return *tag;
    }
    return supportedLocales.front();
}

std::string_view AppLanguage::locale(std::string_view identifier)
{
    return supportedTag(identifier).value_or(supportedLocales.front());
}

std::string_view AppLanguage::resourceCode(std::string_view identifier)
{
    const auto tag = locale(identifier);
    return tag == "zh-CN" ? std::string_view{"zh-Hans"} : tag.substr(0, 2);
}

bool AppLanguage::isSupported(std::string_view tag)
{
    return std::ranges::find(supportedLocales, tag) != supportedLocales.end();
}
