#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include <boost/describe.hpp>
#include <fcntl.h>
#include <fmt/core.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Operations/Serving/Serve.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleDatabase.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

struct AuthReply {
    std::string token;
    LedgerSnapshot snapshot;
};
BOOST_DESCRIBE_STRUCT(AuthReply, (), (token, snapshot))

/// A database with the sample company, as it is before any process serves it; its books have no start date, so that
/// entries of the real today fit.
class ServedByAProcess : public testing::Test {
protected:
    void SetUp() override
    {
        makeSampleDatabase(file, [](Connection& connection) {
            connection.execute("UPDATE companies SET bookkeeping_start_date = NULL");
        });
        using std::filesystem::perms;
        if (!TestDatabase::server())
            std::filesystem::permissions(file, perms::owner_read | perms::owner_write);
    }

    static AuthReply signIn(const ServiceProcess& process)
    {
        HttpClient client{process.port()};
        const auto answer =
            client.send("POST", "/v1/auth/login", "",
                        fmt::format(R"({{"email":"mira@sample.example","password":"{}"}})", TestService::password));
        auto reply = Json::decode<AuthReply>(answer.body);
        EXPECT_TRUE(reply.has_value()) << answer.body;
        return reply.value_or(AuthReply{});
    }

    [[nodiscard]] int run(const std::string& arguments) const
    {
        const auto status = std::system(
            fmt::format("{} {} > {} 2>&1", TALLYFOLD_SERVICE_PROGRAM, arguments, folder.file("output.txt")).c_str());
        return WEXITSTATUS(status);
    }

    TemporaryFolder folder;
    TestDatabase database{folder};
    const std::string& file = database.name(); // or its address, in those tests that take one
    std::vector<std::string> withFiles{"--files", database.files()};
};

/// A socket that a service manager opens, and the way in which it starts a program with it.
class ManagerSocket {
public:
    explicit ManagerSocket(in_addr_t address) : m_socket{socket(AF_INET, SOCK_STREAM, 0)}
    {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(address);
        socklen_t size = sizeof(place);
        auto* const any = reinterpret_cast<sockaddr*>(&place);
        const bool listens =
            bind(m_socket, any, size) == 0 && listen(m_socket, 8) == 0 && getsockname(m_socket, any, &size) == 0;
        require(listens, "a socket listens on a free port");
        m_port = ntohs(place.sin_port);
    }
    ~ManagerSocket() { close(m_socket); }
    ManagerSocket(const ManagerSocket&) = delete;
    ManagerSocket& operator=(const ManagerSocket&) = delete;

    [[nodiscard]] std::uint16_t port() const { return m_port; }
    /// A program that starts the service as its manager does.
    [[nodiscard]] std::string starter(const TemporaryFolder& folder) const
    {
        auto path = folder.file("start.sh");
        std::ofstream{path} << fmt::format("#!/bin/bash\nexec 3<&{}\nLISTEN_PID=$$ LISTEN_FDS=1 exec {} \"$@\"\n",
                                           m_socket, TALLYFOLD_SERVICE_PROGRAM);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

private:
    int m_socket;
    std::uint16_t m_port = 0;
};

std::string expenseToday(const std::string& key)
{
    auto input = SampleBooks::expense(10);
    input.date = LedgerDay::localGregorian().day(std::chrono::system_clock::now());
    input.idempotencyKey = key;
    return Json::encode(input);
}

}

TEST_F(ServedByAProcess, KeepsWhatItConfirmedAndNothingHalfDoneWhenKilledInTheMiddleOfWrites)
{
    ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, file, withFiles};
    ASSERT_NE(process.port(), 0);
    const auto token = signIn(process).token;
    std::atomic<std::int64_t> confirmed = 0;
    constexpr int writerCount = 8; // some of them are carried out together
    std::vector<std::jthread> writers;
    std::array<int, writerCount> sent{};
    for (std::size_t writer = 0; writer < writerCount; ++writer)
        writers.emplace_back([&, writer] {
            HttpClient client{process.port()};
            for (auto& at = sent.at(writer);; ++at) {
                client.write(fmt::format("POST /v1/transactions HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n"
                                         "Content-Length: {}\r\n\r\n{}",
                                         token, expenseToday(fmt::format("{}-{}", writer, at)).size(),
                                         expenseToday(fmt::format("{}-{}", writer, at))));
                if (client.sendRaw("").status != 200)
                    return;
                ++confirmed;
                confirmed.notify_all();
            }
        });
    for (auto seen = confirmed.load(); seen < 30; seen = confirmed.load())
        confirmed.wait(seen);
    process.kill();
    writers.clear();

    ServiceProcess restarted{TALLYFOLD_SERVICE_PROGRAM, file, withFiles};
    const auto snapshot = signIn(restarted).snapshot;
    const auto recorded = static_cast<std::int64_t>(snapshot.transactions.size()) - 4; // four came with the sample
    EXPECT_GE(recorded, confirmed.load());
    EXPECT_LE(recorded, confirmed.load() + writerCount) << "each writer may have lost one answer";
    EXPECT_EQ(snapshot.account("bank")->balance("IDR"), 1'000'000 - 10 * recorded);
    HttpClient client{restarted.port()};
    for (std::size_t writer = 0; writer < writerCount; ++writer) {
        for (int at = 0; at <= sent.at(writer); ++at)
            EXPECT_EQ(
                client.send("POST", "/v1/transactions", token, expenseToday(fmt::format("{}-{}", writer, at))).status,
                200);
    }
    EXPECT_EQ(signIn(restarted).snapshot.account("bank")->balance("IDR"), 1'000'000 - 10 * (confirmed + writerCount))
        << "sent again, each is there once";
    EXPECT_EQ(restarted.stop(), 0);
    EXPECT_EQ(run(fmt::format("verify --database '{}' --files {}", file, database.files())), 0);
}

