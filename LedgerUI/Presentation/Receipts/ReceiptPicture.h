#pragma once

#include <expected>
#include <string>
#include <string_view>

#include <QImage>
#include <QString>

/// A receipt as it is looked at: a picture, or one page of a document.
struct ReceiptPicture {
    QImage image;
    int page = 0; // counted from 0
    int pageCount = 1;
};

/// What keeps a receipt from being shown in the window.
enum class ReceiptUnseen { damaged, isProtected, tooLarge };

namespace ReceiptPictures {

/// The most pixels that are decoded to show a picture: 64 million need 256 MB for a moment. JPEG is read in parts and
/// may have more.
inline constexpr std::int64_t shownPixels = 64'000'000;

/// The picture or page within `room`, never enlarged beyond it. Blocks: call it on a worker.
std::expected<ReceiptPicture, ReceiptUnseen> read(std::string_view data, std::string_view mime, QSize room, int page);

QString text(ReceiptUnseen unseen, std::string_view locale);

}
