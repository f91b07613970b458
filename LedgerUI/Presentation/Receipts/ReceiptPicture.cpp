#include "LedgerUI/Presentation/Receipts/ReceiptPicture.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QPdfDocument>

#include "LedgerCore/Client/Receipts/ReceiptImage.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Seen = std::expected<ReceiptPicture, ReceiptUnseen>;

QByteArray bytesOf(std::string_view data)
{
    return QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
}

Seen readPage(std::string_view data, QSize room, int page)
{
    QBuffer buffer;
    buffer.setData(bytesOf(data));
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument document{nullptr};
    document.load(&buffer);
    if (document.status() != QPdfDocument::Status::Ready || document.pageCount() < 1) {
        const bool isProtected = document.error() == QPdfDocument::Error::IncorrectPassword ||
                                 document.error() == QPdfDocument::Error::UnsupportedSecurityScheme;
        return std::unexpected(isProtected ? ReceiptUnseen::isProtected : ReceiptUnseen::damaged);
    }
    const int shown = std::clamp(page, 0, document.pageCount() - 1);
    const auto points = document.pagePointSize(shown);
    if (points.width() <= 0 || points.height() <= 0)
        return std::unexpected(ReceiptUnseen::damaged);
    const auto size = points.scaled(room, Qt::KeepAspectRatio).toSize().expandedTo({1, 1});
    const auto rendered = document.render(shown, size);
    if (rendered.isNull())
        return std::unexpected(ReceiptUnseen::damaged);
    return ReceiptPicture{ReceiptImage::opaque(rendered), shown, document.pageCount()};
}

/// Whether decoding would take more memory than a look at it is worth. The size stands in the file's head.
bool isTooLarge(std::string_view data)
{
    QBuffer buffer;
    buffer.setData(bytesOf(data));
    QImageReader reader{&buffer};
    reader.setDecideFormatFromContent(true);
    const auto size = reader.size();
    return reader.format() != "jpeg" && size.isValid() &&
           static_cast<std::int64_t>(size.width()) * size.height() > ReceiptPictures::shownPixels;
}

}

Seen ReceiptPictures::read(std::string_view data, std::string_view mime, QSize room, int page)
{
    if (mime == "application/pdf")
        return readPage(data, room, page);
    if (isTooLarge(data))
        return std::unexpected(ReceiptUnseen::tooLarge);
    auto image = ReceiptImage::read(data, mime, std::max(room.width(), room.height()));
    if (!image)
        return std::unexpected(image.error() == ReceiptImage::Unread::tooLarge ? ReceiptUnseen::tooLarge
                                                                               : ReceiptUnseen::damaged);
    const bool fits = image->width() <= room.width() && image->height() <= room.height();
    return ReceiptPicture{ReceiptImage::opaque(
        fits ? *std::move(image) : image->scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation))};
}

QString ReceiptPictures::text(ReceiptUnseen unseen, std::string_view locale)
{
    switch (unseen) {
    case ReceiptUnseen::damaged:
        return wordIn(locale, EntryCopy::words(), "previewFailed");
    case ReceiptUnseen::isProtected:
        return wordIn(locale, receiptWords(), "preview.protected");
    case ReceiptUnseen::tooLarge:
        return wordIn(locale, receiptWords(), "preview.tooLarge");
    }
    return {};
}
