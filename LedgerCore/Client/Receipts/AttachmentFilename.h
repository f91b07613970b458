#pragma once

#include <string>
#include <string_view>

class WordTable;

/// File names for receipts: what a person called the file, in a form that every system can store and no reader is
/// deceived by.
namespace AttachmentFilename {

/// The most bytes of a name, its ending included: what file systems take, with room for " (12)".
inline constexpr std::size_t maximumBytes = 200;

/// The last part of the path `name`, without control characters, marks that turn the direction of writing, and
/// characters that some file system refuses; with the ending that belongs to `mime`. A name of which nothing is left
/// becomes the word for a receipt in the language of `locale`. `name` is UTF-8; what is not is left out.
std::string safe(std::string_view name, std::string_view mime, std::string_view locale);

/// What a receipt without a name is called.
const WordTable& words();

}
