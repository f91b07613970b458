#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A ready-made category on offer.
struct PresetChoice {
    std::string id;
    QString name;
    QString glyph;
    bool isPresent = false; // the company has it already

    bool operator==(const PresetChoice&) const = default;
};

/// The catalog as its dialog shows it.
namespace PresetChoices {

struct Group {
    std::string id;
    QString name;
};
/// Those that hold presets of the kind.
std::vector<Group> groups(std::string_view kind, std::string_view locale);

/// The presets of the group, or, with a query, those of the kind that are called so in any language.
std::vector<PresetChoice> presets(std::string_view kind, std::string_view group, const QString& query,
                                  const LedgerSnapshot& snapshot, std::string_view locale);

/// The categories that these presets make, in the order of the catalog; `parentID` is empty on the top level.
std::vector<CategoryCreate> creations(const std::set<std::string, std::less<>>& presetIDs, const std::string& parentID);

}
