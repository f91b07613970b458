#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Accounts/AccountBook.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"

/// What a new company still needs before its books can be kept, step by step.
struct SetupChecklist {
    struct Step {
        enum class State { done, due };

        QString title;
        QString sentence;
        QString button;
        PageLink link;
        State state = State::due;
        QString whyNot = {}; // why its turn has not come yet; empty when it has

        bool operator==(const Step&) const = default;
    };

    std::vector<Step> steps; // in the order in which they are done
    QString progress;        // "2 of 4 steps are done"

    bool operator==(const SetupChecklist&) const = default;

    /// The first step that is due; null when all are done.
    [[nodiscard]] const Step* next() const;
};

/// For who manages the company, while something is left to be done; nothing for others, or afterwards.
std::optional<SetupChecklist> setupChecklist(const AccountBook& book, std::string_view locale);

/// The accounts and currencies that can still take an opening balance from the member, in the order of the snapshot.
/// None where the books began from zero.
std::vector<const AccountBook::Line*> openingsDue(const AccountBook& book);
