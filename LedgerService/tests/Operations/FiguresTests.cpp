#include <list>
#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Metrics.h"
#include "LedgerService/Operations/Serving/MetricsListener.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/testing/Eventually.h"
#include "LedgerService/testing/OtherWriter.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleDatabase.h"
#include "LedgerService/testing/SelfMadeCertificate.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

std::uint16_t freePort()
{
    const int opened = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(place);
    auto* const any = reinterpret_cast<sockaddr*>(&place);
    const bool bound = bind(opened, any, size) == 0 && getsockname(opened, any, &size) == 0;
    close(opened);
    return bound ? ntohs(place.sin_port) : std::uint16_t{0};
}

std::string expense(const std::string& key)
{
    auto input = SampleBooks::expense(10);
    input.idempotencyKey = key;
    return Json::encode(input);
}

class Figures : public testing::Test {
protected:
    void SetUp() override
    {
        makeSampleDatabase(file, [this](Connection& connection) {
            SessionRepository::insert(connection, Token::hash(token), {"sample", "mira"}, "2026-01-01T00:00:00.000Z",
                                      "9999-01-01T00:00:00.000Z");
        });
    }

    TemporaryFolder folder;
    std::string file = folder.file("books.sqlite");
    std::string token = Token::issue();
};

}

TEST_F(Figures, TellsEveryFigureOfItsTable)
{
    const auto port = freePort();
    const SelfMadeCertificate certificate{folder.file("certificate")};
    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM,
                                 file,
                                 {"--metrics", fmt::format("127.0.0.1:{}", port), "--tls-certificate",
                                  certificate.file(), "--tls-key", certificate.keyFile()}};
    HttpClient client{process.port(), HttpClient::Tls{certificate.file()}};
    EXPECT_EQ(client.sendRaw("GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n").status, 200);
    const auto text = HttpClient{port}.send("GET", "/metrics").body;
    const auto table = Metrics::table();
    int figures = 0;
    for (auto at = table.find("| `"); at != std::string::npos; at = table.find("| `", at + 1), ++figures) {
        const auto name = table.substr(at + 3, table.find('`', at + 3) - at - 3);
        EXPECT_NE(text.find(fmt::format("\n# TYPE {} ", name)), std::string::npos) << name;
    }
    EXPECT_GE(figures, 14);
    const auto isIdle = [&] {
        return HttpClient{port}.send("GET", "/metrics").body.contains("tallyfold_connections{state=\"idle\"} 1\n");
    };
    EXPECT_TRUE(eventually(isIdle)) << "once its reply is out";
}

TEST_F(Figures, AreToldAgainAfterTheyCouldNotBe)
{
    bool fails = true;
    const auto figures = MetricsListener::start("127.0.0.1", 0, [&fails]() -> std::vector<Metrics::Gauge> {
        if (std::exchange(fails, false))
            throw std::runtime_error("no room");
        return {};
    });
    ASSERT_TRUE(figures.has_value()) << figures.error();
    HttpClient{(*figures)->port()}.send("GET", "/metrics");
    EXPECT_FALSE(fails);
    EXPECT_EQ(HttpClient{(*figures)->port()}.send("GET", "/metrics").status, 200);
}

TEST_F(Figures, TellsHowManyCommandsWait)
{
    const auto port = freePort();
    const ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM, file, {"--metrics", fmt::format("127.0.0.1:{}", port)}};
    std::list<HttpClient> clients;
    const auto told = [&](const std::string& figure) {
        const auto text = HttpClient{port}.send("GET", "/metrics").body;
        const auto at = text.find("\n" + figure + " ");
        return at == std::string::npos ? -1 : std::stod(text.substr(at + figure.size() + 2));
    };
    {
        const OtherWriter other{file};
        for (int at = 0; at < 4; ++at) {
            const auto body = expense(std::to_string(at));
            clients.emplace_back(process.port())
                .write(fmt::format("POST /v1/transactions HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n"
                                   "Content-Length: {}\r\n\r\n{}",
                                   token, body.size(), body));
        }
        EXPECT_TRUE(eventually([&] { return told("tallyfold_commands_waiting") == 4; })) << "the one at the lock, too";
        EXPECT_GT(told("tallyfold_oldest_command_wait_seconds"), 0);
    }
    for (auto& each : clients)
        EXPECT_EQ(each.sendRaw("").status, 200);
    EXPECT_EQ(told("tallyfold_commands_waiting"), 0);
}

}
