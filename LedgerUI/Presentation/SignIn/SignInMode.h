#pragma once

#include <array>
#include <string_view>

/// The ways from signed out to signed in, in the order of the list.
enum class SignInMode { login, registration, join, reset };

/// What the row of a way says. Texts are keys of signInWords(); `name` is what the way is called outside the program.
struct SignInModeRow {
    SignInMode mode;
    std::string_view name;
    std::string_view glyph;
    std::string_view title;
    std::string_view hint;
};

inline constexpr std::array signInModes{
    SignInModeRow{SignInMode::login, "login", "box-arrow-in-right", "login", "loginHint"},
    SignInModeRow{SignInMode::registration, "register", "building-add", "register", "registerHint"},
    SignInModeRow{SignInMode::join, "join", "envelope-open", "join", "joinHint"},
    SignInModeRow{SignInMode::reset, "reset", "key", "reset", "resetHint"},
};

constexpr const SignInModeRow& signInModeRow(SignInMode mode)
{
    return signInModes[static_cast<std::size_t>(mode)];
}
