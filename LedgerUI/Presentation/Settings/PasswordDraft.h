#pragma once

#include <map>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"

/// A change of the own password as it is filled in.
struct PasswordDraft {
    enum class Field { current, chosen };
    using Messages = std::map<Field, QString>;

    std::string current;
    std::string chosen;

    /// What is missing or cannot be right.
    [[nodiscard]] Messages problems(std::string_view locale) const;
    /// What the service's refusal is about; empty for what concerns no field.
    [[nodiscard]] static Messages refusal(const Failure& failure, std::string_view locale);

    bool operator==(const PasswordDraft&) const = default;
};
