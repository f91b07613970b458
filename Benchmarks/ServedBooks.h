#pragma once

#include <cstddef>
#include <string>

/// The generated books as a company of the ledger service.
namespace ServedBooks {

inline constexpr auto email = "member0@harbour.example";
inline constexpr auto password = "measured in the open";

/// Makes a service's database with the books of this size, replacing the file. Throws when it cannot.
void write(const std::string& databaseFile, std::size_t entryCount);

}
