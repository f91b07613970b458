#include "LedgerUI/Theme/Token.h"

namespace {

// The build reads these lines as well, to tint the style sheet's images.
constexpr std::array table = std::to_array<TokenColor>({
    {Token::window, "window", 0xF4F3EF, 0x17191C},
    {Token::surface, "surface", 0xFFFFFF, 0x1F2226},
    {Token::surfaceAlt, "surfaceAlt", 0xFAF9F6, 0x24282D},
    {Token::sunken, "sunken", 0xEAE8E1, 0x131517},
    {Token::field, "field", 0xFFFFFF, 0x191C1F},
    {Token::fieldOff, "fieldOff", 0xF1F0EB, 0x22252A},
    {Token::hairline, "hairline", 0xE6E4DD, 0x2E3238},
    {Token::divider, "divider", 0xD5D2C9, 0x414750},
    {Token::control, "control", 0x89867D, 0x7B828D},
    {Token::focus, "focus", 0x2A69C0, 0x6FA8F5},
    {Token::text, "text", 0x1E1F21, 0xE9E7E2},
    {Token::text2, "text2", 0x5A5852, 0xB3B1AB},
    {Token::text3, "text3", 0x6B6861, 0xA3A19B},
    {Token::disabled, "disabled", 0xA5A29A, 0x62666D},
    {Token::accent, "accent", 0x23508E, 0x8FB6EA},
    {Token::accentHover, "accentHover", 0x1C437A, 0xA9C7F0},
    {Token::accentPress, "accentPress", 0x153563, 0x7AA3DA},
    {Token::onAccent, "onAccent", 0xFFFFFF, 0x10233D},
    {Token::accentSoft, "accentSoft", 0xE1E9F4, 0x26374F},
    {Token::accentSoft2, "accentSoft2", 0xEEF3F9, 0x222C3A},
    {Token::danger, "danger", 0xB3261E, 0xF48A80},
    {Token::dangerSoft, "dangerSoft", 0xFBE8E6, 0x3A2322},
    {Token::dangerLine, "dangerLine", 0xE3A29C, 0x7A3F3A},
    {Token::warn, "warn", 0x855600, 0xE2B25A},
    {Token::warnSoft, "warnSoft", 0xFBF1DA, 0x352B19},
    {Token::warnLine, "warnLine", 0xDDBB72, 0x6E5828},
    {Token::ok, "ok", 0x0B7461, 0x58C3AC},
    {Token::okSoft, "okSoft", 0xE0F1EC, 0x1A322D},
    {Token::okLine, "okLine", 0x93CBBD, 0x2F6A5D},
    {Token::infoSoft, "infoSoft", 0xE8EFF8, 0x222F42},
    {Token::infoLine, "infoLine", 0xA9C1E0, 0x3D587F},
    {Token::chart1, "chart1", 0x23508E, 0x8FB6EA},
    {Token::chart2, "chart2", 0xAE752C, 0xE6CB74},
    {Token::chart3, "chart3", 0x49A083, 0x6FDCC8},
    {Token::chart4, "chart4", 0x64203F, 0xDC9391},
    {Token::chart5, "chart5", 0xA781C8, 0xA860B2},
    {Token::chart6, "chart6", 0x434B00, 0x6C8733},
    {Token::chartOther, "chartOther", 0x8A877F, 0x8A8E95},
});

constexpr bool isInOrder()
{
    for (std::size_t index = 0; index < table.size(); ++index) {
        if (static_cast<std::size_t>(table[index].token) != index)
            return false;
    }
    return true;
}
static_assert(isInOrder(), "the table follows the order of Token");
static_assert(table.size() == static_cast<std::size_t>(Token::chartOther) + 1, "every token has its colours");

}

std::span<const TokenColor> tokenColors()
{
    return table;
}

QRgb tokenColor(Token token, ColorScheme scheme)
{
    const auto& row = table[static_cast<std::size_t>(token)];
    return 0xff000000U | (scheme == ColorScheme::dark ? row.dark : row.light);
}
