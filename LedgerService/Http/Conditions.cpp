#include "LedgerService/Http/Conditions.h"

#include <algorithm>
#include <string_view>

#include "LedgerService/Http/HeaderList.h"

namespace LedgerService {

namespace {

/// Whether the list has this element, and does not ask for the contrary.
bool lists(std::string_view list, std::string_view wanted)
{
    return std::ranges::any_of(HeaderList::wishes(list), [&](const HeaderList::Wish& wish) {
        return HeaderList::isSame(wish.name, wanted) && wish.weight > 0;
    });
}

}

SnapshotAsked Conditions::snapshotAsked(const Request& request)
{
    SnapshotAsked asked;
    for (auto tag : HeaderList::elements(request.ifNoneMatch)) {
        if (tag.starts_with("W/")) // the reply was packed on its way; the state is the same
            tag.remove_prefix(2);
        asked.held.emplace_back(tag);
    }
    asked.delta = lists(request.instanceManipulations, "entries");
    return asked;
}

bool Conditions::prefersMinimal(const Request& request)
{
    return lists(request.prefer, "return=minimal");
}

}
