#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerService {

/// Lists and maps that are only ever read whole are kept as JSON texts in one column. A text that is no longer what
/// was written is a damaged database and throws, as every failure of the database does.
namespace JsonColumn {

template <class Value>
Value read(const std::string& text)
{
    auto decoded = Json::decode<Value>(text);
    if (!decoded)
        throw std::runtime_error("a JSON column does not hold what was written to it");
    return *std::move(decoded);
}

template <class Value>
std::optional<Value> read(const std::optional<std::string>& text)
{
    return text ? std::optional{read<Value>(*text)} : std::nullopt;
}

template <class Value>
std::optional<std::string> write(const std::optional<Value>& value)
{
    return value ? std::optional{Json::encode(*value)} : std::nullopt;
}

}

}
