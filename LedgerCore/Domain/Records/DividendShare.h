#pragma once

#include <string>

#include <boost/describe.hpp>

/// One ratio inside an allocation request, in basis points (10000 = 100 %).
struct DividendShare {
    std::string participantID;
    int ratioBps = 0;

    bool operator==(const DividendShare&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendShare, (), (participantID, ratioBps))
