#include "LedgerService/Operations/Databases/Verify.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>

#include <fmt/core.h>

#include "LedgerService/Audit/AuditCheck.h"
#include "LedgerService/Audit/AuditSeals.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Operations/Databases/KeptRecords.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/ArrivalRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/Entries/FragmentUpkeep.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Schema/SchemaComparison.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

void addAttachments(Books& books, std::vector<StoredAttachment> stored)
{
    std::unordered_map<std::string_view, LedgerTransaction*> byID;
    for (auto& entry : books.entries)
        byID.emplace(entry.id, &entry);
    for (auto& each : stored) {
        if (each.attachment.transactionID) {
            if (const auto found = byID.find(*each.attachment.transactionID); found != byID.end())
                found->second->attachmentIDs.push_back(each.attachment.id);
        }
        books.attachments.push_back(std::move(each.attachment));
    }
}

Books read(Connection& connection, std::string_view companyID)
{
    Books books;
    books.members = MemberRepository::all(connection, companyID);
    books.accounts = AccountRepository::all(connection, companyID);
    books.categories = CategoryRepository::all(connection, companyID);
    books.entries = EntryRepository::all(connection, companyID);
    books.settings = CompanyRepository::settings(connection, companyID);
    books.capitalChanges = CapitalRepository::changes(connection, companyID);
    books.dividendChanges = DividendRepository::changes(connection, companyID);
    addAttachments(books, AttachmentRepository::all(connection, companyID));
    return books;
}

using Problems = std::vector<std::string>;

/// Where a check's failure would spoil the transaction that the others are made in, it is undone by itself.
class Separate {
public:
    explicit Separate(Connection& connection)
    {
        if (!connection.dialect().isFile())
            m_part.emplace(connection);
    }
    void end(bool failed)
    {
        if (m_part && failed)
            m_part->undo();
        else if (m_part)
            m_part->keep();
    }

private:
    std::optional<Savepoint> m_part;
};

/// Runs a check to its end, or says that it could not come to one.
void attempt(Connection& connection, Problems& problems, std::string_view what, const std::function<void()>& check)
{
    Separate separate{connection};
    try {
        Interruption::heed();
        check();
        separate.end(false);
    } catch (const std::exception& failure) {
        Interruption::heed(); // what it ended is not wrong
        problems.push_back(fmt::format("{}: cannot be checked: {}", what, DatabaseFailure::words(failure)));
        separate.end(true);
    }
}

/// Each statement gives a problem in words per row. These look at what only a file can have.
constexpr std::array fileChecks{
    R"sql(
    SELECT 'file: ' || integrity_check FROM pragma_integrity_check WHERE integrity_check <> 'ok')sql",
    R"sql(
    SELECT 'table ' || "table" || ': row ' || COALESCE(rowid, '') || ' refers to a missing row of ' || parent
    FROM pragma_foreign_key_check)sql",
    R"sql(
    SELECT 'company ' || company_id || ': change ' || sequence || ': moves ' || quote(amount_minor) FROM legs
    WHERE typeof(amount_minor) <> 'integer')sql",
    R"sql(
    SELECT 'company ' || company_id || ': account ' || account_id || ': holds ' || quote(amount_minor) FROM balances
    WHERE typeof(amount_minor) <> 'integer')sql",
};

constexpr std::array rowChecks{
    R"sql(
    SELECT 'company ' || e.company_id || ': entry ' || e.id || ': moves nothing' FROM entries e
    WHERE NOT EXISTS (SELECT 1 FROM legs l WHERE l.company_id = e.company_id AND l.sequence = e.sequence))sql",
    R"sql(
    SELECT 'company ' || l.company_id || ': change ' || l.sequence || ': movements without an entry' FROM legs l
    WHERE NOT EXISTS (SELECT 1 FROM entries e WHERE l.company_id = e.company_id AND l.sequence = e.sequence)
    GROUP BY l.company_id, l.sequence)sql",
    R"sql(
    SELECT 'company ' || c.id || ': its earliest day is not that of an entry' FROM companies c
    WHERE c.earliest_day IS DISTINCT FROM (SELECT MIN(date) FROM entries e WHERE e.company_id = c.id))sql",
    // A command that recorded an entry was carried out with it, by the member who recorded it.
    R"sql(
    SELECT 'company ' || c.company_id || ': command ' || c.idempotency_key || ': its outcome is not what it recorded'
    FROM commands c
    WHERE c.outcome LIKE 'entry:%' AND NOT EXISTS
        (SELECT 1 FROM entries e WHERE e.company_id = c.company_id AND e.id = substr(c.outcome, 7)
            AND e.member_id = c.member_id AND e.created_at = c.created_at))sql",
    R"sql(
    SELECT 'company ' || company_id || ': ' || COUNT(*) || ' commands have the outcome ' || outcome FROM commands
    WHERE outcome LIKE 'entry:%' GROUP BY company_id, outcome HAVING COUNT(*) > 1)sql",
    // Sent again, an entry whose command is lost would be recorded once more. A reversal never is; what capital and
    // dividends book belongs to their own commands, and what was there before the audit trail has none.
    R"sql(
    SELECT 'company ' || e.company_id || ': entry ' || e.id || ': no command has recorded it'
    FROM entries e JOIN companies c ON c.id = e.company_id
    WHERE e.sequence > c.audited_from AND e.reversal_of IS NULL AND e.capital_contribution_id IS NULL
        AND e.dividend_movement_id IS NULL AND (e.company_id || ' ' || e.id) NOT IN
            (SELECT company_id || ' ' || substr(outcome, 7) FROM commands WHERE outcome LIKE 'entry:%'))sql",
    R"sql(
    SELECT 'company ' || d.company_id || ': member ' || d.member_id || ': a draft of what is recorded'
    FROM entry_drafts d JOIN commands c ON c.company_id = d.company_id AND c.member_id = d.member_id
        AND c.idempotency_key = d.idempotency_key
    WHERE c.outcome LIKE 'entry:%')sql",
    // A person records an entry for one due day of a template.
    R"sql(
    SELECT 'company ' || company_id || ': entry ' || entry_id || ': stands for ' || COUNT(*) || ' due days'
    FROM template_days WHERE entry_id IS NOT NULL GROUP BY company_id, entry_id HAVING COUNT(*) > 1)sql",
    R"sql(
    SELECT 'company ' || d.company_id || ': template ' || d.template_id || ': ' || d.day || ' is settled by an entry '
        || 'that somebody else recorded'
    FROM template_days d JOIN entries e ON e.company_id = d.company_id AND e.id = d.entry_id
    WHERE e.member_id <> d.member_id)sql",
};

