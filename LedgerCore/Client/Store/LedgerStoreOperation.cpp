#include <limits>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Snapshots/BooksReply.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotLoading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

QCoro::Task<Result<void>> failing(Failure failure)
{
    co_return std::unexpected(std::move(failure));
}

std::optional<CategoryCreationResponse> created(SplitReply reply)
{
    auto decoded = Json::decode<CategoryCreationResponse>(reply.rest);
    return decoded && reply.complete(decoded->snapshot) ? std::optional{std::move(*decoded)} : std::nullopt;
}

/// Asks a service that can tell what is new not to send the whole with every command.
constexpr auto minimalReply = "return=minimal";

}

std::optional<Failure> LedgerStore::begin(Publishing publishing)
{
    requireMainThread();
    if (m_isBusy) {
        Failure busy = clientError(ClientCode::busy);
        if (publishing == Publishing::on)
            publish(busy);
        return busy;
    }
    m_quietRun = 0;
    m_connection.abort(Errand::background);
    assign(m_isBusy, true, &LedgerStore::isBusyChanged);
    assign(m_errorMessage, {}, &LedgerStore::errorMessageChanged);
    return std::nullopt;
}

QCoro::Task<void> LedgerStore::finish(Publishing publishing, std::optional<Failure> failure)
{
    const QPointer<LedgerStore> self = this;
    const bool isExpired = failure && m_connection.token() && endsSession(*failure);
    if (isExpired) {
        auto clearing = clearExpiredSession(*failure);
        co_await clearing;
    }
    if (!self)
        co_return;
    assign(m_isBusy, false, &LedgerStore::isBusyChanged);
    // Whoever is signed out is told why, also where a screen that is now gone wanted to tell.
    if (failure && (publishing == Publishing::on || isExpired))
        publish(*failure);
}

QCoro::Task<Result<void>> LedgerStore::operation(Publishing publishing, std::function<QCoro::Task<Result<void>>()> work)
{
    return operation<void>(publishing, std::move(work));
}

QCoro::Task<void> LedgerStore::perform(std::function<QCoro::Task<Result<void>>()> work)
{
    const QPointer<LedgerStore> self = this;
    auto running = work();
    const auto outcome = co_await running;
    if (self && !outcome)
        publish(outcome.error());
}

QCoro::Task<Result<void>> LedgerStore::change(APIRequest request, Publishing publishing)
{
    return operation(publishing, [this, request = std::move(request)] { return mutate(request); });
}

QCoro::Task<Result<void>> LedgerStore::submit(APIRequest request, Publishing publishing)
{
    return operation(publishing, [this, request = std::move(request)] { return sendCommand(request); });
}

QCoro::Task<Result<std::string>> LedgerStore::create(APIRequest request, Publishing publishing)
{
    return operation<std::string>(publishing, [this, request = std::move(request)] { return sendCreation(request); });
}

QCoro::Task<Result<void>> LedgerStore::askAndRead(APIRequest request, Publishing publishing, Reader read)
{
    return operation(publishing, [this, request = std::move(request), read = std::move(read)] {
        auto prepared = m_connection.authorized(request);
        return prepared ? fetchRecord(std::move(*prepared), read) : failing(prepared.error());
    });
}

QCoro::Task<Result<void>> LedgerStore::askAndReadQuietly(APIRequest request, Reader read)
{
    requireMainThread();
    if (m_isBusy)
        co_return std::unexpected(Cancelled{});
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    prepared->errand = Errand::background;
    const QPointer<LedgerStore> self = this;
    auto fetching = fetchRecord(std::move(*prepared), std::move(read));
    const auto fetched = co_await fetching;
    if (!self)
        co_return std::unexpected(Cancelled{});
    if (fetched || !m_connection.token() || !endsSession(fetched.error()))
        co_return fetched;
    auto clearing = clearExpiredSession(fetched.error());
    co_await clearing;
    if (self)
        publish(fetched.error());
    co_return fetched;
}

QCoro::Task<Result<void>> LedgerStore::askAndReadBeside(APIRequest request, Reader read)
{
    requireMainThread();
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    prepared->errand = Errand::keeping;
    auto fetching = fetchRecord(std::move(*prepared), std::move(read));
    co_return co_await fetching;
}

QCoro::Task<Result<void>> LedgerStore::postAndRead(APIRequest request, Reader read)
{
    return operation(Publishing::on, [this, request = std::move(request), read = std::move(read)] { //
        return fetchRecord(request, read);
    });
}

QCoro::Task<Result<void>> LedgerStore::checkFreshBooks(Publishing publishing, FromBooks<void> check)
{
    return operation(publishing, [this, check = std::move(check)] { return loadAndCheck(check); });
}

QCoro::Task<Result<void>> LedgerStore::loadAndCheck(FromBooks<void> check)
{
    auto loading = load();
    const auto loaded = co_await loading;
    if (!loaded)
        co_return std::unexpected(loaded.error());
    const auto outcome = std::make_shared<Result<void>>(std::unexpected(Failure{Cancelled{}}));
    auto checking = runForSize(onWorker, [check = std::move(check), books = m_snapshot, outcome] { //
        *outcome = check(*books);
    });
    co_await checking;
    co_return std::move(*outcome);
}

QCoro::Task<Result<void>> LedgerStore::fetchRecord(APIRequest request, Reader read)
{
    auto sent = m_connection.exchange(std::move(request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    const auto isRead = std::make_shared<bool>(false);
    const auto size = reply->body.size();
    auto reading = runForSize(size, [isRead, read = std::move(read), text = std::move(reply->body)] { //
        *isRead = read(text);
    });
    co_await reading;
    co_return *isRead ? Result<void>{} : std::unexpected(invalidResponse());
}

QCoro::Task<Result<void>> LedgerStore::sendCommand(APIRequest request)
{
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    auto sent = m_connection.exchange(std::move(*prepared));
    const auto accepted = co_await sent;
    if (!accepted)
        co_return std::unexpected(accepted.error());
    auto reloading = reload();
    co_return co_await reloading;
}

QCoro::Task<Result<std::string>> LedgerStore::sendCreation(APIRequest request)
{
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    auto sent = BooksReply::asked(&m_connection, std::move(*prepared), m_snapshot);
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    auto tag = reply->tag();
    auto reading = BooksReply::read<CategoryCreationResponse>(std::move(*reply), created);
    auto decoded = co_await reading;
    if (!decoded)
        co_return std::unexpected(decoded.error());
    replaceSnapshot(
        {.fresh = releasedByWorker<LedgerSnapshot>(std::move(decoded->snapshot)), .held = {}, .tag = std::move(tag)});
    co_return std::move(decoded->createdCategoryID);
}

QCoro::Task<Result<void>> LedgerStore::mutate(APIRequest request)
{
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    if (!m_snapshotTag.empty())
        prepared->headers.push_back({"Prefer", minimalReply});
    auto sent = m_connection.exchange(std::move(*prepared));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    if (reply->header("preference-applied") == minimalReply) {
        if (!Json::decode<OK>(reply->body).value_or(OK{}).ok)
            co_return std::unexpected(invalidResponse());
        auto reloading = reload();
        co_return co_await reloading;
    }
    auto whole = BooksReply::arrived(&m_connection, std::move(*reply), m_snapshot);
    auto reading = SnapshotLoading::readWhole(std::move(whole), m_snapshot);
    auto loaded = co_await reading;
    if (!loaded)
        co_return std::unexpected(loaded.error());
    replaceSnapshot(std::move(*loaded));
    co_return Result<void>{};
}

QCoro::Task<Result<void>> LedgerStore::reload()
{
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
