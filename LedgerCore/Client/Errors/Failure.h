#pragma once

#include <expected>
#include <variant>

#include "LedgerCore/Client/Errors/APIError.h"
#include "LedgerCore/Domain/Money/MoneyError.h"

/// The user or the program gave an operation up. Never reported.
struct Cancelled {
    bool operator==(const Cancelled&) const = default;
};

/// Why an operation did not do what it was asked to.
using Failure = std::variant<APIError, MoneyError, Cancelled>;

template <class Value>
using Result = std::expected<Value, Failure>;

/// What a failure says about the command that met it.
enum class CommandFate {
    refused,   // the service decided about it, and did not carry it out
    unknown,   // no reply, one that broke off or could not be read, or a failure of the service itself
    undecided, // not carried out this time; what became of an earlier attempt stays as open as it was
};

CommandFate fateOf(const Failure& failure);

/// Whether the service no longer knows the session of the request that met this.
bool endsSession(const Failure& failure);

/// Whether it is unknown if the service carried the request out. Such a command may only be sent again as it stands.
inline bool isOutcomeUnknown(const Failure& failure)
{
    return fateOf(failure) == CommandFate::unknown;
}
