#include <filesystem>
#include <fstream>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerService/testing/SelfMadeCertificate.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto askLive = "GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n";
/// The first bytes of a handshake that promises more.
constexpr std::string_view halfHandshake{"\x16\x03\x01\x02\x00\x01", 6};

class Tls : public testing::Test {
protected:
    [[nodiscard]] TestService served(const std::function<void(HttpLimits&)>& limit = [](HttpLimits&) {}) const
    {
        return TestService{[&](ServerOptions& options) {
            options.tls = {.certificate = certificate.file(), .key = certificate.keyFile()};
            limit(options.limits);
        }};
    }

    [[nodiscard]] HttpClient::Tls trust() const { return {.authorityFile = certificate.file()}; }

    TemporaryFolder folder;
    SelfMadeCertificate certificate{folder.file("first")};
};

}

TEST_F(Tls, CarriesRequestsRefusalsAndLongReplies)
{
    auto service = served();
    auto client = service.secureClient(trust());
    EXPECT_EQ(client.sendRaw(askLive).status, 200);
    const auto snapshot = client.send("GET", "/v1/snapshot", service.tokenOf("mira"));
    EXPECT_EQ(snapshot.status, 200);
    EXPECT_TRUE(snapshot.body.ends_with("}")) << "in chunks, and whole";
    EXPECT_EQ(client.sendRaw(std::string(20'000, 'x') + "\r\n\r\n").status, 431);
    EXPECT_TRUE(client.isClosedByService());
    const auto body = std::string(3'000'000, ' ');
    EXPECT_EQ(client.send("POST", "/v1/auth/login", "", body).status, 413) << "read though more was being sent";
}

TEST_F(Tls, IsSpokenInItsPresentVersionsOnly)
{
    const auto service = served();
    const auto statusWith = [&](HttpClient::TlsVersion newest) {
        return service.secureClient({.authorityFile = certificate.file(), .newest = newest}).sendRaw(askLive).status;
    };
    EXPECT_EQ(statusWith(HttpClient::TlsVersion::v1_3), 200);
    EXPECT_EQ(statusWith(HttpClient::TlsVersion::v1_2), 200);
    EXPECT_EQ(statusWith(HttpClient::TlsVersion::v1_1), 0);
}

TEST_F(Tls, TellsAPlainRequestSoAndEndsTheConnection)
{
    const auto service = served();
    auto client = service.client();
    const auto answer = client.sendRaw(askLive);
    EXPECT_EQ(answer.status, 400);
    EXPECT_NE(answer.body.find("TLS"), std::string::npos) << answer.body;
    EXPECT_TRUE(client.isClosedByService());
}

TEST_F(Tls, EndsAHandshakeThatIsNoneOrStopsHalfway)
{
    const auto service = served([](HttpLimits& limits) { limits.header = std::chrono::milliseconds{50}; });
    auto half = service.client();
    half.write(halfHandshake);
    EXPECT_TRUE(half.isClosedByService()) << "in time";
    auto wrong = service.client();
    wrong.write("\x16 this is no handshake, however long it goes on for");
    EXPECT_EQ(wrong.sendRaw(askLive).status, 0);
    EXPECT_EQ(service.client().sendRaw(askLive).status, 400) << "the service goes on";
}

TEST_F(Tls, CountsAHalfHandshakeLikeASilentConnection)
{
    const auto service = served([](HttpLimits& limits) { limits.connections = 2; });
    auto half = service.client();
    half.write(halfHandshake);
    auto busy = service.secureClient(trust());
    EXPECT_EQ(busy.sendRaw(askLive).status, 200);
    EXPECT_EQ(service.secureClient(trust()).sendRaw(askLive).status, 200);
    EXPECT_TRUE(half.isClosedByService()) << "it made room";
    EXPECT_EQ(busy.sendRaw(askLive).status, 200);
}

TEST_F(Tls, TakesANewCertificateForNewConnectionsAndKeepsTheOpenOnes)
{
    auto service = served();
    auto before = service.secureClient(trust());
    EXPECT_EQ(before.sendRaw(askLive).status, 200);
    const auto copy = folder.file("copy.pem");
    std::filesystem::copy(certificate.file(), copy);
    const SelfMadeCertificate next{folder.file("first")}; // in its place
    EXPECT_EQ(service.reloadCertificate(), std::nullopt);
    EXPECT_EQ(service.secureClient({.authorityFile = next.file()}).sendRaw(askLive).status, 200);
    EXPECT_EQ(service.secureClient({.authorityFile = copy}).sendRaw(askLive).status, 0);
    EXPECT_EQ(before.sendRaw(askLive).status, 200);
}

TEST_F(Tls, KeepsItsCertificateWhenTheNewOneIsBad)
{
    namespace fs = std::filesystem;
    auto service = served();
    const auto good = folder.file("good.pem");
    fs::copy(certificate.file(), good);
    const auto refusal = [&] { return service.reloadCertificate().value_or("taken"); };
    const auto stillServes = [&] {
        return service.secureClient({.authorityFile = good}).sendRaw(askLive).status == 200;
    };

    const SelfMadeCertificate other{folder.file("other")};
    fs::copy_file(other.file(), certificate.file(), fs::copy_options::overwrite_existing);
    EXPECT_NE(refusal().find("cannot use the key"), std::string::npos) << "it is another certificate's";
    EXPECT_TRUE(stillServes());

    const SelfMadeCertificate past{folder.file("first"), SelfMadeCertificate::Validity::past};
    EXPECT_NE(refusal().find("no longer valid"), std::string::npos);
    EXPECT_TRUE(stillServes());

    std::ofstream{certificate.file()} << "-----BEGIN CERTIFICATE-----\nhalf a fi";
    EXPECT_NE(refusal().find("cannot read a certificate"), std::string::npos);
    fs::remove(certificate.file());
    EXPECT_NE(refusal().find("cannot read a certificate"), std::string::npos);
    EXPECT_TRUE(stillServes());
}

TEST_F(Tls, IsReadAgainByAProcessThatIsToldSo)
{
    const auto database = folder.file("books.sqlite");
    ServiceProcess process{TALLYFOLD_SERVICE_PROGRAM,
                           database,
                           {"--create", "--tls-certificate", certificate.file(), "--tls-key", certificate.keyFile()}};
    ASSERT_NE(process.port(), 0);
    EXPECT_EQ((HttpClient{process.port(), trust()}.sendRaw(askLive).status), 200);
    const SelfMadeCertificate next{folder.file("first")};
    process.hangUp();
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    int status = 0;
    while (status != 200 && std::chrono::steady_clock::now() < until) {
        std::this_thread::yield(); // the signal is on its way
        status = HttpClient{process.port(), HttpClient::Tls{next.file()}}.sendRaw(askLive).status;
    }
    EXPECT_EQ(status, 200);
    EXPECT_EQ(process.stop(), 0);
}

}
