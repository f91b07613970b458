#include <utility>

#include "LedgerCore/Client/APIClient.h"
#include "LedgerCore/Client/Clock.h"
#include "LedgerCore/Client/IdentifierSource.h"
#include "LedgerCore/Client/LedgerStore.h"

QCoro::Task<Result<void>> LedgerStore::postTransaction(const TransactionInput& input, bool publishError)
{
    return operation(publishing(publishError), [this, body = Json::encode(input)] {
        return submit({.method = "POST", .path = "v1/transactions", .body = body});
    });
}

std::optional<Reversal> LedgerStore::keptReversal(const std::string& entryID) const
{
    const auto kept = m_reversalRequests.find(entryID);
    return kept == m_reversalRequests.end() ? std::nullopt : std::optional{kept->second};
}

QCoro::Task<Result<void>> LedgerStore::reverseTransaction(std::string id, std::string reason)
{
    return operation(Publishing::on,
                     [this, id = std::move(id), reason = std::move(reason)] { return sendReversal(id, reason); });
}

QCoro::Task<Result<void>> LedgerStore::sendReversal(std::string id, std::string reason)
{
    if (!m_token)
        co_return std::unexpected(clientError(ClientCode::noSession));
    auto kept = m_reversalRequests.find(id);
    if (kept == m_reversalRequests.end()) {
        Reversal fresh{.reason = std::move(reason), .idempotencyKey = newIdentifier(), .date = today()};
        kept = m_reversalRequests.emplace(id, std::move(fresh)).first;
    }
    auto running =
        mutate({.method = "POST", .path = "v1/transactions/" + id + "/reverse", .body = Json::encode(kept->second)});
    auto reversed = co_await running;
    if (reversed)
        m_reversalRequests.erase(id);
    co_return reversed;
}
