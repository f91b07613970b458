#pragma once

#include <string>
#include <string_view>

#include <boost/describe.hpp>

/// What a one-time code is asked for.
namespace AccessPurpose {
inline constexpr std::string_view join = "join";   // to activate what an invitation offers, with its code
inline constexpr std::string_view reset = "reset"; // of a password that is forgotten
}

/// Body of asking for a one-time code by mail, to activate an invited account or to set a new password.
struct AccessStart {
    std::string email;
    std::string invitationCode; // empty for a reset
    std::string purpose;        // an `AccessPurpose`
    std::string locale;         // language of the mail

    bool operator==(const AccessStart&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccessStart, (), (email, invitationCode, purpose, locale))

/// Body of handing in the one-time code.
struct AccessCode {
    std::string challengeID;
    std::string code;

    bool operator==(const AccessCode&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccessCode, (), (challengeID, code))

/// Body of the last step, by which the person is signed in.
struct AccessCompletion {
    std::string challengeID;
    std::string ticket; // what the right one-time code was answered with
    std::string name;   // empty where the account exists already
    std::string password;
    std::string locale;

    bool operator==(const AccessCompletion&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccessCompletion, (), (challengeID, ticket, name, password, locale))

/// Body of a signed-in person's change of password.
struct PasswordChange {
    std::string currentPassword;
    std::string newPassword;

    bool operator==(const PasswordChange&) const = default;
};
BOOST_DESCRIBE_STRUCT(PasswordChange, (), (currentPassword, newPassword))

/// Body of looking at an invitation before it is accepted.
struct InvitationLookup {
    std::string code;

    bool operator==(const InvitationLookup&) const = default;
};
BOOST_DESCRIBE_STRUCT(InvitationLookup, (), (code))

/// Body of joining the company of an invitation.
struct InvitationAcceptance {
    std::string code;
    std::string locale;

    bool operator==(const InvitationAcceptance&) const = default;
};
BOOST_DESCRIBE_STRUCT(InvitationAcceptance, (), (code, locale))

/// Body of going over to another company of the same person.
struct CompanySwitch {
    std::string companyID;

    bool operator==(const CompanySwitch&) const = default;
};
BOOST_DESCRIBE_STRUCT(CompanySwitch, (), (companyID))

/// Body of applying for a further company. `requestID` stays the same however often one form is sent.
struct CompanyApplication {
    std::string companyName;
    std::string requestID;

    bool operator==(const CompanyApplication&) const = default;
};
BOOST_DESCRIBE_STRUCT(CompanyApplication, (), (companyName, requestID))
