#include "LedgerCore/Client/Receipts/AttachmentCache.h"

#include <QCryptographicHash>
#include <QTemporaryDir>

namespace fs = std::filesystem;

AttachmentCache::AttachmentCache() : m_folder(std::make_unique<QTemporaryDir>()) {}

AttachmentCache::~AttachmentCache() = default;

fs::path AttachmentCache::pathOf(const std::string& id, const std::string& fileName) const
{
    // An identifier is the service's and may hold anything.
    const auto folder = QCryptographicHash::hash(QByteArray::fromStdString(id), QCryptographicHash::Sha256).toHex();
    return fs::path{m_folder->path().toStdString()} / folder.toStdString() / fileName;
}

std::optional<fs::path> AttachmentCache::find(const std::string& id, const std::string& fileName) const
{
    std::error_code failure;
    auto path = pathOf(id, fileName);
    return fs::is_regular_file(path, failure) ? std::optional{std::move(path)} : std::nullopt;
}

std::optional<fs::path> AttachmentCache::place(const std::string& id, const std::string& fileName) const
{
    std::error_code failure;
    auto path = pathOf(id, fileName);
    fs::create_directories(path.parent_path(), failure);
    if (!failure)
        fs::permissions(path.parent_path(), fs::perms::owner_all, failure);
    return failure || !m_folder->isValid() ? std::nullopt : std::optional{std::move(path)};
}

std::int64_t AttachmentCache::byteCount() const
{
    std::int64_t bytes = 0;
    std::error_code failure;
    for (const auto& each : fs::recursive_directory_iterator{m_folder->path().toStdString(), failure}) {
        if (each.is_regular_file(failure))
            bytes += static_cast<std::int64_t>(each.file_size(failure));
    }
    return bytes;
}

void AttachmentCache::clear()
{
    std::error_code failure;
    for (const auto& each : fs::directory_iterator{m_folder->path().toStdString(), failure})
        fs::remove_all(each.path(), failure);
}
