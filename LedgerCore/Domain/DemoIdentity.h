#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// Who one can be in the demonstration company. Nothing here is secret: the sign-in screen shows it.
namespace DemoIdentity {

/// The password of every demonstration member.
inline constexpr std::string_view password = "tallyfold-demo";

inline constexpr std::string_view owner = "owner";
inline constexpr std::string_view admin = "admin";
inline constexpr std::string_view finance = "finance";
inline constexpr std::string_view partner = "partner";
inline constexpr std::string_view employee = "employee";

/// From most to least rights, as the picker lists them.
inline constexpr std::array<std::string_view, 5> profiles{owner, admin, finance, partner, employee};

constexpr bool isProfile(std::string_view text)
{
    return std::ranges::find(profiles, text) != profiles.end();
}

}
