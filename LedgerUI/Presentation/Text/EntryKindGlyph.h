#pragma once

#include <string_view>

#include <QString>

/// The glyph that tells a kind of entry apart at a glance, beside its colour.
QString entryKindGlyph(std::string_view kind);
