#pragma once

#include <string_view>

namespace LedgerService {

/// What the bytes of a receipt are, whatever they are called.
namespace ReceiptContent {

/// Whether these bytes are a file of this media type: not only their first bytes say so, the structure behind them does
/// too. Media types other than those that receipts may have are never matched.
bool isOf(std::string_view mediaType, std::string_view bytes);

}

}
