#include "LedgerUI/Theme/ThemePalette.h"

#include <array>

namespace {

struct Role {
    QPalette::ColorRole role;
    Token token;
};

constexpr std::array roles = std::to_array<Role>({
    {QPalette::Window, Token::surface},
    {QPalette::WindowText, Token::text},
    {QPalette::Base, Token::field},
    {QPalette::AlternateBase, Token::surfaceAlt},
    {QPalette::Text, Token::text},
    {QPalette::PlaceholderText, Token::text3},
    {QPalette::Button, Token::surface},
    {QPalette::ButtonText, Token::text},
    {QPalette::BrightText, Token::danger},
    {QPalette::ToolTipBase, Token::surface},
    {QPalette::ToolTipText, Token::text},
    {QPalette::Highlight, Token::accent},
    {QPalette::HighlightedText, Token::onAccent},
    {QPalette::Link, Token::accent},
    {QPalette::LinkVisited, Token::accent},
    {QPalette::Light, Token::surfaceAlt},
    {QPalette::Midlight, Token::hairline},
    {QPalette::Mid, Token::divider},
    {QPalette::Dark, Token::control},
    {QPalette::Shadow, Token::control},
});

constexpr std::array disabledText{QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                  QPalette::PlaceholderText};

}

QPalette ThemePalette::of(ColorScheme scheme)
{
    QPalette palette;
    for (const auto& [role, token] : roles)
        palette.setColor(role, QColor::fromRgb(tokenColor(token, scheme)));
    const auto disabled = QColor::fromRgb(tokenColor(Token::disabled, scheme));
    for (const auto role : disabledText)
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor::fromRgb(tokenColor(Token::fieldOff, scheme)));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, disabled);
    return palette;
}
