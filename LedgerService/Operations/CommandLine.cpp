#include "LedgerService/Operations/CommandLine.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>
#include <fmt/core.h>
#include <sys/stat.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Metrics.h"
#include "LedgerService/Operations/Archives/Backup.h"
#include "LedgerService/Operations/Archives/Restore.h"
#include "LedgerService/Operations/AuditCommand.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Operations/Databases/DatabaseOption.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Operations/EnvironmentOptions.h"
#include "LedgerService/Operations/People/CreateCompany.h"
#include "LedgerService/Operations/People/PeopleCommands.h"
#include "LedgerService/Operations/Serving/Serve.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Dialect.h"

namespace LedgerService {

namespace {

int fail(std::string_view words)
{
    fmt::print(stderr, "tallyfold-service: {}\n", words);
    return 1;
}

int verify(const std::string& name, const std::string& files)
{
    const auto checked = Verify::database(name, files);
    if (!checked)
        return fail(checked.error());
    const auto& report = *checked;
    for (const auto& problem : report.problems)
        fmt::print("{}\n", problem);
    fmt::print("companies: {}, entries: {}, receipts: {}, {}\n", report.companies, report.entries, report.receipts,
               report.problems.empty() ? "every balance equals its legs, nothing is wrong"
                                       : fmt::format("problems: {}", report.problems.size()));
    return report.problems.empty() ? 0 : 1;
}

/// A database that a server keeps may be empty before: its name is not mistyped, for it is there.
int migrate(const std::string& file)
{
    const auto database = DatabaseName::isAddress(file) ? Database::open(file) : Database::openExisting(file);
    if (!database)
        return fail(database.error());
    fmt::print("{} has schema {}.\n", DatabaseName::shown(file), Migrations::newest());
    return 0;
}

/// One consistent state of everything that is kept as a new archive, which nobody else may read.
int backup(const std::string& file, const std::string& files, const std::string& to)
{
    Interruption::watch();
    if (const auto refused = Backup::take(file, to, files))
        return fail(*refused);
    fmt::print("{} is a copy of {}.\n", to, file);
    return 0;
}

int restore(const std::string& archive, const std::string& file)
{
    Interruption::watch();
    if (const auto refused = Restore::carryOut(archive, file))
        return fail(*refused);
    fmt::print("{} holds what {} held; nothing is wrong with it.\n", file, archive);
    return 0;
}

int createCompany(const std::string& file, CreateCompany::Order order)
{
    auto password = CreateCompany::readPassword();
    if (!password)
        return fail(password.error());
    order.password = *std::move(password);
    if (const auto refused = DatabaseFile::whyNotName(file))
        return fail(*refused);
    const bool found = !DatabaseFile::whyNotExisting(file);
    const auto database = Database::open(file);
    if (!database)
        return fail(database.error());
    const auto loan = (*database)->borrow();
    const auto id = CreateCompany::carryOut(*loan, order);
    if (!id)
        return fail(id.error());
    if (!found)
        fmt::print("{} is new: it keeps the books of this company alone.\n", DatabaseName::shown(file));
    fmt::print("Company {} is ready; its owner signs in as {}.\n", *id, order.ownerEmail);
    return 0;
}

/// What the arguments say, by command.
struct Arguments {
    Serve::Options serving;
    std::string file; // or the address of a database
    std::string files;
    std::string to;
    std::string from;
    std::string companyID;
    AuditFilter filter;
    CreateCompany::Order order;
};

void declareMail(CLI::App& serve, Serve::Options& serving)
{
    serve.add_option("--mail-from", serving.mailFrom, "Address that the service's mail comes from")->type_name("EMAIL");
    auto* spool = serve.add_option("--mail-spool", serving.mailSpool,
                                   "Put mail as .eml files into this folder; without a mail server and on a loopback "
                                   "address, FILE.mail beside the database");
    spool->type_name("FOLDER");
    auto* server = serve.add_option("--smtp", serving.smtpServer,
                                    "Mail server: smtps://HOST, or smtp://HOST:PORT made secure by STARTTLS");
    server->type_name("URL")->excludes(spool);
    serve.add_option("--smtp-user", serving.smtpUser, "User at the mail server")->type_name("NAME")->needs(server);
    serve.add_option("--smtp-password-file", serving.smtpPasswordFile, "File whose first line is the user's password")
        ->type_name("FILE")
        ->needs(server);
    serve
        .add_option("--smtp-ca", serving.smtpAuthorities,
                    "File of certificates to trust the mail server by, instead of the system's")
        ->type_name("FILE")
        ->needs(server);
}

void declareReceipts(CLI::App& serve, Serve::Options& serving)
{
    const CLI::Range mebibytes{std::int64_t{1}, std::int64_t{1} << 40};
    serve.add_option("--receipt-space", serving.receiptSpace, "MiB of receipts that one company may keep")
        ->check(mebibytes)
        ->capture_default_str()
        ->type_name("MIB")
        ->option_text("MIB");
    serve
        .add_option("--demo-receipt-space", serving.demoReceiptSpace,
                    "MiB of receipts that one demonstration company may keep")
        ->check(mebibytes)
        ->capture_default_str()
        ->type_name("MIB")
        ->option_text("MIB");
}

void declareTls(CLI::App& serve, Serve::Options& serving)
{
    auto* certificate = serve.add_option("--tls-certificate", serving.tlsCertificate,
                                         "Speak TLS with the certificate in this PEM file, followed there by those "
                                         "that lead to its authority; SIGHUP has it read again");
    auto* key =
        serve.add_option("--tls-key", serving.tlsKey, "PEM file with the certificate's key, without a password");
    certificate->type_name("FILE")->needs(key);
    key->type_name("FILE")->needs(certificate);
}

CLI::App& declareServe(CLI::App& app, Arguments& into)
{
    auto& serve = *app.add_subcommand("serve", "Answer clients until told to end");
    auto& serving = into.serving;
    serve.add_option("--listen", serving.listen, "Numeric address and port; port 0 picks a free one")
        ->capture_default_str()
        ->type_name("ADDRESS:PORT");
    DatabaseOption::addTo(serve, serving.databaseFile, DatabaseOption::Takes::anyDatabase);
    DatabaseOption::addFiles(serve, serving.files);
    serve.add_flag("--create", serving.create,
                   "Begin new books when the file is missing or the server's database empty");
    serve.add_flag(
        "--behind-tls-proxy", serving.behindTlsProxy,
        "A proxy in front speaks TLS; needed on any address that is not loopback, unless the service speaks TLS "
        "itself");
    serve
        .add_option("--trusted-proxy", serving.trustedProxies,
                    "Address or network of a proxy in front, such as 10.0.0.0/8; several with commas between them, or "
                    "repeated. Without it whoever "
                    "connects counts as the proxy")
        ->type_name("NETWORK")
        ->delimiter(',')
        ->needs("--behind-tls-proxy");
    serve
        .add_option("--demo", serving.demonstration,
                    "Demonstration companies: 'shared', one for each language, on loopback addresses only and there "
                    "without this option too; 'private', one for each visitor for a day; 'off'")
        ->transform(
            CLI::CheckedTransformer(std::map<std::string, DemonstrationMode>{{"shared", DemonstrationMode::shared},
                                                                             {"private", DemonstrationMode::visitors},
                                                                             {"off", DemonstrationMode::off}}))
        ->type_name("shared|private|off")
        ->option_text("shared|private|off");
    serve
        .add_option("--metrics", serving.metrics, "Numeric address and port where figures are collected; none without")
        ->type_name("ADDRESS:PORT");
    serve
        .add_option("--registration", serving.registration,
                    "Who may open a company: 'review', whoever applies and is approved; 'open', whoever applies; "
                    "'closed', nobody")
        ->transform(
            CLI::CheckedTransformer(std::map<std::string, RegistrationMode>{{"review", RegistrationMode::review},
                                                                            {"open", RegistrationMode::open},
                                                                            {"closed", RegistrationMode::closed}}))
        ->default_str("review")
        ->type_name("review|open|closed")
        ->option_text("review|open|closed");
    serve
        .add_flag("--this-user-only", serving.thisUserOnly,
                  "Answer only programs of the user that the service runs as, on this computer")
        ->excludes("--behind-tls-proxy");
    declareReceipts(serve, serving);
    declareTls(serve, serving);
    declareMail(serve, serving);
    serve.add_flag("--quiet", serving.quiet, "Log failures only");
    return serve;
}

CLI::App& declareVerify(CLI::App& app, Arguments& into)
{
    auto& verifying = *app.add_subcommand("verify", "Check the database, its schema and all books; changes nothing");
    DatabaseOption::addTo(verifying, into.file, DatabaseOption::Takes::anyDatabase);
    DatabaseOption::addFiles(verifying, into.files);
    return verifying;
}

CLI::App& declareMigrate(CLI::App& app, Arguments& into)
{
    auto& migrating =
        *app.add_subcommand("migrate", "Bring the schema of the database up to date, as serve does at its start");
    DatabaseOption::addTo(migrating, into.file, DatabaseOption::Takes::anyDatabase);
    return migrating;
}

CLI::App& declareBackup(CLI::App& app, Arguments& into)
{
    auto& copying = *app.add_subcommand("backup", "Copy one consistent state of the database, the receipts and the "
                                                  "seals to a new archive; the service may run meanwhile");
    DatabaseOption::addTo(copying, into.file, DatabaseOption::Takes::onlyFile);
    DatabaseOption::addFiles(copying, into.files);
    copying.add_option("--to", into.to, "The archive to make")->required()->type_name("FILE");
    return copying;
}

CLI::App& declareRestore(CLI::App& app, Arguments& into)
{
    auto& restoring = *app.add_subcommand("restore", "Verify an archive and put what it holds in an empty place");
    DatabaseOption::addTo(restoring, into.file, DatabaseOption::Takes::onlyFile);
    restoring.add_option("--from", into.from, "The archive")->required()->type_name("FILE");
    return restoring;
}

CLI::App& declareAudit(CLI::App& app, Arguments& into)
{
    auto& auditing =
        *app.add_subcommand("audit", "Print the audit trail, one record per line as JSON, the latest first");
    DatabaseOption::addTo(auditing, into.file, DatabaseOption::Takes::anyDatabase);
    auditing.add_option("--company", into.companyID, "Only of this company")->type_name("ID");
    auditing.add_option("--person", into.filter.memberID, "Only what this member did")->type_name("ID");
    auditing.add_option("--kind", into.filter.kind, "Only this, such as sign-in or 'POST /v1/accounts'")
        ->type_name("TEXT");
    auditing.add_option("--record", into.filter.record, "Only what was done to this record")->type_name("ID");
    const auto whyNoDay = [](const std::string& text) {
        return LedgerDay::isValid(text) ? std::string{} : fmt::format("'{}' is no day such as 2026-11-20", text);
    };
    auditing.add_option("--day", into.filter.day, "Only on this day, by universal time")
        ->check(whyNoDay, "")
        ->type_name("YYYY-MM-DD");
    auditing.add_option("--limit", into.filter.limit, "At most so many of each company")
        ->capture_default_str()
        ->check(CLI::PositiveNumber)
        ->type_name("NUMBER")
        ->option_text("NUMBER");
    return auditing;
}

/// The arguments, with `config` taken for `serve`: it takes the same options.
std::vector<std::string> argumentsOf(int count, const char* const* arguments, bool& onlyShown)
{
    std::vector<std::string> all{arguments + std::min(count, 1), arguments + count};
    auto command = all.begin();
    while (command != all.end() && command->starts_with('-')) // and past the name of a file of options
        command += *command == "--config" && command + 1 != all.end() ? 2 : 1;
    onlyShown =
        command != all.end() && *command == "config" && std::ranges::find(all, std::string{"--help"}) == all.end();
    if (onlyShown)
        *command = "serve";
    return all;
}

/// The options as a file of options would say them, without the password that the database's address may hold.
std::string inForce(const CLI::App& serve, const Serve::Options& serving)
{
    auto text = serve.config_to_str(true, true);
    if (const auto at = text.find(serving.databaseFile); at != std::string::npos)
        text.replace(at, serving.databaseFile.size(), DatabaseName::shown(serving.databaseFile));
    return text;
}

void declareCreateCompany(CLI::App& app, Arguments& into)
{
    auto& creating = *app.add_subcommand("create-company", "Found a company with its owner; asks for the password, or "
                                                           "reads it as one line from standard input");
    auto& order = into.order;
    DatabaseOption::addTo(creating, into.file, DatabaseOption::Takes::anyDatabase);
    creating.add_option("--name", order.companyName, "Name of the company")->required()->type_name("TEXT");
    creating.add_option("--country", order.countries, "Countries, such as ID or VN")->type_name("CODE");
    creating
        .add_option("--time-zone", order.timeZone,
                    "Time zone whose days the books are kept by, such as "
                    "Asia/Jakarta; without it, this machine's")
        ->type_name("NAME");
    creating.add_option("--owner-name", order.ownerName, "Name of the owner")->required()->type_name("TEXT");
    creating.add_option("--owner-email", order.ownerEmail, "Address to sign in with")->required()->type_name("EMAIL");
    creating.add_option("--locale", order.locale, "Language of the owner: zh-CN, en-US, id-ID or vi-VN")
        ->default_val("en-US")
        ->type_name("TAG");
}

int carryOut(int argumentCount, const char* const* arguments)
{
    // What goes wrong when a reader of the log leaves, or a file may grow no more, is told by the call that fails.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    umask(S_IRWXG | S_IRWXO); // the database is for the service's own user alone
    CLI::App app{"The Tallyfold ledger service: keeps the books of companies in one database.", "tallyfold-service"};
    app.set_version_flag("--version", std::string{"tallyfold-service "} + TALLYFOLD_VERSION);
    app.require_subcommand(1);
    Arguments given;
    const auto& serve = declareServe(app, given);
    const auto& verifying = declareVerify(app, given);
    const auto& migrating = declareMigrate(app, given);
    const auto& copying = declareBackup(app, given);
    const auto& restoring = declareRestore(app, given);
    const auto& auditing = declareAudit(app, given);
    declareCreateCompany(app, given);
    const PeopleCommands people{app};
    app.add_subcommand("config", "Print which options are in force for serve, which takes the same ones");
    const auto* const listing =
        app.add_subcommand("options", "Print every option: flag, environment, commands that take it, help");
    const auto* const figures =
        app.add_subcommand("figures", "Print every figure that serve tells with --metrics: kind, labels, help");
    app.set_config("--config", "", "File with options, those of each command after its name: [serve]")
        ->envname("TALLYFOLD_CONFIG");
    EnvironmentOptions::declare(app);
    bool onlyShown = false;
    auto words = EnvironmentOptions::completed(app, argumentsOf(argumentCount, arguments, onlyShown));
    std::ranges::reverse(words); // as the parser takes them
    try {
        app.parse(std::move(words));
        if (onlyShown) {
            fmt::print("{}", inForce(serve, given.serving));
            return 0;
        }
        if (listing->parsed()) {
            fmt::print("{}", EnvironmentOptions::table(app));
            return 0;
        }
        if (figures->parsed()) {
            fmt::print("{}", Metrics::table());
            return 0;
        }
        if (const auto done = people.run())
            return *done;
        if (serve.parsed())
            return Serve::run(given.serving);
        if (migrating.parsed())
            return migrate(given.file);
        if (restoring.parsed())
            return restore(given.from, given.file);
        if (auditing.parsed())
            return AuditCommand::run(given.file, given.companyID, given.filter);
        if (copying.parsed())
            return backup(given.file, given.files, given.to);
        return verifying.parsed() ? verify(given.file, given.files) : createCompany(given.file, std::move(given.order));
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem);
    } catch (const std::exception& failure) {
        return fail(DatabaseFailure::words(failure));
    }
}

}

int CommandLine::run(int argumentCount, const char* const* arguments)
{
    const int code = carryOut(argumentCount, arguments);
    if (code != 0 && Interruption::signal() != 0) { // whoever sent it is to see that it was heeded
        std::fflush(nullptr);
        std::raise(Interruption::signal());
    }
    return code;
}

}
