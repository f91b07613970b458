#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Http/ServiceConnection.h"
#include "LedgerCore/Client/Snapshots/EntryStream.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// Asks the service for sessions. Whoever waits for one may give it up; the service is heard out all the same, and the
/// session that it has opened by then is handed back, so that none lies about there.
class SessionOpening {
public:
    struct Reply {
        CompanyRegistrationResponse response;
        std::string tag; // of the snapshot
    };
    using Decode = std::function<std::optional<CompanyRegistrationResponse>(SplitReply)>;

    explicit SessionOpening(ServiceConnection& connection) : m_connection{connection} {}

    /// One at a time. `held` are the books at hand.
    QCoro::Task<Result<Reply>> ask(APIRequest request, SnapshotPointer held, Decode decode);
    /// Whether somebody waits for the answer.
    [[nodiscard]] bool isAwaited() const;
    /// Tells whoever waits `Cancelled`.
    void giveUp();

private:
    class Wait;
    static QCoro::Task<std::optional<std::string>>
    hear(std::shared_ptr<Wait> wait, QCoro::Task<Result<Reply>> answering, std::optional<std::string> known);

    ServiceConnection& m_connection;
    std::weak_ptr<Wait> m_wait; // of the last who asked
};
