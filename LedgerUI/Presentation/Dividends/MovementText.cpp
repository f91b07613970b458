#include "LedgerUI/Presentation/Dividends/MovementText.h"

#include <algorithm>

#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

namespace Kind = DividendMovementKind;

/// What the movement does to the accounts: −1 takes money out, +1 brings it back; a set-off counts as what it settles.
std::int64_t signOf(std::string_view kind)
{
    return kind == Kind::returning ? 1 : -1;
}

}

const DividendMovement* MovementText::undone(const DividendMovement& movement, const DividendState& state)
{
    if (!movement.reversalOf)
        return nullptr;
    const auto found = std::ranges::find(state.movements, *movement.reversalOf, &DividendMovement::id);
    return found == state.movements.end() ? nullptr : &*found;
}

RecordCell MovementText::title(const DividendMovement& movement, const DividendMovement* original,
                               std::string_view locale)
{
    const auto& kind = original ? original->kind : movement.kind;
    RecordCell cell;
    if (movement.kind == Kind::reversal) {
        cell = {.text = wordIn(locale, capitalWords(), "reversal." + kind),
                .glyph = QStringLiteral("arrow-counterclockwise")};
    } else {
        cell = {.text = wordIn(locale, capitalWords(), "movement." + kind),
                .glyph = kind == Kind::application ? QStringLiteral("link-45deg") : QStringLiteral("pie-chart"),
                .glyphTone = kind == Kind::application ? RecordTone::quiet : RecordTone::dividend};
    }
    return movement.reversedBy ? RecordText::struck(std::move(cell)) : cell;
}

RecordCell MovementText::amount(const DividendMovement& movement, const DividendMovement* original,
                                std::string_view locale)
{
    const auto& kind = original ? original->kind : movement.kind;
    const auto sign = original ? -signOf(kind) : signOf(kind);
    auto cell = RecordText::movement(sign * movement.amountMinor, movement.currency, locale);
    if (kind == Kind::application)
        cell.tone = RecordTone::quiet;
    else if (sign > 0)
        cell.tone = RecordTone::dividend;
    return movement.reversedBy ? RecordText::struck(std::move(cell)) : cell;
}
