#pragma once

#include <filesystem>
#include <functional>
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

/// What an archive is made of: a database with the receipts and seals that lie beside `files`.
struct Content {
    std::string files;
    bool withSeals = true;
    /// Makes the database of this name that goes into the archive. Throws when it cannot.
    std::function<void(const std::filesystem::path& copy)> makeDatabase;
};

/// Makes the new archive `to` of a database and the receipts that it names, safely on the disk when this returns, or
/// says in words why not. What was there before under that name stays.
std::optional<std::string> pack(const Content& content, const std::string& to);

/// Packs one consistent state of all that is kept under the database `file`; `files` is what receipts and seals lie
/// beside where that is not the database. The service may run.
std::optional<std::string> take(const std::string& file, const std::string& to, const std::string& files = {});

}

}
