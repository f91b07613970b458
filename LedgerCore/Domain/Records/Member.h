#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/Permission.h"
#include "LedgerCore/Domain/Text/LocalizedName.h"

/// What one member may do on one account.
struct AccountGrant {
    std::string accountID;
    std::vector<std::string> actions;

    static constexpr std::array<std::string_view, 11> knownActions{AccountAction::view,
                                                                   AccountAction::income,
                                                                   AccountAction::expense,
                                                                   AccountAction::transferOut,
                                                                   AccountAction::transferIn,
                                                                   AccountAction::exchange,
                                                                   AccountAction::refund,
                                                                   AccountAction::correct,
                                                                   AccountAction::opening,
                                                                   AccountAction::distribution,
                                                                   AccountAction::capitalContribution};
    /// Those that let a member record new entries.
    static constexpr std::array<std::string_view, 6> creationActions{
        AccountAction::income,   AccountAction::expense, AccountAction::transferOut,
        AccountAction::exchange, AccountAction::refund,  AccountAction::opening};

    bool operator==(const AccountGrant&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountGrant, (), (accountID, actions))

/// A person's membership in one company.
struct Member {
    std::string id;
    std::string userID; // the person across companies
    std::string name;
    std::string email;
    std::string role;                    // a `MemberRole`, or another word of the service
    std::vector<std::string> accountIDs; // viewable accounts under the older access model
    std::string locale;
    bool active = false;                                 // a deactivated member can do nothing
    std::optional<std::vector<std::string>> permissions; // of `Permission`
    std::optional<std::vector<AccountGrant>> accountGrants;
    std::optional<std::vector<std::string>> selectedCategoryIDs;
    std::optional<TextMap> transactionColors;

    bool operator==(const Member&) const = default;

    /// The access test that every screen and rule uses. `action` is one of `AccountGrant::knownActions`.
    [[nodiscard]] bool can(std::string_view action, std::string_view accountID) const;

    /// Whether the member may record entries at all.
    [[nodiscard]] bool canRecord() const;

    /// Whether the company-wide permission is listed; false when the member carries no list. What it allows is asked
    /// of `MemberRights`.
    [[nodiscard]] bool hasPermission(std::string_view permission) const;
};
BOOST_DESCRIBE_STRUCT(Member, (),
                      (id, userID, name, email, role, accountIDs, locale, active, permissions, accountGrants,
                       selectedCategoryIDs, transactionColors))
