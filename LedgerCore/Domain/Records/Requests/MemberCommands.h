#pragma once

#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/Member.h"

/// Body of inviting somebody to a company.
struct Invite {
    std::string name;
    std::string email;
    std::string role;
    std::vector<std::string> accountIDs;
    std::vector<std::string> permissions;
    std::vector<AccountGrant> accountGrants;

    bool operator==(const Invite&) const = default;
};
BOOST_DESCRIBE_STRUCT(Invite, (), (name, email, role, accountIDs, permissions, accountGrants))

/// Reply to an invitation.
struct InviteResponse {
    std::string code; // to be handed to the invited person

    bool operator==(const InviteResponse&) const = default;
};
BOOST_DESCRIBE_STRUCT(InviteResponse, (), (code))

/// Body of a change to a membership; an absent field is left unchanged.
struct MemberUpdate {
    std::optional<std::string> role;
    std::optional<std::vector<std::string>> accountIDs;
    std::optional<bool> active;
    std::optional<std::vector<std::string>> permissions;
    std::optional<std::vector<AccountGrant>> accountGrants;

    bool operator==(const MemberUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(MemberUpdate, (), (role, accountIDs, active, permissions, accountGrants))

/// Body of a change to the signed-in person.
struct ProfileUpdate {
    std::string name;

    bool operator==(const ProfileUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(ProfileUpdate, (), (name))

/// Body of a change to the company; an absent field is left unchanged.
struct SettingsUpdate {
    std::optional<std::string> name;
    std::optional<std::vector<std::string>> countries;
    std::optional<std::string> locale;

    bool operator==(const SettingsUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(SettingsUpdate, (), (name, countries, locale))
