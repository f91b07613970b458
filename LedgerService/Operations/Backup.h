#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <boost/describe.hpp>

namespace LedgerService {

/// An archive of everything that a service keeps: the database, the files of receipts and the seals of the audit trail.
namespace Backup {

/// What the archive says of itself in its last file: one that was cut off has none.
struct Manifest {
    int format = 1;
    std::string taken;                                       // stamp
    std::map<std::string, std::string, std::less<>> digests; // by the names of the files in the archive
};
BOOST_DESCRIBE_STRUCT(Manifest, (), (format, taken, digests))

inline constexpr std::string_view manifestName = "manifest.json";
inline constexpr std::string_view databaseName = "books.sqlite";
inline constexpr std::string_view receiptsFolder = "receipts/";
inline constexpr std::string_view sealsFolder = "seals/";

/// Copies one consistent state of what is kept under the database `file` to the new archive `to`, safely on the disk
/// when this returns, or says in words why not. What was there before under that name stays. The service may run.
std::optional<std::string> take(const std::string& file, const std::string& to);

}

}
