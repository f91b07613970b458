#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace {

struct KindGlyph {
    std::string_view kind;
    const char* glyph;
};

constexpr std::array glyphs{
    KindGlyph{EntryKind::income, "arrow-down-left"},
    KindGlyph{EntryKind::expense, "arrow-up-right"},
    KindGlyph{EntryKind::transfer, "arrow-left-right"},
    KindGlyph{EntryKind::exchange, "arrow-down-up"},
    KindGlyph{EntryKind::refund, "arrow-return-left"},
    KindGlyph{EntryKind::reversal, "arrow-counterclockwise"},
    KindGlyph{EntryKind::opening, "flag"},
    KindGlyph{EntryKind::capital, "people"},
    KindGlyph{EntryKind::dividend, "pie-chart"},
};

}

QString entryKindGlyph(std::string_view kind)
{
    const auto* const found = std::ranges::find(glyphs, kind, &KindGlyph::kind);
    return QString::fromLatin1(found == glyphs.end() ? "dot" : found->glyph);
}