struct JsonPlace {
    std::string_view table;
    std::string_view column;
};

constexpr std::array jsonColumns{
    JsonPlace{"companies", "countries"},
    JsonPlace{"companies", "enabled_locales"},
    JsonPlace{"companies", "transaction_colors"},
    JsonPlace{"members", "account_ids"},
    JsonPlace{"members", "permissions"},
    JsonPlace{"members", "account_grants"},
    JsonPlace{"members", "selected_category_ids"},
    JsonPlace{"members", "transaction_colors"},
    JsonPlace{"accounts", "currencies"},
    JsonPlace{"categories", "names"},
    JsonPlace{"account_sets", "account_ids"},
    JsonPlace{"invitations", "account_ids"},
    JsonPlace{"invitations", "permissions"},
    JsonPlace{"invitations", "account_grants"},
    JsonPlace{"capital_baselines", "entries"},
    JsonPlace{"capital_ownership_versions", "entries"},
    JsonPlace{"dividend_batches", "lines"},
    JsonPlace{"entry_templates", "entry"},
    JsonPlace{"entry_templates", "recurrence"},
    JsonPlace{"entry_drafts", "entry"},
    JsonPlace{"entry_drafts", "sent"},
};

constexpr auto brokenJson = "SELECT 'table {0}: row ' || rowid || ': {1} is no JSON' FROM {0} "
                            "WHERE {1} IS NOT NULL AND NOT json_valid({1})";
/// Fails where there is such a text.
constexpr auto castJson = "SELECT '{0}' FROM {0} WHERE ({1}::json) IS NULL AND {1} IS NOT NULL";

void addRows(Connection& connection, Problems& problems, const std::string& statement)
{
    std::string words;
    Query query{connection, statement};
    query.into(words);
    while (query.next())
        problems.push_back(words);
}

void checkCompany(Connection& connection, const std::string& companyID, Verify::Report& report)
{
    const auto add = [&](const Problems& problems) {
        for (const auto& problem : problems)
            report.problems.push_back(fmt::format("company {}: {}", companyID, problem));
    };
    const auto what = fmt::format("company {}", companyID);
    attempt(connection, report.problems, what, [&] {
        const auto books = read(connection, companyID);
        report.entries += books.entries.size();
        add(BookInvariants::broken(books));
    });
    attempt(connection, report.problems, what, [&] { add(FragmentUpkeep::broken(connection, companyID)); });
    attempt(connection, report.problems, what, [&] { add(AuditCheck::brokenEntries(connection, companyID)); });
}

void checkReceipts(Connection& connection, const ReceiptFolder& folder, const std::string& companyID,
                   Verify::Report& report)
{
    if (!ReceiptSpace::isRight(connection, companyID))
        report.problems.push_back(
            fmt::format("company {}: its receipts have other bytes than were counted", companyID));
    for (const auto& each : AttachmentRepository::all(connection, companyID)) {
        if (!each.contentDigest)
            continue; // of a time when receipts had no files
        report.receipts += 1;
        if (const auto problem = folder.problemOf(*each.contentDigest, each.attachment.byteCount); !problem.empty())
            report.problems.push_back(
                fmt::format("company {}: receipt {}: {}", companyID, each.attachment.id, problem));
    }
}

void checkTrail(Connection& connection, const std::string& scope, Problems& problems)
{
    for (const auto& problem : AuditCheck::brokenChain(connection, scope))
        problems.push_back(fmt::format("company {}: {}", scope, problem));
}

