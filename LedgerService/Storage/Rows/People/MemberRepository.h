#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Member.h"

namespace LedgerService {

class Connection;

/// One company that a person belongs to.
struct Membership {
    std::string companyID;
    std::string memberID;
    bool active = false;
    std::optional<std::string> approvalStatus; // of the company
    bool demonstration = false;
};

/// Whom a token in force speaks for, with what decides whether the company is open to that member.
struct TokenHolder {
    std::string companyID;
    std::shared_ptr<const Member> member;
    std::string storedMember; // the member's row as it is stored
    std::optional<std::string> approvalStatus;
    bool demonstration = false;
    std::optional<std::string> timeZone;
    std::int64_t lastChange = 0; // of the company
};

namespace MemberRepository {

/// Nothing for a token that is unknown, expired or revoked. Reading a member's row costs less than understanding it:
/// when it stands as it did for `known`, that member is shared.
std::optional<TokenHolder> byToken(Connection& connection, std::string_view tokenHash, std::string_view now,
                                   const TokenHolder* known);

std::optional<Member> find(Connection& connection, std::string_view companyID, std::string_view memberID);

/// The member who signs in with this address, in the form of `UserRepository::normalized`.
std::optional<Member> findByEmail(Connection& connection, std::string_view companyID, std::string_view email);

/// The company's members in the order in which they joined.
std::vector<Member> all(Connection& connection, std::string_view companyID);

/// The person's companies in the order in which the person joined them.
std::vector<Membership> memberships(Connection& connection, std::string_view userID);

/// The member who plays this profile in a demonstration company.
std::optional<std::string> demoMemberID(Connection& connection, std::string_view companyID, std::string_view profile);

/// Adds the member after the company's others; `demoProfile` is set in demonstration companies only.
void insert(Connection& connection, std::string_view companyID, const Member& member,
            const std::optional<std::string>& demoProfile, std::string_view createdAt);

/// Writes what the membership is now; the person's address is not part of it.
void write(Connection& connection, std::string_view companyID, const Member& member);

}

}
