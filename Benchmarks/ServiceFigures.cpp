#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <list>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "Benchmarks/BareFigures.h"
#include "Benchmarks/Samples.h"
#include "Benchmarks/ServedBooks.h"
#include "Benchmarks/SteadyRequests.h"
#include "Benchmarks/WholeReply.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Http/Connections/Server.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/HttpClient.h"
#include "LedgerService/testing/ServiceProcess.h"

using namespace LedgerService;

namespace {

constexpr std::array<std::size_t, 4> crowds{1, 4, 8, 64};
constexpr std::size_t slowReaders = 500; // of the 512 that the service takes
constexpr std::size_t readersOfAnAddress = 100;

struct Options {
    std::string program;
    std::string folder;
    std::string server; // address; empty: the database is a file
    std::string books;  // made before; empty: they are made here
    bool onlyPosting = false;
    bool onlyLogKeeping = false;
    std::size_t entries = 100'000;
    int seconds = 2;
    int repetitions = 5;
};

struct SignedIn {
    std::string token;
    LedgerSnapshot snapshot;
};
BOOST_DESCRIBE_STRUCT(SignedIn, (), (token, snapshot))

SignedIn signIn(std::uint16_t port)
{
    const auto answer = HttpClient{port}.send(
        "POST", "/v1/auth/login", {},
        fmt::format(R"({{"email":"{}","password":"{}"}})", ServedBooks::email, ServedBooks::password));
    auto signedIn = Json::decode<SignedIn>(answer.body);
    if (!signedIn)
        throw std::runtime_error(fmt::format("signing in was answered with {}", answer.status));
    return *std::move(signedIn);
}

/// Money that arrives, so that no balance stands in the way.
TransactionInput incomeFor(const LedgerSnapshot& snapshot)
{
    const auto& account = snapshot.accounts.front();
    TransactionInput input;
    input.kind = EntryKind::income;
    input.date = LedgerDay::localGregorian().day(std::chrono::system_clock::now());
    input.note = "paper and toner 4711";
    for (const auto& category : snapshot.categories) {
        if (category.kind == EntryKind::income && category.parentID)
            input.categoryID = category.id;
    }
    input.targetAccountID = account.id;
    input.currency = account.currencies.front();
    input.amountMinor = 12'345;
    return input;
}

/// One client on one kept connection until the time is over.
Samples postUntil(std::chrono::steady_clock::time_point end, std::uint16_t port, const std::string& token,
                  TransactionInput input)
{
    HttpClient client{port};
    Samples samples;
    while (std::chrono::steady_clock::now() < end) {
        input.idempotencyKey = Random::identifier();
        const auto body = Json::encode(input);
        samples.time([&] {
            const auto answer = client.send("POST", "/v1/transactions", token, body);
            if (answer.status != 200)
                throw std::runtime_error(fmt::format("an entry was answered with {} {}", answer.status, answer.body));
        });
    }
    return samples;
}

/// What these clients post together in the time of a turn, and how long each entry took.
Samples post(const Options& options, std::uint16_t port, const SignedIn& signedIn, std::size_t clients)
{
    const auto input = incomeFor(signedIn.snapshot);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{options.seconds};
    std::vector<Samples> posted(clients);
    {
        std::vector<std::jthread> threads;
        threads.reserve(clients);
        for (auto& each : posted)
            threads.emplace_back([&] { each = postUntil(end, port, signedIn.token, input); });
    }
    Samples all;
    for (const auto& each : posted)
        all.add(each);
    return all;
}

void printRates(std::string_view name, std::vector<std::size_t> counts, int seconds)
{
    std::ranges::sort(counts);
    const auto rate = [&](std::size_t count) { return static_cast<double>(count) / seconds; };
    fmt::print("{:<44} {:>7.0f} a second  {:.0f} to {:.0f} of {}\n", name, rate(counts[counts.size() / 2]),
               rate(counts.front()), rate(counts.back()), counts.size());
}

/// Figures of entries that were not kept would be worth nothing.
void checkKept(std::uint16_t port, std::size_t expected)
{
    const auto kept = signIn(port).snapshot.transactions.size();
    if (kept != expected)
        throw std::runtime_error(fmt::format("{} entries were accepted and {} are there", expected, kept));
}

/// The disk's pace changes from minute to minute, so that what is compared takes turns, and what the service computes
/// for an entry is told apart from its waiting.
void measurePosting(const Options& options, const ServiceProcess& service, const SignedIn& signedIn,
                    std::size_t entriesBefore)
{
    const auto bareFile = (std::filesystem::path{options.folder} / "bare.sqlite").string();
    const auto port = service.port();
    std::chrono::nanoseconds computing{};
    std::vector<std::size_t> bare;
    std::array<std::vector<std::size_t>, crowds.size()> counts;
    std::size_t alone = 0;
    Samples crowded;
    auto expected = entriesBefore + post(options, port, signedIn, 1).count(); // until the log has its size
    for (int each = 0; each < options.repetitions; ++each) {
        const std::chrono::seconds turn{options.seconds};
        const auto commits =
            options.server.empty() ? bareCommits(bareFile, turn) : bareServedCommits(options.server, turn);
        bare.push_back(commits.count());
        for (std::size_t at = 0; at < crowds.size(); ++at) {
            const auto before = service.processorTime();
            const auto posted = post(options, port, signedIn, crowds[at]);
            counts[at].push_back(posted.count());
            expected += posted.count();
            if (crowds[at] == 1) {
                computing += service.processorTime() - before;
                alone += posted.count();
            }
            if (crowds[at] == crowds.back())
                crowded.add(posted);
        }
    }
    checkKept(port, expected);
    fmt::print("on a ledger of {} entries:\n", entriesBefore);
    printRates("bare durable commits", std::move(bare), options.seconds);
    for (std::size_t at = 0; at < crowds.size(); ++at)
        printRates(fmt::format("entries posted, clients at once: {}", crowds[at]), std::move(counts[at]),
                   options.seconds);
    fmt::print("{:<44} {:>7.1f} ms  99 of 100 within {:.1f} ms\n", "  an entry among the most clients",
               crowded.quantile(0.5), crowded.quantile(0.99));
    fmt::print("{:<44} {:>7.0f} microseconds\n", "processor time of the service for an entry",
               std::chrono::duration<double, std::micro>{computing}.count() / static_cast<double>(alone));
}

/// How long the snapshot takes to make, without a network.
Samples madeAlone(Database& database, const SignedIn& signedIn, int repetitions, std::string& text)
{
    Samples made;
    for (int each = 0; each < repetitions; ++each)
        made.timeThread([&] {
            const auto answer =
                SnapshotReader::answer(database, signedIn.snapshot.company.id, signedIn.snapshot.currentMember.id, {});
            text = answer->text;
            for (auto block = answer->more(); !block.empty(); block = answer->more())
                text += block;
        });
    return made;
}

/// Takes the request's answers again and again; the last one.
HttpAnswer ask(std::string_view name, int repetitions, HttpClient& client, const std::string& token,
               const std::string& headers)
{
    HttpAnswer answer;
    Samples samples;
    for (int each = 0; each < repetitions; ++each)
        samples.time([&] { answer = client.send("GET", "/v1/snapshot", token, "", headers); });
    samples.print(name);
    return answer;
}

Samples takeWhole(std::uint16_t port, const std::string& token, int repetitions, std::string_view expected)
{
    WholeReply reply{port};
    Samples samples;
    for (int each = 0; each < repetitions; ++each) {
        std::string_view body;
        samples.time([&] { body = reply.get("/v1/snapshot", token); });
        if (body != expected)
            throw std::runtime_error("two snapshots of the same books differ");
    }
    return samples;
}

void measureSnapshot(const Options& options, const std::string& databaseFile, const ServiceProcess& service,
                     const SignedIn& signedIn)
{
    const auto port = service.port();
    HttpClient client{port};
    fmt::print("snapshot of {} entries:\n", signedIn.snapshot.transactions.size());
    const auto whole = client.send("GET", "/v1/snapshot", signedIn.token);
    const auto before = service.processorTime();
    takeWhole(port, signedIn.token, options.repetitions, whole.body).print("snapshot over HTTP, whole");
    fmt::print("{:<44} {:>7.2f} ms\n", "  processor time of the service for it",
               std::chrono::duration<double, std::milli>{service.processorTime() - before}.count() /
                   options.repetitions);
    const auto database = Database::open(databaseFile);
    if (!database)
        throw std::runtime_error(database.error());
    std::string text;
    madeAlone(**database, signedIn, options.repetitions, text).print("  made without a network");
    if (whole.body != text)
        throw std::runtime_error("the snapshot over HTTP is not the one in the database");
    bareTransfer(text, options.repetitions).print("  the same bytes over bare loopback");
    const auto tag = whole.header("etag");
    const auto held = fmt::format("If-None-Match: {}\r\nA-IM: entries\r\n", tag);
    ask("nothing new", 20 * options.repetitions, client, signedIn.token, held);
    auto input = incomeFor(signedIn.snapshot);
    input.idempotencyKey = Random::identifier();
    client.send("POST", "/v1/transactions", signedIn.token, Json::encode(input));
    const auto delta = ask("what is new after one entry", 20 * options.repetitions, client, signedIn.token, held);
    if (delta.status != 226)
        throw std::runtime_error(fmt::format("the delta was answered with {}", delta.status));
    fmt::print("bytes of the whole {}, of what is new {}\n", whole.body.size(), delta.body.size());
}

/// What the service holds while almost as many clients as it takes ask for a snapshot and read nothing of it.
void measureSlowReaders(const ServiceProcess& service, const SignedIn& signedIn)
{
    const auto before = service.memory();
    const auto ask =
        fmt::format("GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n\r\n", signedIn.token);
    std::list<HttpClient> readers;
    Samples others;
    for (std::size_t number = 0; number < slowReaders; ++number) {
        const auto address = fmt::format("127.0.0.{}", 2 + number / readersOfAnAddress);
        readers.emplace_back(service.port(), address).write(ask);
        if (number % readersOfAnAddress == 0)
            others.time([&] { HttpClient{service.port()}.send("GET", "/health/ready"); });
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{3};
    while (std::chrono::steady_clock::now() < end)
        others.time([&] { HttpClient{service.port()}.send("GET", "/v1/me/companies", signedIn.token); });
    const auto during = service.memory();
    fmt::print("{} clients that ask for the snapshot and do not read:\n", slowReaders);
    fmt::print("{:<44} {:>7} MiB  {} MiB before, {} MiB at most\n", "memory of the service", during.now >> 20U,
               before.now >> 20U, during.most >> 20U);
    others.print("  others are answered meanwhile");
}

/// The address of a schema of its own on the server, without what an earlier run left there.
std::string emptySchema(const std::string& address)
{
    Connection connection{address};
    connection.execute("DROP SCHEMA IF EXISTS figures CASCADE");
    connection.execute("CREATE SCHEMA figures");
    return address + "?options=-c%20search_path%3Dfigures";
}

/// The database to measure on.
std::string booksOf(const Options& options, const std::string& file)
{
    if (!options.books.empty())
        return options.books;
    auto database = options.server.empty() ? file : emptySchema(options.server);
    ServedBooks::write(database, options.entries);
    return database;
}

/// How long an entry takes among the most clients, depending on who brings the log into the file. Both take turns, on
/// books of their own.
void measureLogKeeping(const Options& options)
{
    struct Way {
        std::string_view name;
        LogKeeping keeping;
        Samples posted;
    };
    std::array ways{Way{"the log brought in beside writers", LogKeeping::aside, {}},
                    Way{"the log brought in by writers", LogKeeping::byWriters, {}}};
    for (int turn = 0; turn < options.repetitions; ++turn) {
        for (auto& way : ways) {
            ServerOptions serving;
            serving.databaseFile = (std::filesystem::path{options.folder} / "log-keeping.sqlite").string();
            serving.logKeeping = way.keeping;
            serving.routes = allRoutes();
            ServedBooks::write(serving.databaseFile, options.entries);
            const auto server = Server::start(std::move(serving));
            if (!server)
                throw std::runtime_error(server.error());
            way.posted.add(post(options, (*server)->port(), signIn((*server)->port()), crowds.back()));
        }
    }
    fmt::print("an entry among {} clients, on a ledger of {} entries:\n", crowds.back(), options.entries);
    for (const auto& way : ways)
        fmt::print("{:<44} {:>7.1f} ms  99 of 100 within {:.1f}, 999 of 1,000 within {:.1f}, all {} within {:.1f}\n",
                   way.name, way.posted.quantile(0.5), way.posted.quantile(0.99), way.posted.quantile(0.999),
                   way.posted.count(), way.posted.quantile(1.0));
}

void measure(const Options& options)
{
    if (options.onlyLogKeeping)
        return measureLogKeeping(options);
    const auto file = (std::filesystem::path{options.folder} / "served.sqlite").string();
    const auto database = booksOf(options, file);
    const ServiceProcess service{options.program, database, {"--files", file}};
    const auto signedIn = signIn(service.port());
    auto before = signedIn.snapshot.transactions.size();
    if (!options.onlyPosting) {
        measureSnapshot(options, database, service, signedIn);
        before += 1;
        SteadyRequests::measureSnapshots(service.port(), signedIn.token, options.seconds);
        SteadyRequests::measureMemory(service, signedIn.token);
        measureSlowReaders(service, signedIn);
    }
    measurePosting(options, service, signedIn, before);
}

}

/// The figures of the ledger service: a real process on a real file, asked over HTTP.
int main(int argc, char** argv)
{
    Options options;
    CLI::App app{"Measures the ledger service beside what its disk and network do alone."};
    app.add_option("--program", options.program, "The service's program")->required();
    app.add_option("--folder", options.folder, "Where the database is made; its disk is what is measured")->required();
    app.add_option("--server", options.server,
                   "Address of a PostgreSQL that the database is made on instead of a file");
    app.add_option("--books", options.books,
                   "File or address of books that tallyfold-served-books has made; entries are added to them");
    app.add_flag("--only-posting", options.onlyPosting, "No figures of reading, which take long on large books");
    app.add_flag(
        "--only-log-keeping", options.onlyLogKeeping,
        "How long an entry takes where a thread of its own brings the log into the file, and where writers do");
    app.add_option("--entries", options.entries, "Entries that the ledger holds before")->capture_default_str();
    app.add_option("--seconds", options.seconds, "How long each turn of posting lasts")->capture_default_str();
    app.add_option("--repetitions", options.repetitions, "How many turns each takes")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        measure(options);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
