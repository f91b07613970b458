#pragma once

#include <string_view>

/// How an invitation that was not accepted stands.
namespace InvitationStatus {
inline constexpr std::string_view pending = "pending";
inline constexpr std::string_view expired = "expired";
}
