#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"

/// A receipt as it will be uploaded.
struct PreparedReceipt {
    std::string data;
    std::string name;
    std::string mime;
    std::int64_t byteCount = 0; // of `data`

    bool operator==(const PreparedReceipt&) const = default;
};

/// Makes receipts small enough to upload. PDF documents and small pictures stay as they are; larger pictures become
/// JPEG, upright and in sRGB. Blocks: a photo takes some hundred milliseconds, so call it on a worker.
namespace ReceiptCompressor {

enum class Refusal {
    unsupportedType,  // no PDF, JPEG, PNG or HEIC
    tooLarge,         // a PDF past `maximumBytes`
    compressionFailed // a picture that cannot be read, is too large to be decoded safely, or stays past `maximumBytes`
};

/// What may be uploaded of one receipt.
inline constexpr std::int64_t maximumBytes = ReceiptRules::maximumBytes;

/// A picture up to this size is uploaded as it is.
inline constexpr std::int64_t keptBytes = 512'000;
/// Reduction ends with the first result up to this size.
inline constexpr std::int64_t aimedBytes = 1'228'800;
/// A picture of more pixels than any camera takes is a trap for memory: 250 million pixels need 1 GB.
inline constexpr std::int64_t maximumPixels = 250'000'000;
/// HEIC and HEIF pictures are only read whole, and beside what they were coded in: 64 million pixels need 450 MB.
inline constexpr std::int64_t maximumHeifPixels = 64'000'000;

/// The media type that the first bytes show, or nothing when it is none that is accepted.
std::string_view mimeOf(std::string_view data);

/// `mime` is one of the accepted types: "application/pdf", "image/jpeg", "image/png", "image/heic", "image/heif". The
/// name stays as given: AttachmentFilename gives it the ending of what was prepared.
std::expected<PreparedReceipt, Refusal> prepare(std::string data, std::string name, std::string mime);

}
