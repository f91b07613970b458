#pragma once

#include <string_view>

#include <QString>

#include "LedgerUI/Theme/Token.h"

/// How each kind of entry is told apart at a glance: a glyph and a colour, always both.
namespace EntryKindLook {

QString glyph(std::string_view kind);
Token color(std::string_view kind);

}
