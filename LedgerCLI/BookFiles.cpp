#include "LedgerCLI/BookFiles.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include <fmt/core.h>
#include <unistd.h>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCore/Domain/CsvDocument.h"
#include "LedgerCore/Domain/Json.h"

namespace {

constexpr std::string_view standardStream = "-";

std::string allOf(std::istream& input)
{
    return {std::istreambuf_iterator<char>{input}, {}};
}

/// The bytes of a file, or of a pipe by its name; nothing when it cannot be opened or read.
std::optional<std::string> contentOf(const std::string& path)
{
    std::error_code unknown;
    const auto size = std::filesystem::is_regular_file(path, unknown) ? std::filesystem::file_size(path, unknown) : 0;
    std::ifstream input{path, std::ios::binary};
    if (!input || std::filesystem::is_directory(path, unknown))
        return std::nullopt;
    std::string content;
    content.reserve(size + Json::padding);
    content.resize_and_overwrite(size, [&](char* bytes, std::size_t) { // what is known to be there is read at once
        input.read(bytes, static_cast<std::streamsize>(size));
        return static_cast<std::size_t>(input.gcount());
    });
    if (!input)
        return std::nullopt;
    content += allOf(input);
    return content;
}

bool writeTo(const std::filesystem::path& path, std::string_view content)
{
    std::ofstream output{path, std::ios::binary | std::ios::trunc};
    output.write(content.data(), static_cast<std::streamsize>(content.size()));
    output.close();
    return output.good();
}

/// Takes the place of an ordinary file in one step, with the rights that it had.
bool replaceFile(const std::filesystem::path& path, std::filesystem::file_status old, std::string_view content)
{
    auto draft = path;
    draft += fmt::format(".{}.part", getpid());
    std::error_code failed;
    bool written = writeTo(draft, content);
    if (written && std::filesystem::exists(old))
        std::filesystem::permissions(draft, old.permissions(), failed);
    if (written && !failed)
        std::filesystem::rename(draft, path, failed);
    if (written && !failed)
        return true;
    std::filesystem::remove(draft, failed);
    return false;
}

/// A link is followed. What is no ordinary file, such as a pipe or a device, is written into and never replaced.
bool put(const std::filesystem::path& path, std::string_view content)
{
    std::error_code unknown;
    const auto old = std::filesystem::status(path, unknown);
    const bool isLink = std::filesystem::is_symlink(path, unknown);
    if (std::filesystem::is_regular_file(old))
        return replaceFile(isLink ? std::filesystem::canonical(path, unknown) : path, old, content);
    return isLink || std::filesystem::exists(old) ? writeTo(path, content) : replaceFile(path, old, content);
}

}

std::expected<std::string, CommandFailure> BookFiles::read(const std::string& path, std::string_view locale)
{
    if (path == standardStream)
        return allOf(std::cin);
    if (auto content = contentOf(path))
        return *std::move(content);
    return std::unexpected(CommandFailure{ExitCode::file, CommandWords::filled("unreadable", locale, {path})});
}

std::expected<LedgerSnapshot, CommandFailure> BookFiles::readSnapshot(const std::string& path, std::string_view locale)
{
    auto content = read(path, locale);
    if (!content)
        return std::unexpected(content.error());
    if (content->starts_with(CsvDocument::byteOrderMark)) // some editors put one in front
        content->erase(0, CsvDocument::byteOrderMark.size());
    auto snapshot = Json::consume<LedgerSnapshot>(*std::move(content));
    if (!snapshot)
        return std::unexpected(CommandFailure{ExitCode::snapshot, CommandWords::filled("noSnapshot", locale, {path})});
    return *std::move(snapshot);
}

CommandResult BookFiles::write(const std::string& path, std::string content, std::string_view locale)
{
    if (path == standardStream)
        return CommandAnswer{std::move(content)};
    if (!put(path, content))
        return std::unexpected(CommandFailure{ExitCode::file, std::string{CommandWords::text("unwritable", locale)}});
    return CommandAnswer{CommandWords::filled("written", locale, {path}) + "\n"};
}
