#include "LedgerService/Operations/Archives/CompanyTransfer.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/ArrivingCompany.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Log.h"
#include "LedgerService/Operations/Archives/Backup.h"
#include "LedgerService/Operations/Archives/UnpackedArchive.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Operations/Databases/Verify.h"
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
void single(Connection& from, const std::string& files, const fs::path& copy, const std::string& companyID,
            const std::optional<std::string>& approvalStatus)
{
    Connection connection{copy.string()};
    if (const auto refused = Migrations::apply(connection))
        throw std::runtime_error(*refused);
    {
        Transaction transaction{connection, Transaction::Mode::writing};
        CompanyRows::copy(from, connection, companyID, {.between = Interruption::heed});
        CompanyRepository::writeApproval(connection, companyID, approvalStatus);
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

std::optional<std::string> whyNotThere(Connection& connection, const std::string& companyID)
{
    const auto company = CompanyRepository::find(connection, companyID);
    if (!company)
        return "there is no company with this id; 'companies list' shows them";
    return ArrivingCompany::is(company->approvalStatus) ? std::optional{"the company is being imported"} : std::nullopt;
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
        Interruption::heed();
        std::string content;
        const auto read = there.read(*each.contentDigest, each.attachment.byteCount);
        for (auto block = read(); !block.empty(); block = read())
            content += block;
        if (const auto kept = here.keep(content); !kept)
            throw std::runtime_error(fmt::format("a receipt cannot be kept: {}", kept.error().message));
    }
}

/// The company as it is now, found sound without holding anybody up.
Verify::Report verified(Database& database, const std::string& files, const std::string& companyID)
{
    const auto loan = database.borrow();
    if (!(*loan).dialect().isFile())
        (*loan).execute("SET idle_in_transaction_session_timeout = 0"); // the receipts are read without a question
    const Transaction reading{*loan, Transaction::Mode::reading};
    auto report = Verify::company(*loan, files, companyID);
    requireSound(report);
    return report;
}

CompanyTransfer::Imported import(const UnpackedArchive& archive, Database& database, const std::string& files,
                                 const CompanyArrival::Pace& pace)
{
    Connection from{archive.database(), Connection::Access::readOnly};
    const Transaction reading{from, Transaction::Mode::reading};
    const auto id = onlyCompany(from);
    const auto company = CompanyRepository::find(from, id).value_or(Company{});
    const auto mayCome = [&](Connection& connection) { requireRoom(from, connection, id); };
    CompanyArrival arrival{database, id, pace};
    const auto loan = database.borrow();
    mayCome(*loan); // before work is done for nothing
    keepReceipts(from, ReceiptFolder{archive.database()}, id, ReceiptFolder{files});
    arrival.copy(from, mayCome);
    const auto report = verified(database, files, id);
    arrival.open(company.approvalStatus,
                 [&](Connection& connection) { tell(connection, id, AuditKind::companyImported); });
    if (!(*loan).dialect().isFile())
        (*loan).execute("ANALYZE"); // so many rows at once change how they are best read
    return {.companyID = id, .name = company.name, .entries = report.entries, .receipts = report.receipts};
}

/// Packs the company as the transaction of the connection has it, with this status.
std::optional<std::string> packed(Connection& connection, const CompanyTransfer::Export& order,
                                  const std::string& files, const std::optional<std::string>& approvalStatus)
{
    return Backup::pack(
        {.files = files,
         .withSeals = false, // they tell of other companies
         .makeDatabase =
             [&](const fs::path& copy) { single(connection, files, copy, order.companyID, approvalStatus); }},
        order.archive);
}

/// A company that nobody gets into, unless this ends before it is to stay closed.
class Closing {
public:
    Closing(Database& database, Connection& connection, const std::string& companyID)
        : m_database(database), m_companyID(companyID)
    {
        Transaction writing{connection, Transaction::Mode::writing};
        const auto company = CompanyRepository::find(connection, companyID);
        m_status = company ? company->approvalStatus : std::nullopt;
        CompanyRepository::writeApproval(connection, companyID, std::string{ApprovalStatus::rejected});
        writing.commit();
    }
    ~Closing()
    {
        if (m_stays)
            return;
        try {
            const Interruption::Shield tidying;
            const auto loan = m_database.borrow(); // the connection may be what has failed
            Transaction writing{*loan, Transaction::Mode::writing};
            CompanyRepository::writeApproval(*loan, m_companyID, m_status);
            writing.commit();
        } catch (const std::exception& failure) {
            Log::failure("(export)", fmt::format("the company stays closed: {}", DatabaseFailure::words(failure)));
        }
    }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;

    /// What the company's state was before.
    [[nodiscard]] const std::optional<std::string>& status() const { return m_status; }
    void stay() { m_stays = true; }

private:
    Database& m_database;
    std::string m_companyID;
    std::optional<std::string> m_status;
    bool m_stays = false;
};

/// Nobody writes to the company from its closing on, so that it is read like any other.
std::optional<std::string> packAndClose(Database& database, Connection& connection,
                                        const CompanyTransfer::Export& order, const std::string& files)
{
    Closing closing{database, connection, order.companyID};
    {
        const Transaction reading{connection, Transaction::Mode::reading};
        if (auto refused = packed(connection, order, files, closing.status()))
            return refused;
    }
    const Interruption::Shield last; // the archive is there
    Transaction writing{connection, Transaction::Mode::writing};
    tell(connection, order.companyID, AuditKind::companyExported);
    writing.commit();
    closing.stay();
    return std::nullopt;
}

std::optional<std::string> packAndTell(Connection& connection, const CompanyTransfer::Export& order,
                                       const std::string& files)
{
    {
        const Transaction reading{connection, Transaction::Mode::reading};
        const auto company = CompanyRepository::find(connection, order.companyID).value_or(Company{});
        if (auto refused = packed(connection, order, files, company.approvalStatus))
            return refused;
    }
    const Interruption::Shield last; // the archive is there
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
        if (auto refused = whyNotThere(*loan, order.companyID))
            return refused;
        return order.afterwards == Afterwards::closed ? packAndClose(**database, *loan, order, *files)
                                                      : packAndTell(*loan, order, *files);
    } catch (const std::exception& failure) {
        if (!wasThere)
            fs::remove(order.archive, ignored); // else it would be taken for one of a company that is closed
        return fmt::format("cannot export the company: {}", DatabaseFailure::words(failure));
    }
}

std::expected<CompanyTransfer::Imported, std::string> CompanyTransfer::importFrom(const std::string& archive,
                                                                                  const std::string& database,
                                                                                  const std::string& files,
                                                                                  const CompanyArrival::Pace& pace)
{
    const auto beside = DatabaseFile::filesBeside(database, files);
    if (!beside)
        return std::unexpected(beside.error());
    const auto opened = Database::openExisting(database);
    if (!opened)
        return std::unexpected(opened.error());
    try {
        const UnpackedArchive unpacked{archive, fs::absolute(*beside).parent_path()};
        return import(unpacked, **opened, *beside, pace);
    } catch (const std::exception& failure) {
        return std::unexpected(fmt::format("cannot import {}: {}", archive, DatabaseFailure::words(failure)));
    }
}

}
