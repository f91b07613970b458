#include "LedgerService/Operations/Archives/Backup.h"

#include <chrono>
#include <filesystem>
#include <set>
#include <stdexcept>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Audit/AuditSeals.h"
#include "LedgerService/DurableFile.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Operations/Archives/Archive.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Random.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr auto selectDigests = R"sql(
    SELECT DISTINCT content_digest FROM attachments WHERE content_digest IS NOT NULL
)sql";

/// Files that are needed for a while; gone with their object.
class Passing {
public:
    explicit Passing(fs::path path) : m_path(std::move(path)) {}
    ~Passing()
    {
        std::error_code ignored;
        for (const auto* ending : {"", "-journal", "-wal", "-shm"}) // what a database that was being made had beside it
            fs::remove(m_path.string() + ending, ignored);
    }
    Passing(const Passing&) = delete;
    Passing& operator=(const Passing&) = delete;
    [[nodiscard]] const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

std::set<std::string> digestsIn(const fs::path& copy)
{
    std::set<std::string> digests;
    Connection connection{copy.string(), Connection::Access::frozen};
    std::string digest;
    Query query{connection, selectDigests};
    query.into(digest);
    while (query.next())
        digests.insert(digest);
    return digests;
}

/// The seals come first: the trail in the database has at least come as far as they say. Then the database, and then
/// the receipts that it names, whose files never change.
void fill(ArchiveWriter& archive, const Backup::Content& content, const fs::path& copy)
{
    Backup::Manifest manifest;
    manifest.taken = LedgerDay::stamp(std::chrono::system_clock::now());
    const auto add = [&](const std::string& name, const fs::path& source) {
        manifest.digests.emplace(name, archive.addFile(name, source));
    };
    const AuditSeals seals{content.files};
    if (content.withSeals) {
        for (const auto& name : seals.names())
            add(std::string{Backup::sealsFolder} + name, seals.path() / name);
    }
    content.makeDatabase(copy);
    add(std::string{Backup::databaseName}, copy);
    const ReceiptFolder receipts{content.files};
    for (const auto& digest : digestsIn(copy)) {
        const auto name = std::string{Backup::receiptsFolder} + digest;
        add(name, receipts.fileOf(digest));
        if (manifest.digests.at(name) != digest)
            throw std::runtime_error(fmt::format("the receipt file {} is not what was stored", digest));
    }
    archive.add(Backup::manifestName, Json::encode(manifest));
    archive.finish();
}

}

std::optional<std::string> Backup::take(const std::string& file, const std::string& to, const std::string& files)
{
    if (auto refused = DatabaseFile::whyNotFile(file))
        return refused;
    if (auto refused = DatabaseFile::whyNotExisting(file))
        return refused;
    return pack({.files = files.empty() ? file : files,
                 .makeDatabase =
                     [&](const fs::path& copy) {
                         Connection connection{file, Connection::Access::readOnly};
                         Query{connection, "VACUUM INTO :to"}.bind("to", copy.string()).run();
                     }},
                to);
}

std::optional<std::string> Backup::pack(const Content& content, const std::string& to)
{
    if (auto refused = DatabaseFile::whyNotName(to))
        return refused;
    std::error_code ignored;
    if (fs::exists(to, ignored))
        return fmt::format("cannot make {}: there is such a file already", to);
    try {
        const auto folder = fs::absolute(to).parent_path();
        DurableFile::sweepUnfinished(folder);
        const Passing made{DurableFile::unfinishedIn(folder)};
        const Passing copy{DurableFile::unfinishedIn(folder)};
        ArchiveWriter archive{made.path()};
        fill(archive, content, copy.path());
        Interruption::heed();
        if (const auto failure = DurableFile::giveNewName(made.path(), to))
            return fmt::format("cannot make {}: {}", to, failure.message());
        return std::nullopt;
    } catch (const std::exception& failure) {
        return fmt::format("cannot make {}: {}", to, DatabaseFailure::words(failure));
    }
}

}
