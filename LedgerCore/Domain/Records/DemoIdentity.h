#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Permission.h"

/// Who one can be in the demonstration company. Nothing here is secret: the sign-in screen shows it.
namespace DemoIdentity {

/// The password of every demonstration member.
inline constexpr std::string_view password = "tallyfold-demo";

/// What the addresses of all demonstration members end in.
inline constexpr std::string_view emailDomain = ".demo.tallyfold.example";

/// Whether the address, in lower case, is kept for demonstrations: nobody else goes by it.
constexpr bool isAddress(std::string_view email)
{
    return email.ends_with(emailDomain);
}

/// What those of one language end in, by its locale: "@en.demo.tallyfold.example".
inline std::string emailEnding(std::string_view locale)
{
    std::string ending{"@"};
    ending += locale.substr(0, 2);
    ending += emailDomain;
    return ending;
}

// Each profile is named after the role of its member.
inline constexpr std::string_view owner = MemberRole::owner;
inline constexpr std::string_view admin = MemberRole::admin;
inline constexpr std::string_view finance = MemberRole::finance;
inline constexpr std::string_view partner = MemberRole::partner;
inline constexpr std::string_view employee = MemberRole::employee;

/// From most to least rights, as the picker lists them.
inline constexpr std::array<std::string_view, 5> profiles{owner, admin, finance, partner, employee};

constexpr bool isProfile(std::string_view text)
{
    return std::ranges::find(profiles, text) != profiles.end();
}

}
