#pragma once

#include <optional>

/// Whether a section of the books is not kept out of the side bar. One that nobody has changed yet is listed, since its
/// first record has to be entered somewhere.
template <class State>
bool isListedInSidebar(const std::optional<State>& section)
{
    return !section || section->revision == 0 || section->showInSidebar;
}
