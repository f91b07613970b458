#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"

/// What a dividend command is decided on. Everything referred to must outlive it.
struct DividendContext {
    const DividendState& state;
    const Member& member;
    std::span<const Member> members;
    std::span<const Account> accounts;
    bool dividendsEnabled = true;
    /// For a "reverse" of a cash movement: the account that its money moved on, when it is known.
    std::optional<std::string_view> movementAccountID = {};
    /// For a "fillFromOwnership": the owners and their shares; null while they are not known.
    const CapitalState* capital = nullptr;

    /// The context of a snapshot. Books without a dividend section are at an empty one of revision 0.
    static DividendContext of(const LedgerSnapshot& snapshot);
    /// The same with the account of the movement.
    static DividendContext of(const LedgerSnapshot& snapshot, std::string_view movementID);
};
