#include "LedgerCore/Client/Http/ServiceConnection.h"

#include <utility>

#include <QPointer>

namespace {

QCoro::Task<void> nothing()
{
    co_return;
}

QCoro::Task<std::optional<std::string>> ready(std::string token)
{
    co_return token;
}

}

ServiceConnection::ServiceConnection(std::string address, TransferLimits limits)
    : m_address(std::move(address)), m_limits(limits), m_farewells(nothing())
{
}

ServiceConnection::~ServiceConnection()
{
    abort();
}

void ServiceConnection::setAddress(std::string address)
{
    setToken({});
    m_address = std::move(address);
}

void ServiceConnection::setToken(std::optional<std::string> token)
{
    if (token == m_token)
        return;
    m_token = std::move(token);
    m_hold = m_token ? std::make_unique<SessionHold>(m_address, *m_token) : nullptr;
}

std::expected<APIClient, Failure> ServiceConnection::client()
{
    auto address = APIClient::validatedURL(m_address);
    if (!address)
        return std::unexpected(address.error());
    if (!m_client || m_client->baseURL() != *address)
        m_client = std::make_unique<APIClient>(std::move(*address), std::make_shared<HttpSession>(m_limits));
    return *m_client;
}

std::expected<APIRequest, Failure> ServiceConnection::authorized(APIRequest request) const
{
    if (!m_token)
        return std::unexpected(clientError(ClientCode::noSession));
    request.token = m_token;
    return request;
}

QCoro::Task<Result<HttpReply>> ServiceConnection::exchange(APIRequest request)
{
    const auto client = this->client();
    if (!client)
        co_return std::unexpected(client.error());
    const QPointer<ServiceConnection> self = this;
    const int changes = request.method != "GET" && request.errand == Errand::person ? 1 : 0;
    m_awaitedChanges += changes;
    auto sent = client->send(std::move(request));
    auto reply = co_await sent;
    if (!self)
        co_return std::unexpected(Cancelled{});
    m_awaitedChanges -= changes;
    co_return reply;
}

void ServiceConnection::endSession(std::string token)
{
    endUnwanted(ready(std::move(token)));
}

void ServiceConnection::endUnwanted(QCoro::Task<std::optional<std::string>> coming)
{
    m_farewells = sendFarewell(std::move(coming), std::exchange(m_farewells, nothing()));
}

QCoro::Task<void> ServiceConnection::sessionsEnded()
{
    // What is given up meanwhile may bring more of them.
    const QPointer<ServiceConnection> self = this;
    while (self && !self->m_farewells.isReady()) {
        auto ending = std::exchange(self->m_farewells, nothing());
        co_await ending;
    }
}

QCoro::Task<void> ServiceConnection::sendFarewell(QCoro::Task<std::optional<std::string>> token,
                                                  QCoro::Task<void> earlier)
{
    const auto client = this->client(); // by then the person may have turned to another service
    auto ended = co_await token;
    if (client && ended) {
        auto sending = client->send(
            {.method = "POST", .path = "v1/auth/logout", .token = std::move(ended), .errand = Errand::farewell});
        co_await sending;
    }
    co_await earlier;
}

void ServiceConnection::abort(std::optional<Errand> errand)
{
    if (m_client)
        m_client->abort(errand);
}
