#include "LedgerUI/Components/EntryKindLook.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/LedgerTransaction.h"

namespace {

struct Look {
    std::string_view kind;
    const char* glyph;
    Token color;
};

constexpr std::array looks{
    Look{EntryKind::income, "arrow-down-left", Token::income},
    Look{EntryKind::expense, "arrow-up-right", Token::expense},
    Look{EntryKind::transfer, "arrow-left-right", Token::transfer},
    Look{EntryKind::exchange, "arrow-down-up", Token::exchange},
    Look{EntryKind::refund, "arrow-return-left", Token::refund},
    Look{EntryKind::reversal, "arrow-counterclockwise", Token::reversal},
    Look{EntryKind::opening, "flag", Token::opening},
    Look{EntryKind::capital, "people", Token::capital},
    Look{EntryKind::dividend, "pie-chart", Token::dividend},
};
constexpr Look unknown{"", "dot", Token::text2};

const Look& lookOf(std::string_view kind)
{
    const auto* const found = std::ranges::find(looks, kind, &Look::kind);
    return found == looks.end() ? unknown : *found;
}

}

QString EntryKindLook::glyph(std::string_view kind)
{
    return QString::fromLatin1(lookOf(kind).glyph);
}

Token EntryKindLook::color(std::string_view kind)
{
    return lookOf(kind).color;
}
