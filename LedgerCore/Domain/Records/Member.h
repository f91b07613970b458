#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Text/LocalizedName.h"

/// What one member may do on one account.
struct AccountGrant {
    std::string accountID;
    std::vector<std::string> actions;

    static constexpr std::array<std::string_view, 11> knownActions{
        "view",   "income",  "expense", "transferOut",  "transferIn",         "exchange",
        "refund", "correct", "opening", "distribution", "capitalContribution"};
    /// Those that let a member record new entries.
    static constexpr std::array<std::string_view, 6> creationActions{"income",   "expense", "transferOut",
                                                                     "exchange", "refund",  "opening"};

    bool operator==(const AccountGrant&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountGrant, (), (accountID, actions))

/// A person's membership in one company.
struct Member {
    std::string id;
    std::string userID; // the person across companies
    std::string name;
    std::string email;
    std::string role;                    // "owner", "admin", or another word of the service
    std::vector<std::string> accountIDs; // viewable accounts under the older access model
    std::string locale;
    bool active = false; // a deactivated member can do nothing
    std::optional<std::vector<std::string>> permissions;
    std::optional<std::vector<AccountGrant>> accountGrants;
    std::optional<std::vector<std::string>> selectedCategoryIDs;
    std::optional<TextMap> transactionColors;

    bool operator==(const Member&) const = default;

    /// The access test that every screen and rule uses. `action` is one of `AccountGrant::knownActions`.
    [[nodiscard]] bool can(std::string_view action, std::string_view accountID) const;

    /// Whether the member may record entries at all.
    [[nodiscard]] bool canRecord() const;

    /// Whether the company-wide permission is listed; false when the member carries no list.
    [[nodiscard]] bool hasPermission(std::string_view permission) const;

    /// Whether an active member administers the company: by permission, or as the owner when no list is carried.
    [[nodiscard]] bool managesCompany() const;
};
BOOST_DESCRIBE_STRUCT(Member, (),
                      (id, userID, name, email, role, accountIDs, locale, active, permissions, accountGrants,
                       selectedCategoryIDs, transactionColors))