void checkTrails(Connection& connection, const AuditSeals& seals, Problems& problems)
{
    for (const auto& scope : AuditTrail::scopes(connection))
        checkTrail(connection, scope, problems);
    for (auto& problem : seals.broken(connection))
        problems.push_back(std::move(problem));
}

/// The companies that are all there. Of one that is just arriving rows are still missing, which is no problem.
std::vector<std::string> wholeCompanies(Connection& connection, Verify::Report& report)
{
    std::vector<std::string> ids;
    attempt(connection, report.problems, "companies", [&] {
        ids = CompanyRepository::allIDs(connection);
        for (const auto& each : ArrivalRepository::all(connection)) {
            std::erase(ids, each.companyID);
            std::erase_if(report.problems, [about = fmt::format("company {}: ", each.companyID)](const auto& problem) {
                return problem.starts_with(about);
            });
        }
    });
    return ids;
}

std::optional<std::string> whyNotChecked(Connection& connection, const std::string& name)
{
    const auto version = Migrations::version(connection);
    if (!version)
        return fmt::format("{}: {}", DatabaseName::shown(name), version.error());
    if (*version > Migrations::newest())
        return fmt::format("{} has schema {}, this program knows schemas up to {}: use a newer program", name, *version,
                           Migrations::newest());
    if (*version < Migrations::newest())
        return fmt::format("{} has schema {}, this program checks schema {}: bring a copy up to date with "
                           "'tallyfold-service migrate', then verify that",
                           name, *version, Migrations::newest());
    return std::nullopt;
}

std::expected<Verify::Report, std::string> check(const std::string& name, const std::string& files,
                                                 Connection::Access access)
{
    Connection connection{name, access};
    if (auto refused = whyNotChecked(connection, name))
        return std::unexpected(*std::move(refused));
    return Verify::run(connection, files);
}

bool hasLog(const std::string& name)
{
    std::error_code ignored;
    return std::filesystem::exists(name + "-wal", ignored);
}

}

Verify::Report Verify::run(Connection& connection, const std::string& files)
{
    const Transaction transaction{connection, Transaction::Mode::reading};
    Report report;
    const bool isFile = connection.dialect().isFile();
    for (const auto* statement : isFile ? std::span<const char* const>{fileChecks} : std::span<const char* const>{})
        attempt(connection, report.problems, "rows", [&] { addRows(connection, report.problems, statement); });
    for (const auto* statement : rowChecks)
        attempt(connection, report.problems, "rows", [&] { addRows(connection, report.problems, statement); });
    attempt(connection, report.problems, "schema", [&] {
        for (auto& each : SchemaComparison::differences(connection))
            report.problems.push_back(std::move(each));
    });
    for (const auto& place : jsonColumns)
        attempt(connection, report.problems, fmt::format("table {}: {}", place.table, place.column), [&] {
            addRows(connection, report.problems,
                    fmt::format(fmt::runtime(isFile ? brokenJson : castJson), place.table, place.column));
        });
    attempt(connection, report.problems, "templates, drafts and invitations", [&] {
        for (auto& each : KeptRecords::broken(connection))
            report.problems.push_back(std::move(each));
    });
    const auto companyIDs = wholeCompanies(connection, report);
    attempt(connection, report.problems, "companies", [&] {
        for (const auto& companyID : companyIDs) {
            report.companies += 1;
            checkCompany(connection, companyID, report);
        }
    });
    attempt(connection, report.problems, "receipts", [&] {
        for (const auto& companyID : companyIDs)
            checkReceipts(connection, ReceiptFolder{files}, companyID, report);
    });
    attempt(connection, report.problems, "audit trail",
            [&] { checkTrails(connection, AuditSeals{files}, report.problems); });
    return report;
}

Verify::Report Verify::company(Connection& connection, const std::string& files, const std::string& companyID)
{
    Report report;
    report.companies = 1;
    checkCompany(connection, companyID, report);
    attempt(connection, report.problems, "receipts",
            [&] { checkReceipts(connection, ReceiptFolder{files}, companyID, report); });
    attempt(connection, report.problems, "audit trail", [&] { checkTrail(connection, companyID, report.problems); });
    return report;
}

std::expected<Verify::Report, std::string> Verify::database(const std::string& name, const std::string& files)
{
    if (auto refused = DatabaseFile::whyNotExisting(name))
        return std::unexpected(*std::move(refused));
    const auto beside = DatabaseFile::filesBeside(name, files);
    if (!beside)
        return std::unexpected(beside.error());
    try {
        if (DatabaseName::isAddress(name))
            return check(name, *beside, Connection::Access::readOnly);
        // Without a log beside it nobody has it open, and nothing needs to be made beside it to read it.
        if (!hasLog(name)) {
            auto report = check(name, *beside, Connection::Access::frozen);
            if (!hasLog(name))
                return report; // still nobody
        }
        return check(name, *beside, Connection::Access::readOnly);
    } catch (const std::exception& failure) {
        return std::unexpected(
            fmt::format("cannot read {}: {}", DatabaseName::shown(name), DatabaseFailure::words(failure)));
    }
}

}
