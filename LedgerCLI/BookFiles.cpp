#include "LedgerCLI/BookFiles.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "LedgerCLI/CommandWords.h"
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

bool replaceFile(const std::filesystem::path& path, std::string_view content)
{
    auto draft = path;
    draft += ".part";
    std::ofstream output{draft, std::ios::binary | std::ios::trunc};
    output.write(content.data(), static_cast<std::streamsize>(content.size()));
    output.close();
    std::error_code failed;
    if (output)
        std::filesystem::rename(draft, path, failed);
    if (output && !failed)
        return true;
    std::filesystem::remove(draft, failed);
    return false;
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
    auto snapshot = Json::consume<LedgerSnapshot>(*std::move(content));
    if (!snapshot)
        return std::unexpected(CommandFailure{ExitCode::snapshot, CommandWords::filled("noSnapshot", locale, {path})});
    return *std::move(snapshot);
}

CommandResult BookFiles::write(const std::string& path, std::string content, std::string_view locale)
{
    if (path == standardStream)
        return CommandAnswer{std::move(content)};
    if (!replaceFile(path, content))
        return std::unexpected(CommandFailure{ExitCode::file, std::string{CommandWords::text("unwritable", locale)}});
    return CommandAnswer{CommandWords::filled("written", locale, {path}) + "\n"};
}
