#pragma once

#include <expected>
#include <string_view>

class QImage; // declared only: whoever uses the client need not link Qt's images

/// Reading the picture of a receipt, whatever a stranger put into the file.
namespace ReceiptImage {

enum class Unread {
    damaged, // or of another kind than said
    tooLarge // past ReceiptCompressor::maximumPixels, or past maximumHeifPixels where they count
};

/// The whole picture, upright, in its own colours; its longest side may be reduced while reading, though never below
/// `longestSide` pixels.
std::expected<QImage, Unread> read(std::string_view data, std::string_view mime, int longestSide);

/// As JPEG shows it: sRGB, without transparency (on white).
QImage opaque(QImage image);

}
