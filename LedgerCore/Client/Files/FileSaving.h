#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

/// Why a file was not written.
enum class SavingProblem {
    folderMissing,
    notAllowed, // neither the folder nor the file that stands there may be written
    diskFull,
    other
};

/// Writing files whole or not at all. Blocks: for workers.
namespace FileSaving {

/// Who may read a file: whom the system lets by default, or nobody but its owner.
enum class Readers { usual, owner };

/// The file holds exactly `content`, durably, or what stood in its place before is untouched and the reason is given.
std::optional<SavingProblem> write(const std::filesystem::path& path, std::string_view content,
                                   Readers readers = Readers::usual);

}
