#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// Something that was done: who did it, when, from where, to what, and how that stood before and after.
struct AuditRecord {
    std::int64_t number = 0;             // within its scope, from 1 without gaps
    std::string at;                      // stamp
    std::optional<std::string> memberID; // unset: the service itself, or its operator
    std::string origin;                  // the client's address, or an `AuditOrigin`
    std::string kind;                    // an `AuditKind`, or a command's route: "POST /v1/transactions"
    std::optional<std::string> record;   // the id of what it was done to
    std::optional<std::string> digest;   // of an entry as it was recorded
    std::optional<std::string> before;   // JSON
    std::optional<std::string> after;    // JSON
    std::string chain;                   // a digest of this record and of the chain before it

    bool operator==(const AuditRecord&) const = default;
};

namespace AuditOrigin {

inline constexpr std::string_view operating = "operator"; // a command of the program
inline constexpr std::string_view service = "service";    // the service by itself

}

/// What is done without a member's command.
namespace AuditKind {

inline constexpr std::string_view signIn = "sign-in";
inline constexpr std::string_view signOut = "sign-out";
inline constexpr std::string_view memberJoined = "member-joined";                // by an invitation
inline constexpr std::string_view memberRightsChanged = "member-rights-changed"; // with an account
inline constexpr std::string_view companyFounded = "company-founded";
inline constexpr std::string_view companyApproved = "company-approved"; // by the operator, like what follows
inline constexpr std::string_view companyRejected = "company-rejected";
inline constexpr std::string_view companyZoneChanged = "company-zone-changed";
inline constexpr std::string_view companyExported = "company-exported";
inline constexpr std::string_view companyImported = "company-imported";
inline constexpr std::string_view booksRestored = "books-restored"; // from an archive
inline constexpr std::string_view personDeactivated = "person-deactivated";
inline constexpr std::string_view personReactivated = "person-reactivated";
inline constexpr std::string_view passwordReset = "password-reset"; // also by the person, with a code by mail
inline constexpr std::string_view passwordChanged = "password-changed";

}

}
