#pragma once

#include <string_view>

#include "LedgerCore/Domain/Records/DividendState.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// How a movement of dividends is called and written.
namespace MovementText {

/// The movement that a reversal undoes; null for others, or where it is not there.
const DividendMovement* undone(const DividendMovement& movement, const DividendState& state);

/// "Dividend payment", "Advance applied", "Reversed payment", with its glyph. `original` is what a reversal undoes.
RecordCell title(const DividendMovement& movement, const DividendMovement* original, std::string_view locale);

/// Money that left an account below zero, money that came back above; what moved none in a quiet tone.
RecordCell amount(const DividendMovement& movement, const DividendMovement* original, std::string_view locale);

}
