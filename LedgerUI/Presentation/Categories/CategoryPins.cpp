#include "LedgerUI/Presentation/Categories/CategoryPins.h"

#include <algorithm>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Presentation/Text/Words.h"

std::vector<const Category*> CategoryPins::of(const LedgerSnapshot& snapshot, std::string_view kind)
{
    std::vector<const Category*> pinned;
    for (const auto& id : snapshot.currentMember.selectedCategoryIDs.value_or(std::vector<std::string>{})) {
        const auto found = std::ranges::find(snapshot.categories, id, &Category::id);
        if (found != snapshot.categories.end() && found->kind == kind && !found->archived)
            pinned.push_back(&*found);
    }
    return pinned;
}

bool CategoryPins::contains(const LedgerSnapshot& snapshot, std::string_view categoryID)
{
    const auto& selected = snapshot.currentMember.selectedCategoryIDs;
    return selected && std::ranges::find(*selected, categoryID) != selected->end();
}

QString CategoryPins::whyNotMore(const LedgerSnapshot& snapshot, std::string_view kind, std::string_view locale)
{
    const auto pinned = of(snapshot, kind).size();
    if (pinned < maximum)
        return {};
    return wordIn(locale, EntryCopy::words(), pinned > maximum ? "pinOverflow" : "pinFull");
}
