#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/LedgerSnapshot.h"

/// What the program reads and writes. "-" stands for standard input or output.
namespace BookFiles {

std::expected<std::string, CommandFailure> read(const std::string& path, std::string_view locale);

std::expected<LedgerSnapshot, CommandFailure> readSnapshot(const std::string& path, std::string_view locale);

/// Writes `content` to the file, whole or not at all, and says so; for "-" the content is the answer.
CommandResult write(const std::string& path, std::string content, std::string_view locale);

}
