#pragma once

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <QImage>
#include <QString>

#include "LedgerCore/Client/Receipts/ReceiptCompressor.h"

/// What a person gave as a receipt: a file on this computer, or a picture from the clipboard.
struct ReceiptSource {
    QString name;
    QString path; // empty for a picture
    QImage image{};
};

/// Why a source does not become a receipt. Nothing of it is sent.
enum class ReceiptProblem { unreadable, empty, unsupportedType, tooLarge, compressionFailed };

/// A receipt as it will be uploaded, with what can be seen of it.
struct ReadyReceipt {
    PreparedReceipt prepared;
    bool isCompressed = false;
    QImage thumbnail{}; // null where it cannot be shown
    QString unseen{};   // why not
};

namespace ReceiptSources {

/// A picture past this size is not even read: it could not be a photo of a receipt.
inline constexpr std::int64_t readBytes = std::int64_t{100} * 1024 * 1024;

/// Reads, checks by its content and compresses. Blocks: call it on a worker. `locale` is that of names that the
/// receipt is given.
std::expected<ReadyReceipt, ReceiptProblem> prepared(const ReceiptSource& source, std::string_view locale);

QString text(ReceiptProblem problem, std::string_view locale);

}
