#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Text/LocalizedName.h"

/// Marks a company that only demonstrates the program.
struct DemoDescriptor {
    int version = 0;
    std::string locale; // language of the demonstration data

    bool operator==(const DemoDescriptor&) const = default;
};
BOOST_DESCRIBE_STRUCT(DemoDescriptor, (), (version, locale))

/// How far the service has reviewed a company. Nothing said is as good as approved.
namespace ApprovalStatus {
inline constexpr std::string_view approved = "approved";
inline constexpr std::string_view pending = "pending";
inline constexpr std::string_view rejected = "rejected";
}

/// The open company.
struct Company {
    std::string id;
    std::string name;
    std::vector<std::string> countries;
    std::vector<std::string> enabledLocales;
    std::string createdAt;
    std::optional<DemoDescriptor> demo;
    std::optional<std::string> approvalStatus; // an `ApprovalStatus`
    std::optional<TextMap> transactionColors;  // entry kind to colour id

    bool operator==(const Company&) const = default;
};
BOOST_DESCRIBE_STRUCT(Company, (),
                      (id, name, countries, enabledLocales, createdAt, demo, approvalStatus, transactionColors))
