#include "LedgerCore/Client/Http/HttpSession.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QCoro/QCoroNetworkReply>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

#include "LedgerCore/Client/Http/BodySink.h"
#include "LedgerCore/Client/Http/SingleUseBody.h"
#include "LedgerCore/Client/Http/TransferWatch.h"

namespace {

constexpr qint64 unpackedUnchecked = 256LL << 20;

QNetworkRequest networkRequest(const HttpRequest& request)
{
    QNetworkRequest prepared{QUrl{QString::fromStdString(request.url), QUrl::StrictMode}};
    prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    prepared.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // The transport says itself which codings it unpacks. Beyond this size it takes what unpacks to a multiple of
    // itself for an attack; long notes that repeat make small books look like one.
    prepared.setDecompressedSafetyCheckThreshold(unpackedUnchecked);
    prepared.setRawHeader("Accept", "application/json");
    // The transport insists on these two; it would name the machine's language and pose as a browser.
    prepared.setRawHeader("Accept-Language", "*");
    prepared.setRawHeader("User-Agent", "Tallyfold");
    if (request.token)
        prepared.setRawHeader("Authorization", QByteArray::fromStdString("Bearer " + *request.token));
    if (request.body)
        prepared.setRawHeader("Content-Type", "application/json");
    for (const auto& [name, value] : request.headers)
        prepared.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    return prepared;
}

bool isLoopback(const QString& host)
{
    return host == QStringLiteral("localhost") || QHostAddress{host}.isLoopback();
}

/// Errors by which the transport reports what the service answered rather than how the answer travelled.
bool isAboutAnswer(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError || error == QNetworkReply::ProxyAuthenticationRequiredError ||
           error >= QNetworkReply::ContentAccessDenied;
}

/// Lets go of the session from the event loop: here its reply is still announcing its end.
void releaseLater(std::shared_ptr<HttpSession> session)
{
    QTimer::singleShot(0, QCoreApplication::instance(), [kept = std::move(session)]() mutable { kept.reset(); });
}

/// What the answer says of its size, as far as that is believable, with room for a reader's padding.
std::size_t announcedSize(const QNetworkReply& reply)
{
    constexpr qlonglong believable = 256LL << 20;
    constexpr qlonglong padding = 256;
    const auto size = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
    return static_cast<std::size_t>(std::clamp(size, 0LL, believable) + padding);
}

/// Room for a body of unknown size that turned out to be large. Memory that is never touched costs nothing, and growing
/// later would copy what has arrived.
constexpr std::size_t largeBody = std::size_t{128} << 20;
constexpr std::size_t smallBody = std::size_t{1} << 18;

/// Straight into its place: a large body copied once more would hold the interface up.
void takeArrived(QNetworkReply& reply, std::string& body)
{
    while (reply.bytesAvailable() > 0) {
        const auto before = body.size();
        if (before > smallBody && body.capacity() - before < static_cast<std::size_t>(reply.bytesAvailable()))
            body.reserve(std::max(largeBody, 2 * before));
        const auto announced = reply.bytesAvailable();
        body.resize_and_overwrite(before + static_cast<std::size_t>(announced), [&](char* bytes, std::size_t) {
            const auto taken = reply.read(bytes + before, announced);
            return before + static_cast<std::size_t>(std::max(taken, qint64{0}));
        });
        if (body.size() == before)
            break;
    }
}

bool isSuccess(const QNetworkReply& reply)
{
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 200 && status <= 299;
}

/// What arrives of a body, and where it goes.
class Arrival {
public:
    Arrival(std::shared_ptr<BodySink> sink, std::int64_t mostBytes) : m_sink(std::move(sink)), m_room(mostBytes) {}

    /// False when more has arrived than there may be.
    [[nodiscard]] bool takeFrom(QNetworkReply& reply)
    {
        if (reply.bytesAvailable() > m_room)
            m_room = -1; // nothing is unpacked that would not be kept
        else
            m_room -= static_cast<std::int64_t>(take(reply));
        return m_room >= 0;
    }

    [[nodiscard]] std::string body() { return std::move(m_body); }

private:
    std::size_t take(QNetworkReply& reply)
    {
        if (!m_sink || !isSuccess(reply)) {
            if (m_body.empty())
                m_body.reserve(announcedSize(reply));
            const auto before = m_body.size();
            takeArrived(reply, m_body);
            return m_body.size() - before;
        }
        std::string piece;
        takeArrived(reply, piece);
        const auto taken = piece.size();
        if (taken > 0)
            m_sink->take(std::move(piece));
        return taken;
    }

