#include "LedgerUI/Presentation/Company/PresetChoices.h"

#include <algorithm>

#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

bool isCalled(const EnterpriseCategoryPreset& preset, const std::string& folded)
{
    const auto& names = preset.names;
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{names.chinese, names.indonesian, names.vietnamese, names.english},
        [&](std::string_view name) { return TextFold::folded(name).find(folded) != std::string::npos; });
}

}

std::vector<PresetChoices::Group> PresetChoices::groups(std::string_view kind, std::string_view locale)
{
    std::vector<Group> groups;
    for (const auto group : EnterpriseCategoryCatalog::groups()) {
        const auto holds = [&](const EnterpriseCategoryPreset& each) {
            return each.kind == kind && each.group == group;
        };
        if (std::ranges::any_of(EnterpriseCategoryCatalog::presets(), holds))
            groups.push_back(
                {.id = std::string{group}, .name = qString(EnterpriseCategoryCatalog::groupName(group, locale))});
    }
    return groups;
}

std::vector<PresetChoice> PresetChoices::presets(std::string_view kind, std::string_view group, const QString& query,
                                                 const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto wanted = TextFold::folded(TextFold::trimmed(query.toStdString()));
    std::vector<PresetChoice> choices;
    for (const auto& preset : EnterpriseCategoryCatalog::presets()) {
        if (preset.kind != kind || (wanted.empty() ? preset.group != group : !isCalled(preset, wanted)))
            continue;
        const auto isMade = [&](const Category& category) {
            return !category.archived && category.presetID == preset.id;
        };
        choices.push_back({.id = std::string{preset.id},
                           .name = qString(preset.names.text(locale)),
                           .glyph = qString(preset.symbol),
                           .isPresent = std::ranges::any_of(snapshot.categories, isMade)});
    }
    return choices;
}

std::vector<CategoryCreate> PresetChoices::creations(const std::set<std::string, std::less<>>& presetIDs,
                                                     const std::string& parentID)
{
    std::vector<CategoryCreate> creations;
    for (const auto& preset : EnterpriseCategoryCatalog::presets()) {
        if (!presetIDs.contains(preset.id))
            continue;
        creations.push_back({.kind = std::string{preset.kind},
                             .names = preset.names.byLanguage(),
                             .symbol = std::string{preset.symbol},
                             .parentID = parentID.empty() ? std::nullopt : std::optional{parentID},
                             .presetID = std::string{preset.id}});
    }
    return creations;
}
