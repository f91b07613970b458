#include "LedgerCore/Client/Http/APIClient.h"

#include <algorithm>
#include <array>

#include <QCoro/QCoroFuture>
#include <QUrl>
#include <QtConcurrentRun>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"

namespace {

/// The part between "//" and the path, as it was written.
std::string_view authority(std::string_view address)
{
    const auto start = address.find("//");
    if (start == std::string_view::npos)
        return {};
    address.remove_prefix(start + 2);
    return address.substr(0, address.find_first_of("/?#"));
}

/// The host as it was written, so that no other spelling of a number passes for this machine.
bool isThisMachine(std::string_view authority)
{
    constexpr std::array<std::string_view, 4> names{"localhost", "127.0.0.1", "::1", "[::1]"};
    const auto port = authority.rfind(':');
    const bool hasPort = port != std::string_view::npos && !authority.ends_with(']');
    return std::ranges::find(names, hasPort ? authority.substr(0, port) : authority) != names.end();
}

bool isAcceptable(std::string_view text)
{
    const QUrl url{QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), QUrl::StrictMode};
    if (!url.isValid() || url.host().isEmpty() || url.hasQuery() || url.hasFragment())
        return false;
    const auto written = authority(text);
    if (written.contains('@'))
        return false;
    if (!url.path().isEmpty() && url.path() != QStringLiteral("/"))
        return false;
    if (url.scheme() == QStringLiteral("https"))
        return true;
    return url.scheme() == QStringLiteral("http") && isThisMachine(written);
}

std::string encoded(const std::string& text)
{
    return QUrl::toPercentEncoding(QString::fromStdString(text)).toStdString();
}

std::string join(std::string_view base, const APIRequest& request)
{
    QUrl url{QString::fromUtf8(base.data(), static_cast<qsizetype>(base.size())), QUrl::StrictMode};
    url.setPath(QStringLiteral("/") + QString::fromStdString(request.path), QUrl::DecodedMode);
    auto text = url.toEncoded().toStdString();
    char sign = '?';
    for (const auto& [name, value] : request.query) {
        text += sign + encoded(name) + '=' + encoded(value);
        sign = '&';
    }
    return text;
}

Failure failureOf(TransportFailure failure)
{
    switch (failure) {
    case TransportFailure::cancelled:
        return Cancelled{};
    case TransportFailure::network:
        return clientError(ClientCode::network);
    case TransportFailure::unreadable:
        return invalidResponse();
    }
    return invalidResponse();
}

APIError refusal(const HttpReply& reply)
{
    const auto body = Json::decode<ErrorReply>(reply.body);
    const auto detail = body ? body->error : ErrorReply::Detail{};
    return {.status = reply.status,
            .code = detail.code.value_or(std::string{ClientCode::httpError}),
            .message = detail.code ? detail.message.value_or("") : ""};
}

}

std::expected<std::string, APIError> APIClient::validatedURL(std::string_view text)
{
    if (!isAcceptable(text))
        return std::unexpected(clientError(ClientCode::invalidServerURL));
    return std::string{text};
}

APIClient::APIClient(std::string baseURL, std::shared_ptr<HttpSession> session)
    : m_baseURL(std::move(baseURL)), m_session(session ? std::move(session) : std::make_shared<HttpSession>())
{
}

QCoro::Task<Result<HttpReply>> APIClient::send(APIRequest request) const
{
    const bool isConditional =
        std::ranges::any_of(request.headers, [](const HttpHeader& each) { return each.name == "If-None-Match"; });
    const auto base = validatedURL(m_baseURL);
    if (!base)
        co_return std::unexpected(base.error());
    auto sent = HttpSession::send(m_session, {.url = join(*base, request),
                                              .method = std::move(request.method),
                                              .token = std::move(request.token),
                                              .body = std::move(request.body),
                                              .headers = std::move(request.headers),
                                              .errand = request.errand,
                                              .sink = std::move(request.sink)});
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(failureOf(reply.error()));
    const bool isSuccess = reply->status >= 200 && reply->status <= 299;
    const bool isHeld = isConditional && reply->status == HttpStatus::notModified;
    if (!isSuccess && !isHeld)
        co_return std::unexpected(refusal(*reply));
    co_return std::move(*reply);
}

QCoro::Task<Result<std::string>> APIClient::bytes(APIRequest request) const
{
    auto sent = send(std::move(request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return std::move(reply->body);
}

QCoro::Task<void> runForSize(std::size_t size, std::function<void()> work)
{
    if (size <= quicklyRead) {
        work();
        co_return;
    }
    const auto finished = QtConcurrent::run(std::move(work));
    co_await finished;
}
