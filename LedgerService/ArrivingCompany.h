#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// A company that is being copied into the database, some rows at a time. Until it is whole it is nobody's: people find
/// neither it nor those who come with it. In place of its approval status stands who copies it, and when that one was
/// last at work.
namespace ArrivingCompany {

inline constexpr std::string_view state = "arriving";

inline bool is(const std::optional<std::string>& approvalStatus)
{
    return approvalStatus && approvalStatus->starts_with(state);
}

}

}
