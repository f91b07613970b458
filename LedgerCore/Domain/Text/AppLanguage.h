#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

/// Turns whatever locale the system or the user offers into one of the four interface languages.
namespace AppLanguage {

/// In the order of the language picker.
inline constexpr std::array<std::string_view, 4> supportedLocales{"zh-CN", "en-US", "id-ID", "vi-VN"};

/// The settings key that holds the chosen tag; without it the system's preferred languages decide.
inline constexpr std::string_view preferenceKey = "Quillet.interfaceLanguage";

/// The first identifier whose language is spoken here decides; otherwise Chinese.
std::string_view resolve(std::span<const std::string> preferredLocalizations);

/// `resolve` for a single identifier.
std::string_view locale(std::string_view identifier);

/// "en", "id", "vi" or "zh-Hans".
std::string_view resourceCode(std::string_view identifier);

bool isSupported(std::string_view tag);

}
