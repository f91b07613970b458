#pragma once

#include <optional>
#include <string>

#include <boost/describe.hpp>

/// The body of a reply that refuses a request: {"error": {"code", "message"}}. The service says both; what stands
/// between it and a client may answer in the same shape without either.
struct ErrorReply {
    struct Detail {
        std::optional<std::string> code;    // a `ServiceCode`
        std::optional<std::string> message; // for the operator, never shown
        bool operator==(const Detail&) const = default;
    };

    Detail error;
    bool operator==(const ErrorReply&) const = default;
};
BOOST_DESCRIBE_STRUCT(ErrorReply::Detail, (), (code, message))
BOOST_DESCRIBE_STRUCT(ErrorReply, (), (error))

/// The reply to a command that has nothing else to say.
struct OK {
    bool ok = false;

    bool operator==(const OK&) const = default;
};
BOOST_DESCRIBE_STRUCT(OK, (), (ok))
