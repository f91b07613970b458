#pragma once

#include "LedgerUI/Theme/Token.h"

/// A colour in both schemes: that of a token, or one that a person chose.
struct ThemeColor {
    ThemeColor(Token token) : light{tokenColor(token, ColorScheme::light)}, dark{tokenColor(token, ColorScheme::dark)}
    {
    }
    /// As 0xffRRGGBB.
    ThemeColor(QRgb inLight, QRgb inDark) : light{inLight}, dark{inDark} {}

    [[nodiscard]] QRgb in(ColorScheme scheme) const { return scheme == ColorScheme::dark ? dark : light; }
    bool operator==(const ThemeColor&) const = default;

    QRgb light;
    QRgb dark;
};
