#pragma once

#include <QPalette>

#include "LedgerUI/Theme/Token.h"

namespace ThemePalette {

/// The palette of a scheme, with every role set. Base colours come from here, not from the style sheet: a colour set
/// there for every widget would halve the contrast of placeholders.
QPalette of(ColorScheme scheme);

}
