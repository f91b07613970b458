#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/MemberCommands.h"

/// The company's name and countries, and the language in which the current member is written to, as they are being
/// filled in.
struct CompanyProfile {
    enum class Field { name, countries };

    std::string name;
    std::string countries; // codes with commas, as typed
    std::string locale;    // of mail to the current member

    bool operator==(const CompanyProfile&) const = default;

    static CompanyProfile of(const LedgerSnapshot& snapshot);

    /// What was changed from `before` on, done to `now`.
    [[nodiscard]] CompanyProfile rebased(const CompanyProfile& before, const CompanyProfile& now) const;
    [[nodiscard]] std::map<Field, QString> messages(std::string_view language) const;
    /// Only what differs from the snapshot; nothing where all of it is as it was.
    [[nodiscard]] std::optional<SettingsUpdate> update(const LedgerSnapshot& snapshot) const;
    /// The countries by the names that they have themselves: "Indonesia, Việt Nam".
    [[nodiscard]] QString countryNames(std::string_view language) const;
};
