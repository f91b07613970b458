#pragma once

#include <optional>
#include <string_view>

class QImage; // declared only: whoever uses the client need not link Qt's images

/// Reading the picture of a receipt, whatever a stranger put into the file.
namespace ReceiptImage {

/// The whole picture, upright, in its own colours; its longest side may be reduced while reading, though never below
/// `longestSide` pixels. Nothing when it cannot be read or has more than ReceiptCompressor::maximumPixels.
std::optional<QImage> read(std::string_view data, std::string_view mime, int longestSide);

/// As JPEG shows it: sRGB, without transparency (on white).
QImage opaque(QImage image);

}
