#pragma once

#include <deque>
#include <expected>
#include <string>
#include <string_view>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerCLI {

/// What the program reads and writes. "-" stands for standard input or output.
namespace BookFiles {

/// The whole of a file, a pipe or standard input.
std::expected<std::string, CommandFailure> read(const std::string& path, std::string_view locale);

/// The same of a snapshot file, without a byte-order mark.
std::expected<std::string, CommandFailure> snapshotText(const std::string& path, std::string_view locale);

CommandFailure noSnapshot(const std::string& path, std::string_view locale);

/// The part of a snapshot file that a command reads. Large books take long to take apart, and the process ends with
/// its command: they are left for the system to take.
template <class Books>
std::expected<const Books*, CommandFailure> readSnapshot(const std::string& path, std::string_view locale)
{
    auto content = snapshotText(path, locale);
    if (!content)
        return std::unexpected(content.error());
    static auto& texts = *new std::deque<std::string>;
    auto books = Json::view<Books>(texts.emplace_back(*std::move(content)));
    if (!books)
        return std::unexpected(noSnapshot(path, locale));
    static auto& kept = *new std::deque<Books>;
    return &kept.emplace_back(*std::move(books));
}

/// Writes `content` to the file, whole or not at all, and says so; for "-" the content is the answer.
CommandResult write(const std::string& path, std::string content, std::string_view locale);

}

}
