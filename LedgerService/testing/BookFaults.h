#pragma once

#include <expected>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// A damage to sound books, and part of what must be said about it.
struct BookFault {
    std::string name;
    std::string words;
    std::function<void(Books&)> damage;

    /// Fails the running test unless `sound` is found whole, and broken in these words once it is damaged.
    void expectIsFound(Books sound) const;
};

/// The entry of that id, which there must be.
[[nodiscard]] LedgerTransaction& entryOf(Books& company, std::string_view id);

/// What walks have met: how often each thing was done, by its name, and every code of a refusal.
struct WalkTally {
    std::map<std::string, int> done{};
    std::set<std::string> refused{};
};

/// Carries out `command` on `company`, which answers with std::expected<void, Refusal>, and counts it under the name
/// that `nameOf` gives it in the changed books. Fails the running test, fatally, where a refusal changes the books or
/// where they are not whole afterwards.
void walkOn(Books& company, const std::function<std::expected<void, Refusal>(Books&)>& command,
            const std::function<std::string(const Books&)>& nameOf, WalkTally& met);

}
