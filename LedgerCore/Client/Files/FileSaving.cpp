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
    // Without a buffer: of one that a filling disk takes only half of, a commit would tell that it went well.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return problemOf(file, path);
    if (readers == Readers::owner)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    while (!content.empty()) {
        const auto written = file.write(content.data(), static_cast<qint64>(content.size()));
        if (written <= 0) { // what fits is written first, and only the rest meets the full disk
            const auto problem = problemOf(file, path);
            file.cancelWriting();
            return problem;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    if (!file.commit())
        return problemOf(file, path);
    return std::nullopt;
}
