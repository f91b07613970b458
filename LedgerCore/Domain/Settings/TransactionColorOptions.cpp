#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"

#include <algorithm>
#include <array>
#include <optional>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace {

// Each reads at 4.5 to 1 on every ground of its scheme, a selected row included.
constexpr std::array<TransactionColorOption, 10> palette{{
    {"graphite", {"石墨", "Grafit", "Than chì", "Graphite"}, "#4B4D52", "#C2C4C9"},
    {"slate", {"蓝灰", "Biru abu", "Xanh xám", "Slate"}, "#46607F", "#A3B7CF"},
    {"ink", {"墨蓝", "Biru tinta", "Xanh mực", "Ink blue"}, "#23508E", "#8FB6EA"},
    {"teal", {"青绿", "Hijau toska", "Xanh ngọc", "Teal"}, "#0B7461", "#58C3AC"},
    {"olive", {"橄榄", "Zaitun", "Xanh ô liu", "Olive"}, "#5A661B", "#B9C46F"},
    {"ochre", {"赭黄", "Oker", "Vàng đất", "Ochre"}, "#855600", "#E2B25A"},
    {"rust", {"铁锈", "Karat", "Nâu gỉ", "Rust"}, "#AB4526", "#EE9270"},
    {"crimson", {"绯红", "Merah tua", "Đỏ thẫm", "Crimson"}, "#A8243A", "#F28B97"},
    {"rose", {"玫瑰", "Mawar", "Hồng đậm", "Rose"}, "#9C3764", "#E593B4"},
    {"violet", {"紫罗兰", "Ungu", "Tím", "Violet"}, "#6B4A9C", "#BCA3E6"},
}};

struct KindColor {
    std::string_view kind;
    std::string_view colorID;
};

constexpr std::array defaults{
    KindColor{EntryKind::income, "teal"},    KindColor{EntryKind::expense, "rust"},
    KindColor{EntryKind::transfer, "slate"}, KindColor{EntryKind::exchange, "violet"},
    KindColor{EntryKind::refund, "ochre"},   KindColor{EntryKind::reversal, "graphite"},
    KindColor{EntryKind::opening, "olive"},  KindColor{EntryKind::capital, "ink"},
    KindColor{EntryKind::dividend, "rose"},
};

std::string_view defaultOf(std::string_view kind)
{
    const auto* const found = std::ranges::find(defaults, kind, &KindColor::kind);
    return found == defaults.end() ? std::string_view{"graphite"} : found->colorID;
}

const TransactionColorOption* choice(const std::optional<TextMap>& colors, std::string_view kind)
{
    if (!colors)
        return nullptr;
    const auto found = colors->find(kind);
    return found == colors->end() ? nullptr : TransactionColorOptions::find(found->second);
}

}

std::span<const TransactionColorOption> TransactionColorOptions::all()
{
    return palette;
}

const TransactionColorOption* TransactionColorOptions::find(std::string_view id)
{
    const auto* const found = std::ranges::find(palette, id, &TransactionColorOption::id);
    return found == palette.end() ? nullptr : found;
}

bool TransactionColorOptions::isChoice(const TransactionColorSelection& selection)
{
    return std::ranges::find(EntryKind::all, selection.kind) != EntryKind::all.end() && find(selection.colorID);
}

const TransactionColorOption& TransactionColorOptions::of(std::string_view kind, const LedgerSnapshot& snapshot)
{
    for (const auto* colors : {&snapshot.currentMember.transactionColors, &snapshot.company.transactionColors}) {
        if (const auto* chosen = choice(*colors, kind))
            return *chosen;
    }
    const auto* const own = find(defaultOf(kind));
    require(own != nullptr, "every default is a colour of the palette");
    return *own;
}
