#include "LedgerCLI/BookFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include <fmt/core.h>
#include <sys/mman.h>
#include <unistd.h>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"

namespace LedgerCLI {

namespace {

constexpr std::string_view standardStream = "-";

/// Makes room for a text and what its reader needs past its end. A large one gets large pages where the system has
/// them: handing out four kilobytes at a time would cost more than reading the file.
void makeRoom(std::string& text, std::size_t size)
{
    text.reserve(size + Json::padding);
#ifdef MADV_HUGEPAGE
    constexpr std::size_t pageSize = 4096;
    void* firstPage = text.data();
    auto room = text.capacity();
    if (std::align(pageSize, pageSize, firstPage, room))
        madvise(firstPage, room / pageSize * pageSize, MADV_HUGEPAGE); // a wish: refusal costs only time
#endif
}

/// All that there is to read, likely `expected` bytes; nothing when reading fails.
std::optional<std::string> allOf(std::istream& input, std::size_t expected)
{
    constexpr std::size_t leastRoom = std::size_t{1} << 16;
    std::string content;
    makeRoom(content, std::max(expected, leastRoom));
    while (input.peek() != std::istream::traits_type::eof()) { // asked first, lest a whole text move for no more bytes
        const auto before = content.size();
        if (before + Json::padding >= content.capacity())
            makeRoom(content, 2 * before);
        content.resize_and_overwrite(content.capacity() - Json::padding, [&](char* bytes, std::size_t room) {
            input.read(bytes + before, static_cast<std::streamsize>(room - before));
            return before + static_cast<std::size_t>(input.gcount());
        });
    }
    return input.bad() ? std::nullopt : std::optional{std::move(content)};
}

/// The bytes of a file, or of a pipe by its name; nothing when it cannot be opened or read.
std::optional<std::string> contentOf(const std::string& path)
{
    std::error_code unknown;
    const bool isFile = std::filesystem::is_regular_file(path, unknown);
    const auto size = isFile ? std::filesystem::file_size(path, unknown) : 0;
    std::ifstream input{path, std::ios::binary};
    if (!input || std::filesystem::is_directory(path, unknown))
        return std::nullopt;
    return allOf(input, unknown ? 0 : static_cast<std::size_t>(size));
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
    if (std::filesystem::exists(old) && access(path.c_str(), W_OK) != 0) // protected, though its folder is not
        return false;
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
    if (auto content = path == standardStream ? allOf(std::cin, 0) : contentOf(path))
        return *std::move(content);
    return std::unexpected(CommandFailure{ExitCode::file, CommandWords::filled("unreadable", locale, {path})});
}

std::expected<std::string, CommandFailure> BookFiles::snapshotText(const std::string& path, std::string_view locale)
{
    auto content = read(path, locale);
    if (content && content->starts_with(CsvDocument::byteOrderMark)) // some editors put one in front
        content->erase(0, CsvDocument::byteOrderMark.size());
    return content;
}

CommandFailure BookFiles::noSnapshot(const std::string& path, std::string_view locale)
{
    return {ExitCode::snapshot, CommandWords::filled("noSnapshot", locale, {path})};
}

CommandResult BookFiles::write(const std::string& path, std::string content, std::string_view locale)
{
    if (path == standardStream)
        return CommandAnswer{std::move(content)};
    if (!put(path, content))
        return std::unexpected(CommandFailure{ExitCode::file, std::string{CommandWords::text("unwritable", locale)}});
    return CommandAnswer{CommandWords::filled("written", locale, {path}) + "\n"};
}

}
