#include "LedgerCore/Domain/Categories/EnterpriseIconLibrary.h"

#include "LedgerCore/Domain/Categories/EnterpriseIconRow.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

std::string keywordsOf(const EnterpriseIconRow& row)
{
    std::string words;
    for (const auto text : {row.names.chinese, row.names.indonesian, row.names.vietnamese, row.names.english})
        words.append(text).append(" ");
    return words.append(row.otherWords);
}

/// The keywords of each icon as a folded query is looked for in them.
const std::vector<std::string>& foldedKeywords()
{
    static const auto folded = [] {
        std::vector<std::string> all;
        for (const auto& icon : EnterpriseIconLibrary::icons())
            all.push_back(TextFold::folded(icon.keywords));
        return all;
    }();
    return folded;
}

}

const std::vector<EnterpriseCategoryIcon>& EnterpriseIconLibrary::icons()
{
    static const auto all = [] {
        std::vector<EnterpriseCategoryIcon> icons;
        for (const auto& row : enterpriseIconRows())
            icons.push_back({row.id, row.group, row.names, keywordsOf(row)});
        return icons;
    }();
    return all;
}

std::span<const EnterpriseCategoryGroup> EnterpriseIconLibrary::groupNames()
{
    return enterpriseIconGroups();
}

std::vector<const EnterpriseCategoryIcon*> EnterpriseIconLibrary::matching(std::string_view query)
{
    const auto wanted = TextFold::folded(TextFold::trimmed(query));
    std::vector<const EnterpriseCategoryIcon*> found;
    for (std::size_t at = 0; at < icons().size(); ++at) {
        if (foldedKeywords()[at].find(wanted) != std::string::npos)
            found.push_back(&icons()[at]);
    }
    return found;
}
