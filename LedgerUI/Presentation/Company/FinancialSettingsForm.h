#pragma once

#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerUI/Presentation/Forms/Submission.h"
#include "LedgerUI/Presentation/Period/DayTyping.h"

/// The two switches as they are being set.
struct SwitchesForm {
    bool contributions = false;
    bool dividends = false;

    bool operator==(const SwitchesForm&) const = default;

    static SwitchesForm of(const LedgerSnapshot& snapshot);
    /// What was changed from `before` on, done to `now`.
    [[nodiscard]] SwitchesForm rebased(const SwitchesForm& before, const SwitchesForm& now) const;
    [[nodiscard]] std::size_t changes(const SwitchesForm& saved) const;
};

using SwitchesSubmission = Submission<SwitchesForm, FinancialSettingsCommand>;

/// The first day of the books as it is being confirmed.
struct SetupForm {
    std::string mode{InitializationMode::openingBalances};
    std::string day;
    bool isAgreed = false;
    bool isChecked = false; // it was tried to send: what is missing is said

    bool operator==(const SetupForm&) const = default;

    /// On the day of the earliest visible entry, else on `today`.
    static SetupForm fresh(const LedgerSnapshot& snapshot, std::string_view today);
};

using SetupSubmission = Submission<SetupForm, FinancialSettingsCommand>;

/// What the screens of the financial settings show.
namespace FinancialSettingsText {

/// The days on offer for the start: not after the earliest visible entry and not after the last day for entries.
DayBounds startBounds(const LedgerSnapshot& snapshot, std::string_view today);

QString refusal(FinancialSettingsRules::Refusal refused, std::string_view locale);

/// Whether the settings were changed by somebody else before this command came.
bool isConflict(const Failure& failure);

/// How far the opening balances are.
struct Openings {
    std::size_t active = 0;   // account currencies that have one
    std::size_t possible = 0; // that could have one, those with one included
    std::string nextAccount;  // that takes one now; empty when none does
    std::size_t left = 0;     // that are wanted and can be recorded now
    bool areWanted = true;    // not in books that began from zero
};
Openings openings(const LedgerSnapshot& snapshot);

}