TEST_F(ServedByAProcess, AnswersOnTheSocketThatItWasHandedOverWithWhatCameBeforeItsStart)
{
    const ManagerSocket manager{INADDR_LOOPBACK};
    HttpClient early{manager.port()};
    early.write("GET /health/ready HTTP/1.1\r\nHost: l\r\n\r\n");
    ServiceProcess process{manager.starter(folder), file};
    EXPECT_EQ(process.port(), manager.port());
    EXPECT_EQ(early.sendRaw("").status, 200);
    EXPECT_FALSE(signIn(process).token.empty());
    EXPECT_EQ(process.stop(), 0);
}

TEST_F(ServedByAProcess, RefusesAHandedOverSocketThatOtherMachinesReach)
{
    const ManagerSocket everywhere{INADDR_ANY};
    const ServiceProcess process{everywhere.starter(folder), file};
    EXPECT_EQ(process.port(), 0) << "without a proxy that speaks TLS";
}

TEST_F(ServedByAProcess, MakesItsDatabaseUnreadableToOthers)
{
    const auto fresh = folder.file("fresh.sqlite");
    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, fresh, {"--create"}};
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(fresh).permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(ServedByAProcess, SharesItsDatabaseWithAnotherProcess)
{
    const ServiceProcess one{TALLYFOLD_SERVICE_PROGRAM, file};
    const ServiceProcess two{TALLYFOLD_SERVICE_PROGRAM, file};
    const auto token = signIn(one).token;
    std::atomic<int> recorded = 0;
    {
        std::vector<std::jthread> writers;
        for (const auto port : {one.port(), two.port()})
            writers.emplace_back([&, port] {
                HttpClient client{port};
                for (int at = 0; at < 20; ++at)
                    recorded +=
                        client.send("POST", "/v1/transactions", token, expenseToday(fmt::format("{}-{}", port, at)))
                            .status == 200;
            });
    }
    EXPECT_EQ(recorded, 40) << "each waits for the other's turn to end";
    EXPECT_EQ(signIn(two).snapshot.account("bank")->balance("IDR"), 999'600);
}

TEST_F(ServedByAProcess, SpeaksPlainHttpBeyondLoopbackOnlyBehindAProxy)
{
    const auto said = [&] {
        std::ifstream output{folder.file("output.txt")};
        return std::string{std::istreambuf_iterator<char>{output}, {}};
    };
    EXPECT_NE(run("serve --listen 0.0.0.0:0 --database " + file), 0);
    EXPECT_NE(said().find("unprotected"), std::string::npos) << said();
    EXPECT_NE(run("serve --listen 0.0.0.0:0 --tls-certificate no.pem --tls-key no.key --database " + file), 0);
    EXPECT_NE(said().find("cannot read a certificate from no.pem"), std::string::npos) << said();
    EXPECT_NE(run("serve --tls-certificate no.pem --database " + file), 0) << "without its key";
    EXPECT_NE(run("serve --listen localhost --database " + file), 0);
    EXPECT_NE(run("verify --database " + folder.file("missing.sqlite")), 0);
    EXPECT_NE(run("serve"), 0);
    EXPECT_EQ(run("--version"), 0);
}

TEST_F(ServedByAProcess, OffersTheDemonstrationOnLoopbackUnlessToldOtherwise)
{
    const auto statusWith = [&](const std::vector<std::string>& arguments) {
        const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, file, arguments};
        return HttpClient{process.port()}.send("POST", "/v1/demo", "", R"({"profile":"employee"})").status;
    };
    EXPECT_EQ(statusWith({}), 200);
    EXPECT_EQ(statusWith({"--demo", "off"}), 403);
    EXPECT_EQ(statusWith({"--behind-tls-proxy"}), 403);
    EXPECT_EQ(statusWith({"--behind-tls-proxy", "--demo", "private"}), 200);
}

