#pragma once

#include <boost/describe.hpp>

/// The reply to a command that has nothing else to say.
struct OK {
    bool ok = false;

    bool operator==(const OK&) const = default;
};
BOOST_DESCRIBE_STRUCT(OK, (), (ok))
