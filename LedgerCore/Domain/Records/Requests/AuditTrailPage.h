#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Json/JsonReading.h"

/// How a record stood at a moment, whatever kind of record it is: each of its values as text, by the names that lead to
/// it ("settings.name"). A list is one value, with commas between its elements; numbers and truths are written as in
/// JSON.
struct AuditValues {
    std::map<std::string, std::string, std::less<>> texts;

    bool operator==(const AuditValues&) const = default;
};

/// Something that was done in the company: who did it, when, from where, to what, and how that stood before and after.
struct AuditTrailRecord {
    std::int64_t number = 0; // from 1 without gaps
    std::string at;          // stamp
    std::optional<std::string> memberID;
    std::string origin; // the client's address; "operator" or "service" where no member did it
    std::string kind;   // a command's route, such as "POST /v1/transactions", or an event, such as "sign-in"
    std::optional<std::string> record; // the id of what it was done to
    std::optional<std::string> digest; // of the entry that was recorded
    std::optional<AuditValues> before;
    std::optional<AuditValues> after;

    bool operator==(const AuditTrailRecord&) const = default;
};
BOOST_DESCRIBE_STRUCT(AuditTrailRecord, (), (number, at, memberID, origin, kind, record, digest, before, after))

/// A part of the trail, the latest record first. It may be short, or empty, although others follow.
struct AuditTrailPage {
    std::vector<AuditTrailRecord> records;
    std::optional<std::int64_t> next; // `below` of the page that follows

    bool operator==(const AuditTrailPage&) const = default;
};
BOOST_DESCRIBE_STRUCT(AuditTrailPage, (), (records, next))

/// Which records are asked for; what is empty does not matter.
struct AuditQuestion {
    std::string person; // a member's id
    std::string kind;
    std::string record;
    std::string day; // "YYYY-MM-DD", UTC
    std::optional<std::int64_t> below;

    bool operator==(const AuditQuestion&) const = default;
};

namespace Json::Detail {

Outcome readValue(Reader& in, AuditValues& out);

}
