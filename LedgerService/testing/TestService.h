#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerService/Http/Connections/Server.h"
#include "LedgerService/testing/HttpClient.h"
#include "LedgerService/testing/TestDatabase.h"

namespace LedgerService {

class Connection;

/// The real service on a real database, in this process. It holds the company "sample" of `SampleBooks`, whose
/// members sign in as "<id>@sample.example", and its clock stands still unless moved.
class TestService {
public:
    static constexpr auto password = "an open secret";

    explicit TestService(const std::function<void(ServerOptions&)>& adjust = [](ServerOptions&) {});
    ~TestService();

    [[nodiscard]] HttpClient client() const { return HttpClient{m_server->port()}; }
    /// A client that comes from another address of this machine, such as 127.0.0.2.
    [[nodiscard]] HttpClient clientFrom(const std::string& address) const
    {
        return HttpClient{m_server->port(), address};
    }
    [[nodiscard]] HttpClient secureClient(HttpClient::Tls tls) const { return {m_server->port(), std::move(tls)}; }
    [[nodiscard]] std::uint16_t port() const { return m_server->port(); }
    [[nodiscard]] const std::string& databaseFile() const { return m_database.name(); }
    /// What receipts and seals are kept beside.
    [[nodiscard]] const std::string& files() const { return m_database.files(); }

    /// A token of the member, made without a password.
    [[nodiscard]] std::string tokenOf(const std::string& memberID, const std::string& companyID = "sample");

    /// One request with that member's token.
    HttpAnswer as(const std::string& memberID, std::string_view method, const std::string& path,
                  const std::string& body = "");

    /// What the member's snapshot holds now.
    LedgerSnapshot snapshotOf(const std::string& memberID);

    /// Works on the database beside the service, in one writing transaction.
    void write(const std::function<void(Connection&)>& work);

    /// Everything that `verify` finds wrong, in lines; empty for sound books.
    [[nodiscard]] std::string problems() const;

    /// The service's clock.
    [[nodiscard]] Clock clock() const;

    /// Waits for so many letters that were sent; as they stand in their files, oldest first.
    [[nodiscard]] std::vector<std::string> mails(std::size_t count) const;

    /// Waits until the service has taken in so many bytes of requests that are not whole yet.
    void waitForUnfinished(std::size_t bytes) const;

    void moveClock(std::chrono::seconds by) { *m_offset += by; }
    void stop() { m_server->stop(); }
    /// Has the certificate read again, as SIGHUP does.
    std::optional<std::string> reloadCertificate() { return m_server->reloadCertificate(); }

private:
    TemporaryFolder m_folder;
    TestDatabase m_database{m_folder};
    std::shared_ptr<std::chrono::seconds> m_offset;
    std::unique_ptr<Server> m_server;
};

/// Writes the company of `SampleBooks` under this id.
void foundSample(Connection& connection, const std::string& companyID);

}
