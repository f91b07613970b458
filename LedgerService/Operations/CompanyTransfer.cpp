#include "LedgerService/Operations/CompanyTransfer.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Operations/Backup.h"
#include "LedgerService/Operations/DatabaseFile.h"
#include "LedgerService/Operations/UnpackedArchive.h"
#include "LedgerService/Operations/Verify.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

void requireSound(const Verify::Report& report)
{
    if (!report.problems.empty())
        throw std::runtime_error(fmt::format("it is not sound:\n{}", fmt::join(report.problems, "\n")));
}

/// Makes a database of this one company, as the transaction of `from` has it.
void single(Connection& from, const std::string& files, const std::string& companyID, const fs::path& copy)
{
    Connection connection{copy.string()};
    if (const auto refused = Migrations::apply(connection))
        throw std::runtime_error(*refused);
    {
        Transaction transaction{connection, Transaction::Mode::writing};
        CompanyRows::copy(from, connection, companyID);
        requireSound(Verify::company(connection, files, companyID));
        transaction.commit();
    }
    connection.execute("PRAGMA journal_mode = DELETE"); // one file, and nothing beside it
}

void tell(Connection& connection, const std::string& companyID, std::string_view kind)
{
    AuditRecord record;
    record.at = LedgerDay::stamp(std::chrono::system_clock::now());
    record.origin = AuditOrigin::operating;
    record.kind = kind;
    record.record = companyID;
    AuditTrail::append(connection, companyID, std::move(record));
}

/// The id of the one company that the database holds.
std::string onlyCompany(Connection& connection)
{
    auto ids = CompanyRepository::allIDs(connection);
    if (ids.size() != 1)
        throw std::runtime_error(
            fmt::format("it holds {} companies: an archive of one is made by 'companies export'", ids.size()));
    return std::move(ids.front());
}

void requireRoom(Connection& from, Connection& to, const std::string& companyID)
{
    if (CompanyRepository::find(to, companyID))
        throw std::runtime_error(fmt::format("the company {} is there already", companyID));
    const auto collisions = CompanyRows::collisions(from, to, companyID);
    if (!collisions.empty())
        throw std::runtime_error(
            fmt::format("people of the company collide with others:\n{}", fmt::join(collisions, "\n")));
}

/// Keeps the receipts of the company where the database's are, before any row names them.
void keepReceipts(Connection& from, const ReceiptFolder& there, const std::string& companyID, const ReceiptFolder& here)
{
    for (const auto& each : AttachmentRepository::all(from, companyID)) {
        if (!each.contentDigest)
            continue;
        std::string content;
        const auto read = there.read(*each.contentDigest, each.attachment.byteCount);
        for (auto block = read(); !block.empty(); block = read())
            content += block;
        if (const auto kept = here.keep(content); !kept)
            throw std::runtime_error(fmt::format("a receipt cannot be kept: {}", kept.error().message));
    }
}

CompanyTransfer::Imported import(const UnpackedArchive& archive, const std::string& database, const std::string& files)
{
    Connection from{archive.database(), Connection::Access::readOnly};
    Connection connection{database};
    const Transaction reading{from, Transaction::Mode::reading};
    CompanyTransfer::Imported imported{.companyID = onlyCompany(from), .name = {}};
    const auto& id = imported.companyID;
    requireRoom(from, connection, id); // before work is done for nothing
    keepReceipts(from, ReceiptFolder{archive.database()}, id, ReceiptFolder{files});
    Transaction transaction{connection, Transaction::Mode::writing};
    requireRoom(from, connection, id);
    CompanyRows::copy(from, connection, id);
    tell(connection, id, AuditKind::companyImported);
    const auto report = Verify::company(connection, files, id);
    requireSound(report);
    imported.name = CompanyRepository::find(connection, id)->name;
    imported.entries = report.entries;
    imported.receipts = report.receipts;
    transaction.commit();
    if (!connection.dialect().isFile())
        connection.execute("ANALYZE"); // so many rows at once change how they are best read
    return imported;
}

/// Packs the company as the transaction of the connection has it.
std::optional<std::string> packed(Connection& connection, const CompanyTransfer::Export& order,
                                  const std::string& files)
{
    if (!CompanyRepository::find(connection, order.companyID))
        return "there is no company with this id; 'companies list' shows them";
    return Backup::pack(
        {.files = files,
         .withSeals = false, // they tell of other companies
         .makeDatabase = [&](const fs::path& copy) { single(connection, files, order.companyID, copy); }},
        order.archive);
}

/// Nobody else writes between the state of the archive and the closing.
std::optional<std::string> packAndClose(Connection& connection, const CompanyTransfer::Export& order,
                                        const std::string& files)
{
    Transaction writing{connection, Transaction::Mode::writing};
    if (auto refused = packed(connection, order, files))
        return refused;
    CompanyRepository::writeApproval(connection, order.companyID, ApprovalStatus::rejected);
    tell(connection, order.companyID, AuditKind::companyExported);
    writing.commit();
    return std::nullopt;
}

std::optional<std::string> packAndTell(Connection& connection, const CompanyTransfer::Export& order,
                                       const std::string& files)
{
    {
        const Transaction reading{connection, Transaction::Mode::reading};
        if (auto refused = packed(connection, order, files))
            return refused;
    }
    Transaction writing{connection, Transaction::Mode::writing};
    tell(connection, order.companyID, AuditKind::companyExported);
    writing.commit();
    return std::nullopt;
}

}

std::optional<std::string> CompanyTransfer::carryOut(const Export& order)
{
    const auto files = DatabaseFile::filesBeside(order.database, order.files);
    if (!files)
        return files.error();
    const auto database = Database::openExisting(order.database);
    if (!database)
        return database.error();
    std::error_code ignored;
    const bool wasThere = fs::exists(order.archive, ignored);
    try {
        const auto loan = (*database)->borrow();
        if (!(*loan).dialect().isFile()) // packing receipts may take long, and the transaction is idle meanwhile
            (*loan).execute("SET idle_in_transaction_session_timeout = 0");
        const auto pack = order.afterwards == Afterwards::closed ? packAndClose : packAndTell;
        return pack(*loan, order, *files);
    } catch (const std::exception& failure) {
        if (!wasThere)
            fs::remove(order.archive, ignored); // else it would be taken for one of a company that is closed
        return fmt::format("cannot export the company: {}", DatabaseFailure::words(failure));
    }
}

std::expected<CompanyTransfer::Imported, std::string>
CompanyTransfer::importFrom(const std::string& archive, const std::string& database, const std::string& files)
{
    const auto beside = DatabaseFile::filesBeside(database, files);
    if (!beside)
        return std::unexpected(beside.error());
    if (const auto opened = Database::openExisting(database); !opened)
        return std::unexpected(opened.error());
    try {
        const UnpackedArchive unpacked{archive, fs::absolute(*beside).parent_path()};
        return import(unpacked, database, *beside);
    } catch (const std::exception& failure) {
        return std::unexpected(fmt::format("cannot import {}: {}", archive, DatabaseFailure::words(failure)));
    }
}

}
