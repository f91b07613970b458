#include "LedgerService/Operations/People/PeopleCommands.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "LedgerService/Interruption.h"
#include "LedgerService/Operations/Archives/CompanyTransfer.h"
#include "LedgerService/Operations/Databases/DatabaseOption.h"
#include "LedgerService/Operations/People/CreateCompany.h"
#include "LedgerService/Operations/People/ManagePeople.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Dialect.h"

namespace LedgerService {

namespace {

int fail(const std::string& words)
{
    fmt::print(stderr, "tallyfold-service: {}\n", words);
    return 1;
}

/// Runs the work on the database, and says that it was done.
template <class Change>
int changed(const std::string& file, const Change& change, std::string_view done)
{
    const auto database = Database::openExisting(file);
    if (!database)
        return fail(database.error());
    const auto loan = (*database)->borrow();
    if (const ManagePeople::Refused refused = change(*loan))
        return fail(*refused);
    fmt::print("{}\n", done);
    return 0;
}

int listed(const std::string& file, std::vector<std::string> (*list)(Connection&))
{
    const auto database = Database::openExisting(file);
    if (!database)
        return fail(database.error());
    const auto loan = (*database)->borrow();
    for (const auto& line : list(*loan))
        fmt::print("{}\n", line);
    return 0;
}

int reset(const std::string& file, const std::string& email, bool setsPassword)
{
    std::optional<std::string> password;
    if (setsPassword) {
        auto read = CreateCompany::readPassword();
        if (!read)
            return fail(read.error());
        password = *std::move(read);
    }
    return changed(
        file, [&](Connection& connection) { return ManagePeople::reset(connection, email, password); },
        setsPassword ? "The password is set; all sign-ins have ended."
                     : "All sign-ins have ended; a new password is set by mail, from the sign-in screen.");
}

}

PeopleCommands::PeopleCommands(CLI::App& app)
{
    declareCompanies(app);
    declareUsers(app);
}

std::optional<int> PeopleCommands::run() const
{
    for (const auto& [command, work] : m_commands) {
        if (command->parsed())
            return work(*this);
    }
    return std::nullopt;
}

CLI::App& PeopleCommands::declare(CLI::App& parent, const char* name, const char* description, Work work)
{
    auto& command = *parent.add_subcommand(name, description);
    DatabaseOption::addTo(command, m_file, DatabaseOption::Takes::anyDatabase);
    m_commands.emplace_back(&command, std::move(work));
    return command;
}

void PeopleCommands::declareCompanies(CLI::App& app)
{
    auto& companies = *app.add_subcommand("companies", "Look at companies and decide on applications");
    companies.require_subcommand(1);
    declare(companies, "list", "Each company with its id, state, day of founding, name and owners",
            [](const PeopleCommands& given) { return listed(given.m_file, ManagePeople::companies); });
    auto& approve = declare(companies, "approve", "Open a company to its members", [](const PeopleCommands& given) {
        return changed(
            given.m_file, [&](Connection& connection) { return ManagePeople::approve(connection, given.m_company); },
            "The company is approved.");
    });
    auto& reject = declare(companies, "reject", "Keep a company's members out of it", [](const PeopleCommands& given) {
        return changed(
            given.m_file, [&](Connection& connection) { return ManagePeople::reject(connection, given.m_company); },
            "The company is rejected.");
    });
    auto& exporting = declare(companies, "export", "Pack one company with all that belongs to it into a new archive",
                              [](const PeopleCommands& given) { return given.exportCompany(); });
    exporting.add_option("--to", m_archive, "The archive to make")->required()->type_name("FILE");
    exporting.add_flag("--close", m_closes, "Keep everybody out of the company from then on: it moves elsewhere");
    auto& importing = declare(companies, "import", "Verify an archive of one company and add the company",
                              [](const PeopleCommands& given) { return given.importCompany(); });
    for (auto* const each : {&exporting, &importing})
        DatabaseOption::addFiles(*each, m_files);
    importing.add_option("--from", m_archive, "The archive")->required()->type_name("FILE");
    auto& zone = declare(companies, "time-zone", "Have a company keep its books by the days of a time zone",
                         [](const PeopleCommands& given) {
                             return changed(
                                 given.m_file,
                                 [&](Connection& connection) {
                                     return ManagePeople::setTimeZone(connection, given.m_company, given.m_timeZone);
                                 },
                                 "The company keeps its books by the days of this zone.");
                         });
    zone.add_option("--time-zone", m_timeZone, "Time zone whose days the books are kept by, such as Asia/Jakarta")
        ->required()
        ->type_name("NAME");
    for (auto* const each : {&approve, &reject, &exporting, &zone})
        each->add_option("--id", m_company, "The company's id")->required()->type_name("ID");
}

int PeopleCommands::exportCompany() const
{
    using CompanyTransfer::Afterwards;
    Interruption::watch();
    if (const auto refused =
            CompanyTransfer::carryOut({.database = m_file,
                                       .files = m_files,
                                       .companyID = m_company,
                                       .archive = m_archive,
                                       .afterwards = m_closes ? Afterwards::closed : Afterwards::open}))
        return fail(*refused);
    fmt::print("{} holds the company {}{}.\n", m_archive, m_company, m_closes ? ", which is closed here" : "");
    return 0;
}

int PeopleCommands::importCompany() const
{
    Interruption::watch();
    const auto imported = CompanyTransfer::importFrom(m_archive, m_file, m_files);
    if (!imported)
        return fail(imported.error());
    fmt::print("{} has the company {}, '{}', with {} entries and {} receipts; nothing is wrong with it.\n",
               DatabaseName::shown(m_file), imported->companyID, imported->name, imported->entries, imported->receipts);
    return 0;
}

void PeopleCommands::declareUsers(CLI::App& app)
{
    auto& users = *app.add_subcommand("users", "Look at people, reset their passwords, keep them out");
    users.require_subcommand(1);
    declare(users, "list", "Each person with the address, state, day of registration and name",
            [](const PeopleCommands& given) { return listed(given.m_file, ManagePeople::users); });
    auto& resetting =
        declare(users, "reset", "End a person's password and all sign-ins",
                [](const PeopleCommands& given) { return reset(given.m_file, given.m_email, given.m_setsPassword); });
    resetting.add_flag("--set-password", m_setsPassword,
                       "Set a new password: asks for it, or reads it as one line from standard input");
    auto& deactivate =
        declare(users, "deactivate", "Keep a person out of all companies and end all sign-ins",
                [](const PeopleCommands& given) {
                    return changed(
                        given.m_file,
                        [&](Connection& connection) { return ManagePeople::deactivate(connection, given.m_email); },
                        "The person is deactivated.");
                });
    auto& reactivate =
        declare(users, "reactivate", "Let a deactivated person in again", [](const PeopleCommands& given) {
            return changed(
                given.m_file,
                [&](Connection& connection) { return ManagePeople::reactivate(connection, given.m_email); },
                "The person may sign in again.");
        });
    for (auto* const each : {&resetting, &deactivate, &reactivate})
        each->add_option("--email", m_email, "The person's address")->required()->type_name("EMAIL");
}

}