/// How many bytes a program of another user is answered with.
long bytesForSomebodyElse(std::uint16_t port)
{
    constexpr uid_t nobody = 65534;
    const auto child = fork();
    if (child == 0) {
        const bool isSomebodyElse = setuid(nobody) == 0; // from here on: a socket belongs to whoever makes it
        const int connection = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(port);
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        constexpr std::string_view request = "GET /v1/snapshot HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n";
        char reply[64];
        const bool isSent = isSomebodyElse &&
                            connect(connection, reinterpret_cast<sockaddr*>(&place), sizeof place) == 0 &&
                            write(connection, request.data(), request.size()) > 0;
        _exit(isSent ? static_cast<int>(std::max(read(connection, reply, sizeof reply), ssize_t{0})) : 255);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

TEST_F(ServedByAProcess, AnswersOnlyProgramsOfItsOwnUserWhereItIsToldTo)
{
    const auto statusOfOwn = [](const ServiceProcess& process) {
        return HttpClient{process.port()}.send("GET", "/v1/snapshot", "").status;
    };
    const ServiceProcess alone{TALLYFOLD_SERVICE_PROGRAM, file, {"--this-user-only"}};
    EXPECT_EQ(statusOfOwn(alone), 401) << "answered";
    if (geteuid() != 0)
        GTEST_SKIP() << "only the system's administrator can act for another user";
    EXPECT_EQ(bytesForSomebodyElse(alone.port()), 0);
    const ServiceProcess usual{TALLYFOLD_SERVICE_PROGRAM, file};
    EXPECT_GT(bytesForSomebodyElse(usual.port()), 0);
}

TEST_F(ServedByAProcess, FoundsACompanyWhoseOwnerSignsIn)
{
    const auto create = [&](const std::string& password, const std::string& email, const std::string& more = "") {
        const auto command = fmt::format("printf '{}\\n' | {} create-company --database '{}' --name 'Toko Baru' "
                                         "--owner-name Dewi --owner-email {} {} > /dev/null 2>&1",
                                         password, TALLYFOLD_SERVICE_PROGRAM, file, email, more);
        return WEXITSTATUS(std::system(command.c_str()));
    };
    EXPECT_NE(create("short", "dewi@toko.example"), 0);
    EXPECT_NE(create("long enough", "no-address"), 0);
    EXPECT_NE(create("long enough", "dewi@toko.example", "--country Indonesia"), 0);
    EXPECT_NE(create("long enough", "dewi@toko.example", "--locale xx"), 0);
    EXPECT_EQ(create("long enough\\r", "Dewi@toko.example", "--country ID --locale id-ID"), 0);
    EXPECT_NE(create("long enough", "dewi@toko.example"), 0) << "the address is taken";

    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, file, withFiles};
    HttpClient client{process.port()};
    const auto answer =
        client.send("POST", "/v1/auth/login", "", R"({"email":"dewi@toko.example","password":"long enough"})");
    const auto reply = Json::decode<AuthReply>(answer.body);
    ASSERT_TRUE(reply.has_value()) << answer.body;
    EXPECT_EQ(reply->snapshot.company.name, "Toko Baru");
    EXPECT_EQ(reply->snapshot.currentMember.role, "owner");
}

TEST_F(ServedByAProcess, TakesNoMistypedNameForNewBooks)
{
    const auto mistyped = folder.file("boks.sqlite");
    EXPECT_NE(run("serve --listen 127.0.0.1:0 --database " + mistyped), 0);
    EXPECT_FALSE(std::filesystem::exists(mistyped));
    EXPECT_NE(run("serve --listen 127.0.0.1:0 --create --database :memory:"), 0);
    EXPECT_NE(run("serve --listen 127.0.0.1:0 --create --database file:x?mode=memory"), 0);
    EXPECT_NE(run("migrate --database " + mistyped), 0);
    EXPECT_NE(run("backup --to " + folder.file("copy.sqlite") + " --database " + mistyped), 0);
}

TEST_F(ServedByAProcess, ServesNoFileThatEveryoneMayChange)
{
    using std::filesystem::perms;
    std::filesystem::permissions(file, perms::others_write, std::filesystem::perm_options::add);
    EXPECT_NE(run("serve --listen 127.0.0.1:0 --database " + file), 0);
    std::filesystem::permissions(file, perms::others_write, std::filesystem::perm_options::remove);
    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, file};
    EXPECT_NE(process.port(), 0);
}

