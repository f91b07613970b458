#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include <QRgb>

/// What a colour is for. Widgets name a token, never a colour.
enum class Token {
    // grounds
    window,
    surface,
    surfaceAlt,
    sunken,
    field,
    fieldOff,
    // lines
    hairline,
    divider,
    control,
    focus,
    // text
    text,
    text2,
    text3,
    disabled,
    // accent
    accent,
    accentHover,
    accentPress,
    onAccent,
    accentSoft,
    accentSoft2,
    // state: glyph, banner ground, banner line
    danger,
    dangerSoft,
    dangerLine,
    warn,
    warnSoft,
    warnLine,
    ok,
    okSoft,
    okLine,
    infoSoft,
    infoLine,
    // categorical series of charts, in their order; the rest is "other"
    chart1,
    chart2,
    chart3,
    chart4,
    chart5,
    chart6,
    chartOther,
};

enum class ColorScheme { light, dark };

/// One row of the colour table: the name used in the style sheet and the two colours (0xRRGGBB).
struct TokenColor {
    Token token;
    std::string_view name;
    QRgb light;
    QRgb dark;
};

/// All colours, in the order of `Token`.
std::span<const TokenColor> tokenColors();

/// The colour of a token as opaque 0xffRRGGBB.
QRgb tokenColor(Token token, ColorScheme scheme);
