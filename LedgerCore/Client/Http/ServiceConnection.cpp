#include "LedgerCore/Client/Http/ServiceConnection.h"

#include <utility>

#include <QPointer>

namespace {

QCoro::Task<void> nothing()
{
    co_return;
}

}

ServiceConnection::ServiceConnection(std::string address, TransferLimits limits)
    : m_address(std::move(address)), m_limits(limits), m_farewells(nothing())
{
}

ServiceConnection::~ServiceConnection() = default;

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
    const bool isAside = request.errand == Errand::farewell || request.errand == Errand::keeping;
    const int changes = request.method == "GET" || isAside ? 0 : 1;
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
    m_farewells = sendFarewell(std::move(token), std::exchange(m_farewells, nothing()));
}

QCoro::Task<void> ServiceConnection::sessionsEnded()
{
    return std::exchange(m_farewells, nothing());
}

QCoro::Task<void> ServiceConnection::sendFarewell(std::string token, QCoro::Task<void> earlier)
{
    auto sending =
        exchange({.method = "POST", .path = "v1/auth/logout", .token = std::move(token), .errand = Errand::farewell});
    co_await sending;
    co_await earlier;
}

void ServiceConnection::abort(std::optional<Errand> errand)
{
    if (m_client)
        m_client->abort(errand);
}
