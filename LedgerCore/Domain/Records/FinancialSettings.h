#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <boost/describe.hpp>

/// How the books of a company began, as it stands on the wire.
namespace InitializationMode {
inline constexpr std::string_view openingBalances = "openingBalances"; // each account takes an opening balance
inline constexpr std::string_view fromZero = "fromZero";
}

/// How a company keeps its books. `revision` grows with every accepted change.
struct FinancialSettings {
    int revision = 0;
    bool contributionsEnabled = false;
    bool dividendsEnabled = false;
    std::optional<std::string> bookkeepingStartDate; // first day of the books
    std::optional<std::string> initializationMode;   // an `InitializationMode`
    std::optional<std::string> initializedAt;
    std::optional<bool> featuresConfigured;

    bool operator==(const FinancialSettings&) const = default;
};
BOOST_DESCRIBE_STRUCT(FinancialSettings, (),
                      (revision, contributionsEnabled, dividendsEnabled, bookkeepingStartDate, initializationMode,
                       initializedAt, featuresConfigured))
