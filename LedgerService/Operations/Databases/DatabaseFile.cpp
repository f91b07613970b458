#include "LedgerService/Operations/Databases/DatabaseFile.h"

#include <array>
#include <filesystem>

#include <fmt/core.h>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Dialect.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

/// The permissions of the file and of what stands beside it while it is open.
fs::perms permissionsOf(const std::string& name)
{
    auto all = fs::perms::none;
    for (const auto* ending : {"", "-wal", "-shm"}) {
        std::error_code failure;
        const auto status = fs::status(name + ending, failure);
        if (!failure && fs::exists(status))
            all |= status.permissions();
    }
    return all;
}

bool any(fs::perms permissions, fs::perms of)
{
    return (permissions & of) != fs::perms::none;
}

}

std::optional<std::string> DatabaseFile::whyNotFile(const std::string& name)
{
    if (DatabaseName::isAddress(name))
        return fmt::format("{} is kept by a server: this command works on files", DatabaseName::shown(name));
    return std::nullopt;
}

std::expected<std::string, std::string> DatabaseFile::filesBeside(const std::string& name, const std::string& named)
{
    if (!named.empty())
        return named;
    if (DatabaseName::isAddress(name))
        return std::unexpected("a server keeps the database: name with --files where receipts and seals are kept");
    return name;
}

std::optional<std::string> DatabaseFile::whyNotName(const std::string& name)
{
    if (DatabaseName::isAddress(name))
        return std::nullopt;
    if (name.empty() || name.find('"') != std::string::npos)
        return "the name of the database file is empty or holds a quotation mark";
    if (name.starts_with(':') || name.starts_with("file:"))
        return fmt::format("'{}' names no file: books are kept in a file of their own", name);
    return std::nullopt;
}

std::optional<std::string> DatabaseFile::whyNotExisting(const std::string& name)
{
    if (auto refused = whyNotName(name))
        return refused;
    return Database::whyNotExisting(name);
}

std::optional<std::string> DatabaseFile::whyNotSafe(const std::string& name)
{
    if (any(permissionsOf(name), fs::perms::others_write))
        return fmt::format("everyone on this machine may change {}: take that right away with chmod o-w", name);
    return std::nullopt;
}

std::vector<std::string> DatabaseFile::warnings(const std::string& name)
{
    std::vector<std::string> words;
    const auto permissions = permissionsOf(name);
    if (any(permissions, fs::perms::group_write))
        words.push_back(fmt::format("the group of {} may change the books (chmod g-w)", name));
    if (any(permissions, fs::perms::others_read | fs::perms::group_read))
        words.push_back(fmt::format("others than its owner may read {} (chmod go-r)", name));
    return words;
}

}
