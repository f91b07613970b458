#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"

/// The company's name and countries, and the language in which the current member is written to, as they are being
/// filled in.
struct CompanyProfile {
    enum class Field { name };

    std::string name;
    std::vector<std::string> countries; // codes, in the order in which they were chosen
    std::string locale;                 // of mail to the current member

    bool operator==(const CompanyProfile&) const = default;

    static CompanyProfile of(const LedgerSnapshot& snapshot);

    /// What was changed from `before` on, done to `now`.
    [[nodiscard]] CompanyProfile rebased(const CompanyProfile& before, const CompanyProfile& now) const;
    [[nodiscard]] std::map<Field, QString> messages(std::string_view language) const;
    /// Only what differs from the snapshot; nothing where all of it is as it was.
    [[nodiscard]] std::optional<SettingsUpdate> update(const LedgerSnapshot& snapshot) const;
    /// With exactly these countries; those that were chosen before keep their order.
    [[nodiscard]] CompanyProfile withCountries(const std::set<std::string, std::less<>>& chosen) const;
};
