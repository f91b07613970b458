#pragma once

#include <string_view>

#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerCore/Domain/Text/WordTable.h"

/// What a person reads about an entry that cannot be reversed.
namespace ReversalWords {

/// What is corrected on a page of its own; the service answers the same.
inline constexpr WordRow capitalCorrection{
    "capitalCorrection", "请在“资本”页面更正此笔出资，以保留原记录及其关联。",
    "Koreksi setoran ini di halaman Modal agar catatan asli dan tautannya tetap terjaga.",
    "Hãy điều chỉnh khoản góp vốn này trên trang Vốn để giữ nguyên bản ghi gốc và các liên kết.",
    "Correct this contribution on the Capital page to preserve the original record and its links."};
inline constexpr WordRow dividendCorrection{
    "dividendCorrection", "请在“分红”页面更正此记录，以便一并核对分红余额。",
    "Koreksi catatan ini di halaman Dividen agar saldo dividen dapat diperiksa sekaligus.",
    "Hãy điều chỉnh bản ghi này trên trang Cổ tức để các số dư cổ tức được kiểm tra cùng nhau.",
    "Correct this record on the Dividends page so the dividend balances can be checked together."};

const WordTable& words();

std::string_view key(ReversalRules::Refusal refusal);

}
