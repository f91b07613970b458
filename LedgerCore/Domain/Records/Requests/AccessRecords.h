#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

struct Login {
    std::string email;
    std::string password;

    bool operator==(const Login&) const = default;
};
BOOST_DESCRIBE_STRUCT(Login, (), (email, password))

struct Registration {
    std::string name;
    std::string email;
    std::string password;
    std::string companyName;
    std::vector<std::string> countries;
    std::optional<std::string> invitationCode;

    bool operator==(const Registration&) const = default;
};
BOOST_DESCRIBE_STRUCT(Registration, (), (name, email, password, companyName, countries, invitationCode))

struct DemoRequest {
    std::optional<std::string> locale; // language of the demonstration data
    std::string profile;               // as whom to look around

    bool operator==(const DemoRequest&) const = default;
};
BOOST_DESCRIBE_STRUCT(DemoRequest, (), (locale, profile))

/// A session, and what it opens.
struct AuthResponse {
    std::string token;
    LedgerSnapshot snapshot;

    bool operator==(const AuthResponse&) const = default;
};
BOOST_DESCRIBE_STRUCT(AuthResponse, (), (token, snapshot))

/// A company application that waits for the platform's review.
struct PendingCompanyRegistration {
    std::string status; // "pending"
    std::string applicationID;
    std::string companyName;
    std::string email;

    bool operator==(const PendingCompanyRegistration&) const = default;
};
BOOST_DESCRIBE_STRUCT(PendingCompanyRegistration, (), (status, applicationID, companyName, email))

/// What every way of signing in is answered with.
using CompanyRegistrationResponse = std::variant<AuthResponse, PendingCompanyRegistration>;

/// A one-time code was mailed.
struct AccessChallenge {
    std::string challengeID;

    bool operator==(const AccessChallenge&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccessChallenge, (), (challengeID))

/// The one-time code was right.
struct AccessVerification {
    std::string ticket;
    bool existingAccount = false;
    std::optional<std::string> companyName; // set when joining a company
    std::string email;

    bool operator==(const AccessVerification&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccessVerification, (), (ticket, existingAccount, companyName, email))

struct InvitationPreview {
    std::string companyName;
    std::string email;

    bool operator==(const InvitationPreview&) const = default;
};
BOOST_DESCRIBE_STRUCT(InvitationPreview, (), (companyName, email))

struct CompanyChoice {
    std::string id;
    std::string name;

    bool operator==(const CompanyChoice&) const = default;
};
BOOST_DESCRIBE_STRUCT(CompanyChoice, (), (id, name))

/// The companies that the signed-in person belongs to.
struct CompanyChoices {
    std::vector<CompanyChoice> companies;
    int ownedCompanyCount = 0;

    bool operator==(const CompanyChoices&) const = default;
};
BOOST_DESCRIBE_STRUCT(CompanyChoices, (), (companies, ownedCompanyCount))

/// How an invitation that was not accepted stands.
namespace InvitationStatus {
inline constexpr std::string_view pending = "pending";
inline constexpr std::string_view expired = "expired";
}

/// An invitation that was not accepted yet.
struct PendingInvitation {
    std::string id;
    std::string name;
    std::string email;
    std::string role;
    std::vector<std::string> permissions;
    std::vector<AccountGrant> accountGrants;
    std::string createdAt;
    std::string expiresAt;
    std::string status; // an `InvitationStatus`

    bool operator==(const PendingInvitation&) const = default;
};
BOOST_DESCRIBE_STRUCT(PendingInvitation, (),
                      (id, name, email, role, permissions, accountGrants, createdAt, expiresAt, status))

/// The invitations that were not accepted yet.
struct InvitationListResponse {
    std::vector<PendingInvitation> invitations;

    bool operator==(const InvitationListResponse&) const = default;
};
BOOST_DESCRIBE_STRUCT(InvitationListResponse, (), (invitations))
