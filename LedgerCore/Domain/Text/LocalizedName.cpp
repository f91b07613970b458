#include "LedgerCore/Domain/Text/LocalizedName.h"

#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

std::string_view nameUnder(const TextMap& names, std::string_view key)
{
    const auto found = names.find(key);
    return found == names.end() ? std::string_view{} : std::string_view{found->second};
}

std::string_view nameInLanguage(const TextMap& names, std::string_view tag)
{
    const auto name = nameUnder(names, tag);
    return name.empty() ? nameUnder(names, AppLanguage::resourceCode(tag)) : name;
}

}

std::string_view localizedName(const TextMap& names, std::string_view locale)
{
    for (const auto tag : {AppLanguage::locale(locale), std::string_view{"en-US"}}) {
        if (const auto name = nameInLanguage(names, tag); !name.empty())
            return name;
    }
    for (const auto& [key, name] : names) {
        if (!name.empty())
            return name;
    }
    return {};
}
