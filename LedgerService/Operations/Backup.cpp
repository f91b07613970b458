#include "LedgerService/Operations/Backup.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <fmt/core.h>
#include <unistd.h>

#include "LedgerService/Operations/DatabaseFile.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

/// Has the disk keep the file, or the entries of the folder.
bool settle(const std::filesystem::path& path)
{
    const int opened = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0)
        return false;
    const bool kept = fsync(opened) == 0;
    close(opened);
    return kept;
}

/// Makes the file for its owner alone; fails when there is one.
bool reserve(const std::string& name)
{
    const int opened = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    return opened >= 0 && close(opened) == 0;
}

}

std::optional<std::string> Backup::take(const std::string& file, const std::string& to)
{
    if (auto refused = DatabaseFile::whyNotExisting(file))
        return refused;
    if (auto refused = DatabaseFile::whyNotName(to))
        return refused;
    if (!reserve(to))
        return fmt::format("cannot make {}: {}", to, std::strerror(errno));
    try {
        Connection connection{file, Connection::Access::readOnly};
        Query{connection, "VACUUM INTO :to"}.bind("to", to).run();
        const auto folder = std::filesystem::absolute(to).parent_path();
        if (settle(to) && settle(folder))
            return std::nullopt;
        return fmt::format("the disk does not keep {}: {}", to, std::strerror(errno));
    } catch (const std::exception& failure) {
        std::error_code ignored;
        std::filesystem::remove(to, ignored); // half a copy is none
        return fmt::format("cannot copy {}: {}", file, DatabaseFailure::words(failure));
    }
}

}
