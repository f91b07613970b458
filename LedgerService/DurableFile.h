#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace LedgerService {

/// Files that a loss of power neither takes away nor leaves half written. Nobody but their owner may read them.
namespace DurableFile {

/// Has the disk keep the content of the file, or the names in the folder.
std::error_code settle(const std::filesystem::path& path);

/// Makes the folder for its owner alone, if it is missing, and has the disk keep it. The folder above must be there.
std::error_code makeFolder(const std::filesystem::path& folder);

enum class Existing { replaced, kept };

/// Writes the content under the name: whole and on the disk when this returns without an error, else not at all.
/// `kept`: a file of that name stays as it is, which is `errc::file_exists`.
std::error_code write(const std::filesystem::path& name, std::string_view content,
                      Existing existing = Existing::replaced);

/// The name of a file or folder to be made here and then named otherwise.
std::filesystem::path unfinishedIn(const std::filesystem::path& folder);

/// Names a file that is on the disk otherwise, unless there is one of that name.
std::error_code giveNewName(const std::filesystem::path& made, const std::filesystem::path& name);

/// The digest of a file's content; empty when it cannot be read.
std::string digestOf(const std::filesystem::path& file);

/// Removes what processes that were ended while writing have left here, once it has been left alone for a day.
void sweepUnfinished(const std::filesystem::path& folder);

/// Whether it is what a process that was ended while writing has left.
bool isUnfinished(const std::filesystem::path& name);

}

}
