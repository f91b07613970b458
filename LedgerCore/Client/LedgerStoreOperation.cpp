#include <utility>

#include <QPointer>

#include "LedgerCore/Client/APIClient.h"
#include "LedgerCore/Client/LedgerStore.h"

QCoro::Task<Result<void>> LedgerStore::operation(Publishing publishing, std::function<QCoro::Task<Result<void>>()> work)
{
    requireMainThread();
    if (m_isBusy) {
        const Failure busy = clientError(ClientCode::busy);
        if (publishing == Publishing::on)
            publish(busy);
        co_return std::unexpected(busy);
    }
    assign(m_isBusy, true, &LedgerStore::isBusyChanged);
    assign(m_errorMessage, {}, &LedgerStore::errorMessageChanged);

    const QPointer<LedgerStore> self = this;
    auto running = work();
    auto outcome = co_await running;
    if (self && !outcome) {
        auto clearing = clearExpiredSession(outcome.error());
        co_await clearing;
    }
    if (!self)
        co_return outcome;
    assign(m_isBusy, false, &LedgerStore::isBusyChanged);
    if (!outcome && publishing == Publishing::on)
        publish(outcome.error());
    co_return outcome;
}

QCoro::Task<void> LedgerStore::perform(std::function<QCoro::Task<Result<void>>()> work)
{
    const QPointer<LedgerStore> self = this;
    auto running = work();
    const auto outcome = co_await running;
    if (self && !outcome)
        publish(outcome.error());
}

std::expected<APIClient, Failure> LedgerStore::client()
{
    auto address = APIClient::validatedURL(m_endpoint);
    if (!address)
        return std::unexpected(address.error());
    if (!m_cachedClient || m_cachedClient->baseURL() != *address)
        m_cachedClient =
            std::make_unique<APIClient>(std::move(*address), std::make_shared<HttpSession>(m_environment.limits));
    return *m_cachedClient;
}

std::expected<APIRequest, Failure> LedgerStore::authorized(APIRequest request) const
{
    if (!m_token)
        return std::unexpected(clientError(ClientCode::noSession));
    request.token = m_token;
    return request;
}

QCoro::Task<Result<std::string>> LedgerStore::exchange(APIRequest request)
{
    const auto client = this->client();
    if (!client)
        co_return std::unexpected(client.error());
    const QPointer<LedgerStore> self = this;
    auto sent = client->bytes(std::move(request));
    auto reply = co_await sent;
    if (!self)
        co_return std::unexpected(Cancelled{});
    co_return reply;
}

QCoro::Task<Result<void>> LedgerStore::mutate(APIRequest request)
{
    auto fetching = fetchSnapshot(std::move(request));
    auto loaded = co_await fetching;
    if (!loaded)
        co_return std::unexpected(loaded.error());
    replaceSnapshot(std::move(*loaded));
    co_return Result<void>{};
}

QCoro::Task<Result<void>> LedgerStore::submit(APIRequest request)
{
    auto prepared = authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    auto sent = exchange(std::move(*prepared));
    const auto accepted = co_await sent;
    if (!accepted)
        co_return std::unexpected(accepted.error());

    // The command is carried out, whatever becomes of the reload: nobody may be invited to send it again.
    const QPointer<LedgerStore> self = this;
    auto loading = load();
    const auto loaded = co_await loading;
    if (loaded || !self)
        co_return Result<void>{};
    auto clearing = clearExpiredSession(loaded.error());
    co_await clearing;
    if (self)
        publish(loaded.error());
    co_return Result<void>{};
}
