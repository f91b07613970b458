#include "LedgerService/Operations/Archives/Restore.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/DurableFile.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Operations/Archives/CompanyArrival.h"
#include "LedgerService/Operations/Archives/UnpackedArchive.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/SnapshotKeys.h"
#include "LedgerService/Storage/Rows/People/AccessChallengeRepository.h"
#include "LedgerService/Storage/Rows/People/MailRepository.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr std::array endings{"", "-wal", "-shm", "-journal", "-receipts", "-seals"};
constexpr std::array folders{"-receipts", "-seals"};

std::optional<std::string> whyNotEmpty(const std::string& file)
{
    for (const auto* ending : endings) {
        std::error_code ignored;
        if (fs::exists(file + ending, ignored))
            return fmt::format("{}{} is there already: books are restored to an empty place only", file, ending);
    }
    return std::nullopt;
}

/// What was written last is still beside the file where the disk had no room to bring it in.
void requireWhole(const std::string& file)
{
    if (fs::exists(file + "-wal"))
        throw std::runtime_error("the database cannot be brought up to date; the disk may be full");
}

void moveFolders(const std::string& from, const std::string& to)
{
    for (const auto* ending : folders) {
        if (fs::exists(from + ending))
            fs::rename(from + ending, to + ending);
    }
}

/// The database comes last: without it there is nothing to serve. Unpacking takes a while, in which others may have
/// founded books there; nothing of theirs is replaced.
void putInPlace(const std::string& from, const std::string& to)
{
    const Interruption::Shield whole;
    if (const auto refused = whyNotEmpty(to))
        throw std::runtime_error(*refused);
    moveFolders(from, to);
    if (const auto failure = DurableFile::giveNewName(from, to)) {
        std::error_code ignored;
        if (!fs::equivalent(from, to, ignored))
            moveFolders(to, from);
        throw std::system_error{failure, to};
    }
}

/// What was in force when the archive was made may have ended since, by a sign-out, a new password or a code that was
/// used; and a client that knows the books as they went on must not take these for the same.
void beginAnew(const std::string& file)
{
    Connection connection{file};
    Transaction transaction{connection, Transaction::Mode::writing};
    SessionRepository::removeAll(connection);
    AccessChallengeRepository::removeAll(connection);
    MailRepository::removeAll(connection);
    AuditRecord record;
    record.at = LedgerDay::stamp(std::chrono::system_clock::now());
    record.origin = AuditOrigin::operating;
    record.kind = AuditKind::booksRestored;
    for (const auto& companyID : CompanyRepository::allIDs(connection)) {
        SnapshotKeys::draw(connection, companyID);
        record.record = companyID;
        AuditTrail::append(connection, companyID, record);
    }
    transaction.commit();
}

/// Whoever was importing a company when the archive was made does so elsewhere.
void sweepArrivals(const std::string& file)
{
    const auto database = Database::openExisting(file);
    if (!database)
        throw std::runtime_error(database.error());
    CompanyArrival::sweepAll(**database);
}

}

std::optional<std::string> Restore::carryOut(const std::string& archive, const std::string& file)
{
    if (auto refused = DatabaseFile::whyNotName(file))
        return refused;
    if (auto refused = whyNotEmpty(file))
        return refused;
    try {
        const UnpackedArchive unpacked{archive, fs::absolute(file).parent_path()};
        sweepArrivals(unpacked.database());
        beginAnew(unpacked.database());
        requireWhole(unpacked.database());
        Interruption::heed();
        putInPlace(unpacked.database(), file);
        return std::nullopt;
    } catch (const std::exception& failure) {
        return fmt::format("cannot restore {}: {}", archive, DatabaseFailure::words(failure));
    }
}

}
