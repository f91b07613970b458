#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

namespace QueryText {

/// The fields of "person=x&day=2026-11-20" with their escapes undone; nothing when an escape is none, a field is no
/// UTF-8, holds a zero byte or comes twice.
std::optional<std::map<std::string, std::string>> fieldsOf(std::string_view query);

}

}
