#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "Benchmarks/BareCommits.h"
#include "Benchmarks/BareTransfer.h"
#include "Benchmarks/Samples.h"
#include "Benchmarks/ServedBooks.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/testing/HttpClient.h"
#include "LedgerService/testing/ServiceProcess.h"

using namespace LedgerService;

namespace {

constexpr int severalClients = 4;

struct Options {
    std::string program;
    std::string folder;
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

/// How many entries these clients post together in the time of a turn.
std::size_t post(const Options& options, std::uint16_t port, const SignedIn& signedIn, int clients)
{
    const auto input = incomeFor(signedIn.snapshot);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{options.seconds};
    std::atomic<std::size_t> posted = 0;
    {
        std::vector<std::jthread> threads;
        threads.reserve(static_cast<std::size_t>(clients));
        for (int each = 0; each < clients; ++each)
            threads.emplace_back([&] { posted += postUntil(end, port, signedIn.token, input).count(); });
    }
    return posted;
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
void measurePosting(const Options& options, const std::string& bareFile, const ServiceProcess& service,
                    const SignedIn& signedIn)
{
    const auto port = service.port();
    std::chrono::nanoseconds computing{};
    std::vector<std::size_t> bare;
    std::vector<std::size_t> one;
    std::vector<std::size_t> several;
    auto expected = options.entries + 1 + post(options, port, signedIn, 1); // until the log has its size
    for (int each = 0; each < options.repetitions; ++each) {
        bare.push_back(bareCommits(bareFile, std::chrono::seconds{options.seconds}).count());
        const auto before = service.processorTime();
        one.push_back(post(options, port, signedIn, 1));
        computing += service.processorTime() - before;
        several.push_back(post(options, port, signedIn, severalClients));
        expected += one.back() + several.back();
    }
    checkKept(port, expected);
    const auto alone = std::reduce(one.begin(), one.end());
    fmt::print("on a ledger of {} entries:\n", options.entries);
    printRates("bare durable commits", std::move(bare), options.seconds);
    printRates("entries posted by one client", std::move(one), options.seconds);
    printRates("entries posted by four clients", std::move(several), options.seconds);
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

void measureSnapshot(const Options& options, const std::string& databaseFile, std::uint16_t port,
                     const SignedIn& signedIn)
{
    HttpClient client{port};
    fmt::print("snapshot of {} entries:\n", options.entries);
    const auto whole = ask("snapshot over HTTP, whole", options.repetitions, client, signedIn.token, "");
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

void measure(const Options& options)
{
    const auto folder = std::filesystem::path{options.folder};
    const auto file = (folder / "served.sqlite").string();
    ServedBooks::write(file, options.entries);
    const ServiceProcess service{options.program, file};
    const auto signedIn = signIn(service.port());
    measureSnapshot(options, file, service.port(), signedIn);
    measurePosting(options, (folder / "bare.sqlite").string(), service, signedIn);
}

}

/// The figures of the ledger service: a real process on a real file, asked over HTTP.
int main(int argc, char** argv)
{
    Options options;
    CLI::App app{"Measures the ledger service beside what its disk and network do alone."};
    app.add_option("--program", options.program, "The service's program")->required();
    app.add_option("--folder", options.folder, "Where the database is made; its disk is what is measured")->required();
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
