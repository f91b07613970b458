#pragma once

#include <string>

#include <boost/describe.hpp>

/// Body of choosing the colour that a company gives to a kind of entry.
struct TransactionColorSelection {
    std::string kind;
    std::string colorID;

    bool operator==(const TransactionColorSelection&) const = default;
};
BOOST_DESCRIBE_STRUCT(TransactionColorSelection, (), (kind, colorID))
