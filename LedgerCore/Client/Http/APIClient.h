#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Http/HttpSession.h"
#include "LedgerCore/Domain/Json/Json.h"

/// What a request asks for beside its path, such as "day".
struct QueryField {
    std::string name;
    std::string value;
};

/// One request to the service.
struct APIRequest {
    std::string method = "GET";
    std::string path = {}; // below the base address, such as "v1/snapshot"
    std::vector<QueryField> query = {};
    std::optional<std::string> token = {}; // of the session
    std::optional<std::string> body = {};  // JSON
    std::vector<HttpHeader> headers = {};  // beyond those that every request has
    Errand errand = Errand::person;
    std::shared_ptr<BodySink> sink = {}; // takes the body of a successful reply, which then has none
};

/// The only code that speaks HTTP: one request, one answer, every failure a value. A value itself; copies share the
/// transport.
class APIClient {
public:
    /// The text itself when it is an address that the client may talk to: https, or http on this machine, and nothing
    /// but scheme, host and port.
    static std::expected<std::string, APIError> validatedURL(std::string_view text);

    /// Without a session, the client makes its own.
    explicit APIClient(std::string baseURL, std::shared_ptr<HttpSession> session = {});

    [[nodiscard]] const std::string& baseURL() const { return m_baseURL; }

    /// A successful reply; to a request with "If-None-Match", also the one that nothing has changed.
    [[nodiscard]] QCoro::Task<Result<HttpReply>> send(APIRequest request) const;

    /// The body of a successful reply, which may be empty.
    [[nodiscard]] QCoro::Task<Result<std::string>> bytes(APIRequest request) const;

    /// The record in a successful reply.
    template <class Record>
    [[nodiscard]] QCoro::Task<Result<Record>> request(APIRequest request) const;

    /// Gives up the requests of this errand that are under way, or all.
    void abort(std::optional<Errand> errand = {}) const { m_session->abort(errand); }

private:
    std::string m_baseURL;
    std::shared_ptr<HttpSession> m_session;
};

/// A reply of this size is decoded well within a frame.
inline constexpr std::size_t quicklyRead = 65'536;

/// Runs `work` here when `size` bytes are quickly read, else on a worker.
QCoro::Task<void> runForSize(std::size_t size, std::function<void()> work);

inline Failure invalidResponse()
{
    return clientError(ClientCode::invalidResponse);
}

template <class Record>
QCoro::Task<Result<Record>> APIClient::request(APIRequest request) const
{
    auto sent = bytes(std::move(request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    const auto decoded = std::make_shared<Result<Record>>(std::unexpected(invalidResponse()));
    const auto size = reply->size();
    auto reading = runForSize(size, [body = *std::move(reply), decoded] {
        if (auto record = Json::decode<Record>(body))
            *decoded = std::move(*record);
    });
    co_await reading;
    co_return std::move(*decoded);
}
