#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace LedgerService {

/// Small files that are what receipts may be.
namespace SampleReceipts {

std::string jpeg();
std::string png();
std::string heic();
/// A document of so many bytes; the least is some hundred.
std::string pdf(std::size_t bytes = 400, char filling = ' ');

/// The body of an upload.
std::string upload(std::string_view content, std::string_view mediaType = "application/pdf",
                   std::string_view name = "receipt.pdf");

}

}