/// The service with its log at the write end of a pipe.
class LoggedToAPipe {
public:
    explicit LoggedToAPipe(const std::string& file)
    {
        EXPECT_EQ(pipe2(m_log.data(), O_CLOEXEC), 0);
        const int own = dup(STDERR_FILENO);
        dup2(m_log[1], STDERR_FILENO); // inherited by the child
        m_process.emplace(TALLYFOLD_SERVICE_PROGRAM, file, std::vector<std::string>{},
                          ServiceProcess::Logging::requests);
        dup2(own, STDERR_FILENO);
        close(own);
        close(m_log[1]);
    }
    ~LoggedToAPipe() { leave(); }
    LoggedToAPipe(const LoggedToAPipe&) = delete;
    LoggedToAPipe& operator=(const LoggedToAPipe&) = delete;

    void leave()
    {
        if (m_log[0] >= 0)
            close(std::exchange(m_log[0], -1));
    }
    ServiceProcess& process() { return *m_process; }

private:
    std::array<int, 2> m_log{};
    std::optional<ServiceProcess> m_process;
};

TEST_F(ServedByAProcess, GoesOnWhenNobodyReadsItsLog)
{
    LoggedToAPipe service{file};
    HttpClient client{service.process().port()};
    int answered = 0;
    for (int ask = 0; ask < 3000; ++ask) // some 150 kB of log, more than a pipe holds
        answered += client.send("GET", "/health/live").status == 200;
    EXPECT_EQ(answered, 3000) << "its reader has stopped";
    service.leave();
    for (int ask = 0; ask < 100; ++ask)
        answered += client.send("GET", "/health/live").status == 200;
    EXPECT_EQ(answered, 3100) << "its reader has gone";
    EXPECT_EQ(service.process().stop(), 0);
}

TEST_F(ServedByAProcess, RefusesAndGoesOnWhenItsFileMayGrowNoMore)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    auto small = before;
    small.rlim_cur = std::filesystem::file_size(file) + 100'000; // the log beside it grows up to here
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    std::optional<ServiceProcess> process;
    process.emplace(TALLYFOLD_SERVICE_PROGRAM, file);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    const auto token = signIn(*process).token;
    HttpClient client{process->port()};
    int recorded = 0;
    int status = 200;
    for (; recorded < 2000 && status == 200; ++recorded)
        status = client.send("POST", "/v1/transactions", token, expenseToday(std::to_string(recorded))).status;
    EXPECT_EQ(status, 500);
    EXPECT_EQ(client.send("GET", "/health/live").status, 200);
    process.reset();
    const auto checked = Verify::database(file);
    ASSERT_TRUE(checked.has_value()) << checked.error();
    EXPECT_EQ(checked->problems, std::vector<std::string>{});
    EXPECT_EQ(checked->entries, 4U + static_cast<unsigned>(recorded) - 1);
}

struct EndpointCase {
    std::string name;
    std::string text;
    std::string url; // empty: refused
    bool loopback = false;
};

class Endpoints : public testing::TestWithParam<EndpointCase> {};

TEST_P(Endpoints, AreReadStrictly)
{
    const auto endpoint = Serve::parseEndpoint(GetParam().text);
    ASSERT_EQ(endpoint.has_value(), !GetParam().url.empty());
    if (endpoint) {
        EXPECT_EQ(endpoint->url(), GetParam().url);
        EXPECT_EQ(endpoint->isLoopback(), GetParam().loopback);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, Endpoints,
                         testing::Values(EndpointCase{"Version4", "127.0.0.1:48731", "http://127.0.0.1:48731", true},
                                         EndpointCase{"WholeLoopbackNet", "127.9.9.9:1", "http://127.9.9.9:1", true},
                                         EndpointCase{"Version6", "[::1]:80", "http://[::1]:80", true},
                                         EndpointCase{"Anywhere", "0.0.0.0:80", "http://0.0.0.0:80", false},
                                         EndpointCase{"AnywhereVersion6", "[::]:80", "http://[::]:80", false},
                                         EndpointCase{"Name", "localhost:80", ""},
                                         EndpointCase{"NoPort", "127.0.0.1", ""},
                                         EndpointCase{"PortTooLarge", "127.0.0.1:65536", ""},
                                         EndpointCase{"PortWithRest", "127.0.0.1:80x", ""},
                                         EndpointCase{"EmptyPort", "127.0.0.1:", ""}),
                         [](const auto& each) { return each.param.name; });

}
