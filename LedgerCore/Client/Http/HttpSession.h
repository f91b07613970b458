#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QPointer>

class BodySink;
class QNetworkAccessManager;
class QNetworkReply;
class TransferWatch;

/// What a request may take before it is given up, and how long a connection lies idle before it is no longer used.
struct TransferLimits {
    std::chrono::milliseconds idle{30'000};   // without a byte in either direction
    std::chrono::milliseconds answer{60'000}; // until the head of the reply is there
    std::chrono::milliseconds whole{90'000};  // until its last byte is there
    std::chrono::milliseconds reuse{10'000};  // a connection is kept so long, well below what services allow
    std::int64_t bodyBytes = 1LL << 30;       // of a reply, unpacked: more than two million entries
};

/// On whose behalf a request is sent, and so who gives it up.
enum class Errand {
    person,     // somebody waits for it
    background, // nobody does; it gives way to what a person asks for
    keeping,    // nobody does; it keeps what a person has typed, and goes on beside what they ask for
    opening,    // begins a session, and is heard out also when nobody waits for it any more
    farewell,   // the last word of a session, which is sent whatever follows
};

/// Statuses that mean something of their own here.
namespace HttpStatus {
inline constexpr int deltaUsed = 226; // the body says what differs from a state that the client holds
inline constexpr int notModified = 304;
}

struct HttpHeader {
    std::string name;
    std::string value;
};

struct HttpRequest {
    std::string url;
    std::string method = "GET";
    std::optional<std::string> token = {}; // sent as bearer
    std::optional<std::string> body = {};  // JSON
    std::vector<HttpHeader> headers = {};  // beyond those that every request has
    Errand errand = Errand::person;
    std::shared_ptr<BodySink> sink = {}; // takes the body of a successful reply, which then has none
};

struct HttpReply {
    int status = 0;
    std::string body;
    std::vector<HttpHeader> headers = {}; // names in lower case

    /// The value of the header of this name in lower case; empty without one.
    [[nodiscard]] std::string_view header(std::string_view name) const;
};

/// Why no whole reply came.
enum class TransportFailure { cancelled, network, unreadable };

/// The transport: no cookies, no cache, no redirects, no retries of its own. Main thread only.
class HttpSession {
public:
    explicit HttpSession(TransferLimits limits = {});
    ~HttpSession();
    HttpSession(const HttpSession&) = delete;
    HttpSession& operator=(const HttpSession&) = delete;

    /// The session stays alive until its requests have ended.
    static QCoro::Task<std::expected<HttpReply, TransportFailure>> send(std::shared_ptr<HttpSession> session,
                                                                        HttpRequest request);

    /// Gives up the requests of this errand that are under way, or all; each ends as cancelled before this returns.
    void abort(std::optional<Errand> errand = {});

private:
    QNetworkReply* start(const HttpRequest& request);

    TransferLimits m_limits;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    QElapsedTimer m_lastUse;
    struct Transfer {
        QPointer<TransferWatch> watch;
        Errand errand;
    };
    std::vector<Transfer> m_transfers; // under way
};
