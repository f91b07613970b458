#include "LedgerCore/Client/Http/SessionHold.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// In the folder of this user's running programs, which only they can enter; empty where there is none.
QString privateFolder()
{
    const auto location = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (location.isEmpty())
        return {};
    const QDir runtime{location};
    auto folder = runtime.filePath(QStringLiteral("tallyfold"));
    runtime.mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

/// The file tells neither the token nor the address.
std::string fileFor(const std::string& address, const std::string& token)
{
    static const auto folder = privateFolder();
    if (folder.isEmpty())
        return {};
    const auto hash =
        QCryptographicHash::hash(QByteArray::fromStdString(address + '\n' + token), QCryptographicHash::Sha256);
    return QDir{folder}.filePath(QStringLiteral("session-") + QString::fromLatin1(hash.toHex())).toStdString();
}

/// The file, marked; -1 where that cannot be done. Whoever is the last to leave removes it, perhaps just now: a mark on
/// a file that is gone would be seen by nobody.
int marked(const std::string& file)
{
    constexpr int attempts = 8;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (descriptor < 0)
            return -1;
        struct stat found{};
        if (::flock(descriptor, LOCK_SH) == 0 && ::fstat(descriptor, &found) == 0 && found.st_nlink > 0)
            return descriptor;
        ::close(descriptor);
    }
    return -1;
}

}

SessionHold::SessionHold(const std::string& address, const std::string& token)
    : m_file{fileFor(address, token)}, m_descriptor{marked(m_file)}
{
}

SessionHold::~SessionHold()
{
    if (m_descriptor < 0)
        return;
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        ::unlink(m_file.c_str());
    ::close(m_descriptor);
}

bool SessionHold::isShared() const
{
    if (m_descriptor < 0)
        return false;
    const bool isShared = ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0;
    ::flock(m_descriptor, LOCK_SH); // a refused change of a lock may have cost the lock
    return isShared;
}
