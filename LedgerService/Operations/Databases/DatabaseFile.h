#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

/// The database that keeps the books, looked at before it is opened. Where a server keeps it, the server sees to who
/// may read and change it.
namespace DatabaseFile {

/// Why a file of this name would not keep books: it would be gone with the process, or not be where it seems.
std::optional<std::string> whyNotName(const std::string& name);

/// Why a command that works on a file alone cannot take this database.
std::optional<std::string> whyNotFile(const std::string& name);

/// What receipts and seals of the database are kept beside: its file, or what was named for a database that a server
/// keeps; or in words that this has to be named.
std::expected<std::string, std::string> filesBeside(const std::string& name, const std::string& named);

/// Why there are no books to open: the name is none, or the file is missing or empty. It is left as it is.
std::optional<std::string> whyNotExisting(const std::string& name);

/// Why the file is not served: others than its owner and group may change the books.
std::optional<std::string> whyNotSafe(const std::string& name);

/// What an operator should know of a file that is served: who else may read or change it.
std::vector<std::string> warnings(const std::string& name);

}

}
