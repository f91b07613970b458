#include "LedgerUI/Presentation/Receipts/ReceiptSource.h"

#include <utility>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/Receipts/AttachmentFilename.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Presentation/Receipts/ReceiptPicture.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr QSize thumbnailRoom{720, 960};

using Bytes = std::expected<std::string, ReceiptProblem>;

Bytes readFile(const QString& path)
{
    // Folders, pipes and devices are no files: reading one could last for ever.
    if (!QFileInfo{path}.isFile())
        return std::unexpected(ReceiptProblem::unreadable);
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly))
        return std::unexpected(ReceiptProblem::unreadable);
    const auto head = file.peek(16).toStdString();
    const auto most = ReceiptCompressor::mimeOf(head) == "application/pdf" ? ReceiptCompressor::maximumBytes
                                                                           : ReceiptSources::readBytes;
    if (file.size() > most)
        return std::unexpected(ReceiptProblem::tooLarge);
    auto content = file.read(most + 1).toStdString();
    if (file.error() != QFileDevice::NoError)
        return std::unexpected(ReceiptProblem::unreadable);
    return content;
}

Bytes encoded(const QImage& image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "png"))
        return std::unexpected(ReceiptProblem::compressionFailed);
    return buffer.data().toStdString();
}

ReceiptProblem problemOf(ReceiptCompressor::Refusal refusal)
{
    switch (refusal) {
    case ReceiptCompressor::Refusal::unsupportedType:
        return ReceiptProblem::unsupportedType;
    case ReceiptCompressor::Refusal::tooLarge:
        return ReceiptProblem::tooLarge;
    case ReceiptCompressor::Refusal::compressionFailed:
        return ReceiptProblem::compressionFailed;
    }
    return ReceiptProblem::unreadable;
}

}

std::expected<ReadyReceipt, ReceiptProblem> ReceiptSources::prepared(const ReceiptSource& source,
                                                                     std::string_view locale)
{
    auto bytes = source.path.isEmpty() ? encoded(source.image) : readFile(source.path);
    if (!bytes)
        return std::unexpected(bytes.error());
    if (bytes->empty())
        return std::unexpected(ReceiptProblem::empty);
    const std::string mime{ReceiptCompressor::mimeOf(*bytes)};
    const auto size = bytes->size();
    auto made = ReceiptCompressor::prepare(*std::move(bytes), source.name.toStdString(), mime);
    if (!made)
        return std::unexpected(problemOf(made.error()));
    ReadyReceipt ready{.prepared = *std::move(made)};
    auto& prepared = ready.prepared;
    ready.isCompressed = prepared.data.size() != size || prepared.mime != mime;
    prepared.name = AttachmentFilename::safe(prepared.name, prepared.mime, locale);
    auto seen = ReceiptPictures::read(prepared.data, prepared.mime, thumbnailRoom, 0);
    if (seen)
        ready.thumbnail = std::move(seen->image);
    else
        ready.unseen = ReceiptPictures::text(seen.error(), locale);
    return ready;
}

QString ReceiptSources::text(ReceiptProblem problem, std::string_view locale)
{
    switch (problem) {
    case ReceiptProblem::unreadable:
        return wordIn(locale, receiptWords(), "unreadable");
    case ReceiptProblem::empty:
        return wordIn(locale, receiptWords(), "empty");
    case ReceiptProblem::unsupportedType:
        return wordIn(locale, serviceMessages(), "type");
    case ReceiptProblem::tooLarge:
        return wordIn(locale, serviceMessages(), "size");
    case ReceiptProblem::compressionFailed:
        return wordIn(locale, EntryWords::words(), "compressionFailed");
    }
    return {};
}
