#pragma once

#include <expected>
#include <variant>

#include "LedgerCore/Client/APIError.h"
#include "LedgerCore/Domain/Money/MoneyError.h"

/// The user or the program gave an operation up. Never reported.
struct Cancelled {
    bool operator==(const Cancelled&) const = default;
};

/// Why an operation did not do what it was asked to.
using Failure = std::variant<APIError, MoneyError, Cancelled>;

template <class Value>
using Result = std::expected<Value, Failure>;

/// Whether it is unknown if the service carried the request out: no reply, one that broke off or could not be read,
/// or a failure of the service itself. Such a command may only be sent again as it stands.
bool isOutcomeUnknown(const Failure& failure);
