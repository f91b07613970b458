#include "LedgerService/Operations/Archives/UnpackedArchive.h"

#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/DurableFile.h"
#include "LedgerService/Operations/Archives/Archive.h"
#include "LedgerService/Operations/Archives/Backup.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t digestDigits = 64;
bool isDigest(std::string_view text)
{
    return text.size() == digestDigits && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Where a file of the archive belongs, beside the database; nothing for names that no backup gives.
std::optional<fs::path> placeOf(std::string_view name, const std::string& database)
{
    if (name == Backup::databaseName)
        return database;
    if (name.starts_with(Backup::receiptsFolder)) {
        const auto digest = name.substr(Backup::receiptsFolder.size());
        return isDigest(digest) ? std::optional{ReceiptFolder{database}.fileOf(digest)} : std::nullopt;
    }
    if (!name.starts_with(Backup::sealsFolder) || !name.ends_with(".seal"))
        return std::nullopt;
    const auto file = name.substr(Backup::sealsFolder.size());
    if (!LedgerDay::isValid(file.substr(0, file.size() - std::string_view{".seal"}.size())))
        return std::nullopt;
    return fs::path{database + "-seals"} / file;
}

std::string contentOf(ArchiveReader& archive)
{
    std::string content;
    archive.read([&](std::string_view block) { content += block; });
    return content;
}

/// Writes the next file and has the disk keep it.
void extract(ArchiveReader& archive, const fs::path& place)
{
    fs::create_directories(place.parent_path());
    {
        std::ofstream out{place, std::ios::binary};
        archive.read(
            [&](std::string_view block) { out.write(block.data(), static_cast<std::streamsize>(block.size())); });
        if (!out.flush())
            throw std::runtime_error(fmt::format("cannot write {}", place.string()));
    }
    if (const auto failure = DurableFile::settle(place))
        throw std::system_error{failure, place.string()};
}

/// Has the disk keep the names of everything in a folder.
void settleNames(const fs::path& folder)
{
    std::vector<fs::path> folders{folder};
    for (const auto& each : fs::recursive_directory_iterator{folder})
        if (each.is_directory())
            folders.push_back(each.path());
    for (const auto& each : folders)
        if (const auto failure = DurableFile::settle(each))
            throw std::system_error{failure, each.string()};
}

/// Takes all of the archive apart; gives what its last file says.
Backup::Manifest extractAll(const std::string& name, const std::string& database)
{
    std::optional<Backup::Manifest> manifest;
    ArchiveReader archive{name};
    while (const auto member = archive.next()) {
        if (member->name == Backup::manifestName) {
            if (auto read = Json::decode<Backup::Manifest>(contentOf(archive)))
                manifest = *std::move(read);
            continue;
        }
        const auto place = placeOf(member->name, database);
        if (!place || manifest)
            throw std::runtime_error("it is no archive of this program");
        extract(archive, *place);
    }
    if (!manifest || manifest->format != Backup::Manifest{}.format)
        throw std::runtime_error("it is no whole archive of this program");
    return *std::move(manifest);
}

/// Every file that the manifest names is there as it was, and so is everything that it is about.
void check(const Backup::Manifest& manifest, const std::string& database)
{
    for (const auto& [name, digest] : manifest.digests) {
        const auto place = placeOf(name, database);
        if (!place || DurableFile::digestOf(*place) != digest)
            throw std::runtime_error(fmt::format("its file {} is damaged", name));
    }
    // An archive of an earlier program is brought up to date first: a service would do the same at its start.
    if (const auto opened = Database::openExisting(database); !opened)
        throw std::runtime_error(opened.error());
    const auto report = Verify::database(database);
    if (!report)
        throw std::runtime_error(report.error());
    if (!report->problems.empty())
        throw std::runtime_error(fmt::format("what it holds is not sound:\n{}", fmt::join(report->problems, "\n")));
}

}

UnpackedArchive::UnpackedArchive(const std::string& archive, const fs::path& beside)
    : m_path(DurableFile::unfinishedIn(beside))
{
    DurableFile::sweepUnfinished(beside);
    if (const auto failure = DurableFile::makeFolder(m_path))
        throw std::system_error{failure, "cannot make " + m_path.string()};
    try {
        const auto manifest = extractAll(archive, database());
        settleNames(m_path);
        check(manifest, database());
    } catch (...) {
        remove();
        throw;
    }
}

UnpackedArchive::~UnpackedArchive()
{
    remove();
}

void UnpackedArchive::remove() const
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

}
