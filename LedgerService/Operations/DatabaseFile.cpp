#include "LedgerService/Operations/DatabaseFile.h"

#include <array>
#include <filesystem>

#include <fmt/core.h>

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

std::optional<std::string> DatabaseFile::whyNotName(const std::string& name)
{
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
    std::error_code failure;
    const auto size = fs::file_size(name, failure);
    if (failure)
        return fmt::format("cannot open {}: {}", name, failure.message());
    return size == 0 ? std::optional{name + " is empty"} : std::nullopt;
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