    std::string m_body;
    std::shared_ptr<BodySink> m_sink;
    std::int64_t m_room; // for what is still to come
};

/// Takes the body as it arrives, a little at a time: a large one taken in the end would hold the interface up.
std::shared_ptr<Arrival> takeAsItArrives(QNetworkReply& reply, TransferWatch& watch, std::shared_ptr<BodySink> sink,
                                         std::int64_t mostBytes)
{
    auto arrival = std::make_shared<Arrival>(std::move(sink), mostBytes);
    QObject::connect(&reply, &QIODevice::readyRead, &watch, [&reply, &watch, arrival] {
        if (watch.ending() == TransferWatch::Ending::natural && !arrival->takeFrom(reply))
            watch.stop(TransferWatch::Ending::tooLarge);
    });
    return arrival;
}

std::expected<HttpReply, TransportFailure> conclude(QNetworkReply& reply, TransferWatch::Ending ending,
                                                    Arrival& arrival)
{
    if (ending == TransferWatch::Ending::cancelled)
        return std::unexpected(TransportFailure::cancelled);
    if (ending == TransferWatch::Ending::tooLarge)
        return std::unexpected(TransportFailure::unreadable);
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (ending == TransferWatch::Ending::timedOut || !isAboutAnswer(reply.error()) ||
        reply.error() == QNetworkReply::ContentReSendError)
        return std::unexpected(TransportFailure::network);
    // A successful answer with an error could not be unpacked; an answer without a status is none.
    constexpr int firstRefusal = 400;
    if (status == 0 || (status < firstRefusal && reply.error() != QNetworkReply::NoError))
        return std::unexpected(TransportFailure::unreadable);
    if (!arrival.takeFrom(reply))
        return std::unexpected(TransportFailure::unreadable);
    HttpReply concluded{.status = status, .body = arrival.body()};
    for (const auto& [name, value] : reply.rawHeaderPairs())
        concluded.headers.push_back({name.toLower().toStdString(), value.toStdString()});
    return concluded;
}

}

std::string_view HttpReply::header(std::string_view name) const
{
    const auto found = std::ranges::find(headers, name, &HttpHeader::name);
    return found == headers.end() ? std::string_view{} : std::string_view{found->value};
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
    const QPointer<TransferWatch> watch = new TransferWatch(*reply, session->m_limits);
    session->m_transfers.push_back({.watch = watch, .errand = request.errand});
    const auto arrival = takeAsItArrives(*reply, *watch, std::move(request.sink), session->m_limits.bodyBytes);
    co_await reply;
    auto outcome = conclude(*reply, watch->ending(), *arrival);
    std::erase_if(session->m_transfers, [&](const Transfer& each) { return each.watch == watch; });
    session->m_lastUse.start();
    reply->deleteLater();
    if (session.use_count() == 1)
        releaseLater(std::move(session));
    co_return outcome;
}

void HttpSession::abort(std::optional<Errand> errand)
{
    // Ending a transfer resumes whoever waits for it, who takes it off the list.
    for (const auto& transfer : std::vector{m_transfers}) {
        if (transfer.watch && (!errand || transfer.errand == *errand))
            transfer.watch->stop(TransferWatch::Ending::cancelled);
    }
}

QNetworkReply* HttpSession::start(const HttpRequest& request)
{
    const auto prepared = networkRequest(request);
    // A connection that lay idle may be closed at the other end by now, which would pass for a lost reply. Clearing
    // would also end what is under way.
    if (m_transfers.empty() && m_lastUse.isValid() && m_lastUse.elapsed() >= m_limits.reuse.count())
        m_manager->clearConnectionCache();
    // What is meant for this machine never goes through a proxy.
    m_manager->setProxy(isLoopback(prepared.url().host()) ? QNetworkProxy{QNetworkProxy::NoProxy}
                                                          : QNetworkProxy{QNetworkProxy::DefaultProxy});
    if (request.method == "GET" && !request.body)
        return m_manager->get(prepared);
    auto* const body = new SingleUseBody(request.body.value_or(""));
    auto* const reply = m_manager->sendCustomRequest(prepared, QByteArray::fromStdString(request.method), body);
    body->setParent(reply);
    return reply;
}
