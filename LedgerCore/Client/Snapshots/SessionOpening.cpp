#include "LedgerCore/Client/Snapshots/SessionOpening.h"

#include <utility>

#include <QCoro/QCoroFuture>
#include <QPromise>

#include "LedgerCore/Client/Snapshots/BooksReply.h"

/// What one person waits for: over with the first answer.
class SessionOpening::Wait {
public:
    Wait() { m_over.start(); }

    [[nodiscard]] bool isOver() const { return m_isOver; }
    [[nodiscard]] QFuture<void> over() { return m_over.future(); }
    [[nodiscard]] Result<Reply> answer() { return std::move(m_answer); }

    void end(Result<Reply> answer)
    {
        m_isOver = true;
        m_answer = std::move(answer);
        m_over.finish();
    }

private:
    bool m_isOver = false;
    QPromise<void> m_over;
    Result<Reply> m_answer = std::unexpected(Failure{Cancelled{}});
};

namespace {

QCoro::Task<Result<SessionOpening::Reply>> answered(QPointer<ServiceConnection> connection, APIRequest request,
                                                    SnapshotPointer held, SessionOpening::Decode decode)
{
    auto asking = BooksReply::asked(connection, std::move(request), std::move(held));
    auto reply = co_await asking;
    if (!reply)
        co_return std::unexpected(reply.error());
    auto tag = reply->tag();
    auto reading = BooksReply::read<CompanyRegistrationResponse>(std::move(*reply), std::move(decode));
    auto response = co_await reading;
    if (!response)
        co_return std::unexpected(response.error());
    co_return SessionOpening::Reply{.response = std::move(*response), .tag = std::move(tag)};
}

}

QCoro::Task<Result<SessionOpening::Reply>> SessionOpening::ask(APIRequest request, SnapshotPointer held, Decode decode)
{
    const QPointer<ServiceConnection> connection = &m_connection;
    const auto wait = std::make_shared<Wait>();
    m_wait = wait;
    request.errand = Errand::opening;
    auto known = request.token;
    m_connection.endUnwanted(
        hear(wait, answered(connection, std::move(request), std::move(held), std::move(decode)), std::move(known)));
    const auto over = wait->over();
    co_await over;
    if (!connection)
        co_return std::unexpected(Cancelled{});
    co_return wait->answer();
}

/// Gives the token that was opened for nobody.
QCoro::Task<std::optional<std::string>>
SessionOpening::hear(std::shared_ptr<Wait> wait, QCoro::Task<Result<Reply>> answering, std::optional<std::string> known)
{
    auto answer = co_await answering;
    if (!wait->isOver()) {
        wait->end(std::move(answer));
        co_return std::nullopt;
    }
    const auto* opened = answer ? std::get_if<AuthResponse>(&answer->response) : nullptr;
    co_return opened && opened->token != known ? std::optional{opened->token} : std::nullopt;
}

bool SessionOpening::isAwaited() const
{
    const auto wait = m_wait.lock();
    return wait && !wait->isOver();
}

void SessionOpening::giveUp()
{
    if (isAwaited())
        m_wait.lock()->end(std::unexpected(Cancelled{}));
}
