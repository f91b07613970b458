#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Http/SessionHold.h"

/// The way to one service: its address, the token of the session there and the client that sends. Whoever waits for a
/// reply when the connection goes is told `Cancelled`. Main thread only.
class ServiceConnection final : public QObject {
    Q_OBJECT
public:
    ServiceConnection(std::string address, TransferLimits limits);
    ~ServiceConnection() override;

    [[nodiscard]] const std::string& address() const { return m_address; }
    /// Forgets the token, which belongs to the service of the old address.
    void setAddress(std::string address);
    [[nodiscard]] const std::optional<std::string>& token() const { return m_token; }
    void setToken(std::optional<std::string> token);
    /// Whether another window of this person goes on with the session: ending it here would end it there.
    [[nodiscard]] bool sharesSession() const { return m_hold && m_hold->isShared(); }
    /// Whether a window of this person, perhaps this one, uses the session of this token.
    [[nodiscard]] bool isUsed(const std::string& token) const { return SessionHold{m_address, token}.isShared(); }

    /// The request with the token of the session, or why there is none.
    [[nodiscard]] std::expected<APIRequest, Failure> authorized(APIRequest request) const;
    QCoro::Task<Result<HttpReply>> exchange(APIRequest request);
    /// Hands the token back to the service, which ends its session. Nobody waits for the service to take notice.
    void endSession(std::string token);
    /// The same for a session that is only coming, if one does.
    void endUnwanted(QCoro::Task<std::optional<std::string>> coming);
    /// Is over once no session that was ended, or is only coming, is waiting for the service's answer.
    QCoro::Task<void> sessionsEnded();
    /// Whether something that changes records was sent and is not answered: nobody knows yet what came of it.
    [[nodiscard]] bool awaitsChange() const { return m_awaitedChanges > 0; }
    /// Gives up the requests of this errand that are under way, or all.
    void abort(std::optional<Errand> errand = {});

private:
    std::expected<APIClient, Failure> client();
    QCoro::Task<void> sendFarewell(QCoro::Task<std::optional<std::string>> token, QCoro::Task<void> earlier);

    std::string m_address;
    TransferLimits m_limits;
    std::optional<std::string> m_token;
    std::unique_ptr<SessionHold> m_hold; // as long as there is a token
    int m_awaitedChanges = 0;
    QCoro::Task<void> m_farewells;       // all that were sent
    std::unique_ptr<APIClient> m_client; // to `m_address`, made when it is first needed
};
