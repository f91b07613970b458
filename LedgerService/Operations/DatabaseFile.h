#pragma once

#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

/// The file that keeps the books, looked at before it is opened.
namespace DatabaseFile {

/// Why a file of this name would not keep books: it would be gone with the process, or not be where it seems.
std::optional<std::string> whyNotName(const std::string& name);

/// Why there are no books to open: the name is none, or the file is missing or empty. It is left as it is.
std::optional<std::string> whyNotExisting(const std::string& name);

/// Why the file is not served: others than its owner and group may change the books.
std::optional<std::string> whyNotSafe(const std::string& name);

/// What an operator should know of a file that is served: who else may read or change it.
std::vector<std::string> warnings(const std::string& name);

}

}
