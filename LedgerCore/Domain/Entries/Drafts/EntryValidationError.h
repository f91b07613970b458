#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

/// What keeps a draft from becoming an entry, before anything is sent.
struct EntryValidationError {
    /// The amount exceeds the petty cash left on an employee's account.
    struct ReserveInsufficient {
        std::int64_t available = 0; // minor units of `currency`
        std::string currency;
        bool operator==(const ReserveInsufficient&) const = default;
    };
    /// The petty cash left could not be confirmed.
    struct ReserveUnknown {
        std::string currency;
        bool operator==(const ReserveUnknown&) const = default;
    };
    struct DestinationRequired {
        bool operator==(const DestinationRequired&) const = default;
    };
    struct CategoryRequired {
        bool operator==(const CategoryRequired&) const = default;
    };
    struct AccountRequired {
        bool operator==(const AccountRequired&) const = default;
    };
    struct PositiveAmount {
        bool operator==(const PositiveAmount&) const = default;
    };
    using Case = std::variant<ReserveInsufficient, ReserveUnknown, DestinationRequired, CategoryRequired,
                              AccountRequired, PositiveAmount>;

    Case what;

    bool operator==(const EntryValidationError&) const = default;

    /// What the user reads under the field.
    [[nodiscard]] std::string message(std::string_view locale) const;
};
