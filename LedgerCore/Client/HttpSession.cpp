#include "LedgerCore/Client/HttpSession.h"

#include <utility>

#include <QCoro/QCoroNetworkReply>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include "LedgerCore/Client/TransferWatch.h"

namespace {

QNetworkRequest networkRequest(const HttpRequest& request)
{
    QNetworkRequest prepared{QUrl{QString::fromStdString(request.url), QUrl::StrictMode}};
    prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    prepared.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    prepared.setRawHeader("Accept", "application/json");
    // The transport insists on these two; it would name the machine's language and pose as a browser.
    prepared.setRawHeader("Accept-Language", "*");
    prepared.setRawHeader("User-Agent", "Tallyfold");
    if (request.token)
        prepared.setRawHeader("Authorization", QByteArray::fromStdString("Bearer " + *request.token));
    if (request.body)
        prepared.setRawHeader("Content-Type", "application/json");
    return prepared;
}

bool isLoopback(const QString& host)
{
    return host == QStringLiteral("localhost") || QHostAddress{host}.isLoopback();
}

/// Errors by which the transport reports a status that did arrive whole.
bool isAboutStatus(QNetworkReply::NetworkError error, int status)
{
    constexpr int proxyAuthenticationRequired = 407;
    if (error == QNetworkReply::ProxyAuthenticationRequiredError)
        return status == proxyAuthenticationRequired;
    return error == QNetworkReply::ProtocolInvalidOperationError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
           error >= QNetworkReply::InternalServerError;
}

bool isNotHttp(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError || error == QNetworkReply::ProtocolFailure ||
           error == QNetworkReply::ProtocolUnknownError;
}

std::expected<HttpReply, TransportFailure> conclude(QNetworkReply& reply, TransferWatch::Ending ending)
{
    if (ending == TransferWatch::Ending::cancelled)
        return std::unexpected(TransportFailure::cancelled);
    const auto error = reply.error();
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (ending == TransferWatch::Ending::timedOut)
        return std::unexpected(TransportFailure::network);
    if (status == 0)
        return std::unexpected(isNotHttp(error) ? TransportFailure::notHttp : TransportFailure::network);
    if (error != QNetworkReply::NoError && !isAboutStatus(error, status))
        return std::unexpected(TransportFailure::network);
    return HttpReply{.status = status, .body = reply.readAll().toStdString()};
}

}

HttpSession::HttpSession(TransferLimits limits) : m_limits(limits), m_manager(std::make_unique<QNetworkAccessManager>())
{
}

HttpSession::~HttpSession()
{
    abort();
}

QCoro::Task<std::expected<HttpReply, TransportFailure>> HttpSession::send(std::shared_ptr<HttpSession> session,
                                                                          HttpRequest request)
{
    auto* const reply = session->start(request);
    auto* const watch = new TransferWatch(*reply, session->m_limits);
    co_await reply;
    auto outcome = conclude(*reply, watch->ending());
    std::erase(session->m_replies, reply);
    reply->deleteLater();
    co_return outcome;
}

void HttpSession::abort()
{
    // Ending a transfer resumes whoever waits for it, who may take its reply off the list.
    for (const auto& reply : std::vector{m_replies}) {
        auto* const watch = reply ? reply->findChild<TransferWatch*>() : nullptr;
        if (watch)
            watch->stop(TransferWatch::Ending::cancelled);
    }
}

QNetworkReply* HttpSession::start(const HttpRequest& request)
{
    const auto prepared = networkRequest(request);
    // What is meant for this machine never goes through a proxy.
    m_manager->setProxy(isLoopback(prepared.url().host()) ? QNetworkProxy{QNetworkProxy::NoProxy}
                                                          : QNetworkProxy{QNetworkProxy::DefaultProxy});
    auto* const reply = request.method == "GET" && !request.body
                            ? m_manager->get(prepared)
                            : m_manager->sendCustomRequest(prepared, QByteArray::fromStdString(request.method),
                                                           QByteArray::fromStdString(request.body.value_or("")));
    m_replies.emplace_back(reply);
    return reply;
}
