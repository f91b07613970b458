#include "LedgerCore/Client/Files/FileSaving.h"

#include <QSaveFile>

namespace {

SavingProblem problemOf(const QSaveFile& file, const std::filesystem::path& path)
{
    std::error_code unknown;
    if (file.error() == QFileDevice::ResourceError)
        return SavingProblem::diskFull;
    if (!std::filesystem::is_directory(path.parent_path(), unknown))
        return SavingProblem::folderMissing;
    const bool isClosed =
        file.error() == QFileDevice::OpenError || file.error() == QFileDevice::PermissionsError || !file.isOpen();
    return isClosed ? SavingProblem::notAllowed : SavingProblem::other;
}

}

std::optional<SavingProblem> FileSaving::write(const std::filesystem::path& path, std::string_view content,
                                               Readers readers)
{
    QSaveFile file{QString::fromStdString(path.string())};
    if (!file.open(QIODevice::WriteOnly))
        return problemOf(file, path);
    if (readers == Readers::owner)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const auto size = static_cast<qint64>(content.size());
    if (file.write(content.data(), size) != size) {
        const auto problem = problemOf(file, path);
        file.cancelWriting();
        return problem;
    }
    // What is found out only when the buffered rest is written tells no more than that it failed.
    if (!file.commit())
        return problemOf(file, path);
    return std::nullopt;
}
