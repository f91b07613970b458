#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Commands/CommandNote.h"
#include "LedgerService/Http/Reply.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;

/// What a route without a token works with; it opens its own transactions.
struct OpenCall {
    Service service;  // with the request's origin
    Request& request; // its body may be used up
    std::string now;  // stamp
};

/// What a route with a token works with: one transaction, in which the member was found active.
struct MemberCall {
    const Service& service;
    const Request& request;                     // its body may be used up already
    const std::vector<std::string>& parameters; // of the path, in order
    Connection& connection;
    const std::string& companyID;
    const Member& member;
    std::string today; // the company's day
    std::string now;   // stamp
    CommandNote& note;

    [[nodiscard]] SessionOwner owner() const { return {companyID, member.id}; }
};

using OpenHandler = Outcome (*)(const OpenCall&);

/// What is left to do for a member once the request is understood. May be done again when the database asks for it.
using MemberWork = std::function<Outcome(const MemberCall&)>;

/// Understands a request: decodes its body, checks its shape and does what has to be done before anybody waits for the
/// database.
using Prepared = std::expected<MemberWork, Refusal>;
using Preparation = Prepared (*)(const OpenCall&);

/// Answered in a transaction that only reads.
struct Reading {
    Preparation prepare;
};

/// Answered in a writing transaction: committed with a reply, rolled back with a refusal.
struct Writing {
    Preparation prepare;
};

/// Where a request is worked on.
enum class Lane {
    byMethod,  // with those that read, or with those that write
    signIn,    // with those that hash passwords
    files,     // prepared with those that write files
    mail,      // with those that ask a mail server
    immediate, // at once: the handler neither blocks nor asks the database
};

/// The largest body of a request that says nothing else.
inline constexpr std::size_t ordinaryBodyBytes = std::size_t{1} << 20;
/// The largest body where anybody may ask, so that strangers cannot take the room that all bodies share.
inline constexpr std::size_t openBodyBytes = std::size_t{64} << 10;

/// One thing that the service can be asked. A segment of the pattern in braces takes any one segment.
struct Route {
    std::string_view method;
    std::string_view pattern; // "/v1/transactions/{id}/reverse"
    std::variant<OpenHandler, Reading, Writing> answer;
    Lane lane = Lane::byMethod;
    std::size_t maximumBody = ordinaryBodyBytes;

    /// Whether it is answered in a writing transaction of a member.
    [[nodiscard]] bool isCommand() const { return std::holds_alternative<Writing>(answer); }
    /// Whether it is answered without a token.
    [[nodiscard]] bool isOpen() const { return std::holds_alternative<OpenHandler>(answer); }
    [[nodiscard]] std::size_t bodyLimit() const { return isOpen() ? openBodyBytes : maximumBody; }
};

}
