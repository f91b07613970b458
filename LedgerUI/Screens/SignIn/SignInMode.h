#pragma once

#include <array>
#include <string_view>

/// A way from signed out to signed in: what its row in the list says. Texts are keys of signInWords().
struct SignInMode {
    std::string_view name;
    std::string_view glyph;
    std::string_view title;
    std::string_view hint;
};

/// The ways that are built, in the order of the list.
inline constexpr std::array signInModes{
    SignInMode{.name = "login", .glyph = "box-arrow-in-right", .title = "login", .hint = "loginHint"},
};
