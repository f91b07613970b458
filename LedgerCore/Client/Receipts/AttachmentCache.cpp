#include "LedgerCore/Client/Receipts/AttachmentCache.h"

#include <string_view>

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view namePrefix = "tallyfold-receipts-";

/// A folder that is locked as long as this stands: the system lets go of it however the program ends.
class Claim {
public:
    enum class Patience { none, untilFree };

    Claim(const fs::path& folder, Patience patience)
        : m_descriptor{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)}
    {
        const int wanted = patience == Patience::none ? LOCK_EX | LOCK_NB : LOCK_EX;
        m_isHeld = m_descriptor >= 0 && ::flock(m_descriptor, wanted) == 0;
    }
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;
    ~Claim()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    /// Whether the folder is this user's and nobody else's claim.
    [[nodiscard]] bool isHeld() const
    {
        struct stat found{};
        return m_isHeld && ::fstat(m_descriptor, &found) == 0 && found.st_uid == ::geteuid();
    }

private:
    int m_descriptor = -1;
    bool m_isHeld = false;
};

bool isThere(const fs::path& folder)
{
    std::error_code failure;
    return fs::is_directory(folder, failure);
}

fs::path temporaryFiles()
{
    return QDir::tempPath().toStdString();
}

}

class AttachmentCache::Folder {
public:
    Folder()
        : m_made{QString::fromStdString((temporaryFiles() / namePrefix).string() + "XXXXXX")},
          m_claim{path(), Claim::Patience::untilFree}
    {
    }

    /// Not when it could not be made, or was taken for abandoned in the moment before it was claimed.
    [[nodiscard]] bool stands() const { return m_made.isValid() && isThere(path()); }
    [[nodiscard]] fs::path path() const { return m_made.path().toStdString(); }

private:
    QTemporaryDir m_made;
    Claim m_claim;
};

AttachmentCache::AttachmentCache() : m_folder(std::make_unique<Folder>())
{
    if (!m_folder->stands())
        m_folder = std::make_unique<Folder>();
}

AttachmentCache::~AttachmentCache() = default;

fs::path AttachmentCache::pathOf(const std::string& id, const std::string& fileName) const
{
    // An identifier is the service's and may hold anything.
    const auto folder = QCryptographicHash::hash(QByteArray::fromStdString(id), QCryptographicHash::Sha256).toHex();
    return m_folder->path() / folder.toStdString() / fileName;
}

std::optional<fs::path> AttachmentCache::find(const std::string& id, const std::string& fileName) const
{
    std::error_code failure;
    auto path = pathOf(id, fileName);
    return fs::is_regular_file(path, failure) ? std::optional{std::move(path)} : std::nullopt;
}

std::optional<fs::path> AttachmentCache::place(const std::string& id, const std::string& fileName) const
{
    if (!m_folder->stands())
        return std::nullopt;
    std::error_code failure;
    auto path = pathOf(id, fileName);
    fs::create_directories(path.parent_path(), failure);
    if (!failure)
        fs::permissions(path.parent_path(), fs::perms::owner_all, failure);
    return failure ? std::nullopt : std::optional{std::move(path)};
}

std::int64_t AttachmentCache::byteCount() const
{
    std::int64_t bytes = 0;
    std::error_code failure;
    for (const auto& each : fs::recursive_directory_iterator{m_folder->path(), failure}) {
        if (each.is_regular_file(failure))
            bytes += static_cast<std::int64_t>(each.file_size(failure));
    }
    return bytes;
}

void AttachmentCache::clear()
{
    std::error_code failure;
    for (const auto& each : fs::directory_iterator{m_folder->path(), failure})
        fs::remove_all(each.path(), failure);
}

void AttachmentCache::removeAbandoned()
{
    std::error_code failure;
    for (const auto& each : fs::directory_iterator{temporaryFiles(), failure}) {
        if (!each.path().filename().string().starts_with(namePrefix))
            continue;
        if (const Claim claim{each.path(), Claim::Patience::none}; claim.isHeld())
            fs::remove_all(each.path(), failure);
    }
}
