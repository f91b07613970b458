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
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

void requireSound(const Verify::Report& report)
{
    if (!report.problems.empty())
        throw std::runtime_error(fmt::format("it is not sound:\n{}", fmt::join(report.problems, "\n")));
}

/// Makes a database of this one company.
void single(const CompanyTransfer::Export& order, const fs::path& copy)
{
    Connection connection{copy.string()};
    if (const auto refused = Migrations::apply(connection))
        throw std::runtime_error(*refused);
    connection.attach(order.file, CompanyRows::given);
    {
        Transaction transaction{connection, Transaction::Mode::writing};
        CompanyRows::copyGiven(connection, order.companyID);
        requireSound(Verify::company(connection, order.file, order.companyID));
        transaction.commit();
    }
    connection.execute("PRAGMA main.journal_mode = DELETE"); // one file, and nothing beside it
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

/// The id of the one company that the given database holds.
std::string onlyGiven(Connection& connection)
{
    auto ids = CompanyRows::givenIDs(connection);
    if (ids.size() != 1)
        throw std::runtime_error(
            fmt::format("it holds {} companies: an archive of one is made by 'companies export'", ids.size()));
    return std::move(ids.front());
}

void requireRoom(Connection& connection, const std::string& companyID)
{
    if (CompanyRepository::find(connection, companyID))
        throw std::runtime_error(fmt::format("the company {} is there already", companyID));
    const auto collisions = CompanyRows::collisions(connection, companyID);
    if (!collisions.empty())
        throw std::runtime_error(
            fmt::format("people of the company collide with others:\n{}", fmt::join(collisions, "\n")));
}

/// Keeps the receipts of the company beside the database, before any row names them.
void keepReceipts(const std::string& from, const std::string& companyID, const std::string& file)
{
    const ReceiptFolder there{from};
    const ReceiptFolder here{file};
    Connection connection{from, Connection::Access::readOnly};
    for (const auto& each : AttachmentRepository::all(connection, companyID)) {
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

CompanyTransfer::Imported import(const UnpackedArchive& archive, const std::string& file)
{
    Connection connection{file};
    connection.attach(archive.database(), CompanyRows::given);
    CompanyTransfer::Imported imported{.companyID = onlyGiven(connection), .name = {}};
    const auto& id = imported.companyID;
    requireRoom(connection, id); // before work is done for nothing
    keepReceipts(archive.database(), id, file);
    Transaction transaction{connection, Transaction::Mode::writing};
    requireRoom(connection, id);
    CompanyRows::copyGiven(connection, id);
    tell(connection, id, AuditKind::companyImported);
    const auto report = Verify::company(connection, file, id);
    requireSound(report);
    imported.name = CompanyRepository::find(connection, id)->name;
    imported.entries = report.entries;
    imported.receipts = report.receipts;
    transaction.commit();
    return imported;
}

}

std::optional<std::string> CompanyTransfer::carryOut(const Export& order)
{
    const auto database = Database::openExisting(order.file);
    if (!database)
        return database.error();
    const auto loan = (*database)->borrow();
    bool made = false;
    try {
        std::optional<Transaction> writing;
        if (order.afterwards == Afterwards::closed)
            writing.emplace(*loan, Transaction::Mode::writing); // nobody else writes until the company is closed
        if (!CompanyRepository::find(*loan, order.companyID))
            return "there is no company with this id; 'companies list' shows them";
        if (auto refused = Backup::pack({.file = order.file,
                                         .withSeals = false, // they tell of other companies
                                         .makeDatabase = [&](const fs::path& copy) { single(order, copy); }},
                                        order.archive))
            return refused;
        made = true;
        if (!writing)
            writing.emplace(*loan, Transaction::Mode::writing);
        else
            CompanyRepository::writeApproval(*loan, order.companyID, ApprovalStatus::rejected);
        tell(*loan, order.companyID, AuditKind::companyExported);
        writing->commit();
        return std::nullopt;
    } catch (const std::exception& failure) {
        std::error_code ignored;
        if (made)
            fs::remove(order.archive, ignored); // else it would be taken for one of a company that is closed
        return fmt::format("cannot export the company: {}", DatabaseFailure::words(failure));
    }
}

std::expected<CompanyTransfer::Imported, std::string> CompanyTransfer::importFrom(const std::string& archive,
                                                                                  const std::string& file)
{
    if (const auto database = Database::openExisting(file); !database)
        return std::unexpected(database.error());
    try {
        const UnpackedArchive unpacked{archive, fs::absolute(file).parent_path()};
        return import(unpacked, file);
    } catch (const std::exception& failure) {
        return std::unexpected(fmt::format("cannot import {}: {}", archive, DatabaseFailure::words(failure)));
    }
}

}
