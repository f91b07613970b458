#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The tabs of the company page, by what they are called in the interface and in its words.
namespace CompanyTabs {

inline constexpr std::string_view members = "members";
inline constexpr std::string_view invitations = "invitations";
inline constexpr std::string_view categories = "categories";
inline constexpr std::string_view bookkeeping = "bookkeeping";
inline constexpr std::string_view access = "access"; // one's own rights in words
inline constexpr std::string_view audit = "audit";   // for owners
inline constexpr std::string_view profile = "profile";

/// Those that the current member gets, in order.
std::vector<std::string_view> of(const LedgerSnapshot& snapshot);

}
