#include <memory>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

/// What the reply to a recorded entry must say: nothing. Most say which entry it is.
struct RecordedEntry {
    std::optional<std::string> id;
};
BOOST_DESCRIBE_STRUCT(RecordedEntry, (), (id))

/// The identifier that the service answered, an empty one where it answered something else. What is no answer of a
/// ledger service leaves the outcome unknown.
Result<std::string> recordedID(const std::string& reply)
{
    if (reply.empty())
        return std::string{};
    auto entry = Json::decode<RecordedEntry>(reply);
    if (!entry)
        return std::unexpected(invalidResponse());
    return std::move(entry->id).value_or("");
}

}

std::optional<MemberIdentity> LedgerStore::signedIn() const
{
    if (!m_snapshot)
        return std::nullopt;
    return MemberIdentity{.endpoint = m_connection.address(),
                          .companyID = m_snapshot->company.id,
                          .memberID = m_snapshot->currentMember.id};
}

std::optional<KeptEntry> LedgerStore::keptEntry() const
{
    const auto member = signedIn();
    const auto* kept = member ? m_kept.entry(*member) : nullptr;
    return kept ? std::optional{*kept} : std::nullopt;
}

void LedgerStore::keepEntry(TransactionInput input, bool outcomeUnknown, const std::string& since)
{
    const auto member = signedIn();
    if (!member)
        return;
    m_kept.keepEntry(*member, std::move(input), outcomeUnknown, since.empty() ? nowStamp() : since);
    Q_EMIT keptChanged();
}

void LedgerStore::forgetEntry(const std::string& idempotencyKey)
{
    const auto member = signedIn();
    if (!member || !m_kept.entry(*member, idempotencyKey))
        return;
    m_kept.forgetEntry(*member, idempotencyKey);
    Q_EMIT keptChanged();
}

bool LedgerStore::wouldLoseUntried()
{
    return m_kept.hasUntried([this](const KeptEntry& each) {
        return drafts().isSafe({each.endpoint, each.companyID, each.memberID}, each.input.idempotencyKey);
    });
}

KeptRequests LedgerStore::keptRequests() const
{
    const auto member = signedIn();
    return member ? m_kept.requests(*member) : KeptRequests{};
}

std::string LedgerStore::nowStamp() const
{
    return LedgerDay::stamp(m_environment.clock.now());
}

QCoro::Task<Result<std::string>> LedgerStore::postTransaction(TransactionInput input, bool publishError)
{
    return operation<std::string>(publishing(publishError), [this, input = std::move(input)] { return record(input); });
}

QCoro::Task<Result<std::string>> LedgerStore::record(TransactionInput input)
{
    const auto member = signedIn();
    auto request = m_connection.authorized({.method = "POST", .path = "v1/transactions", .body = Json::encode(input)});
    if (!request || !member)
        co_return std::unexpected(clientError(ClientCode::noSession));
    const QPointer<LedgerStore> self = this;
    auto sending = m_connection.exchange(std::move(*request));
    const auto reply = co_await sending;
    if (!self)
        co_return std::unexpected(Cancelled{});
    auto recorded = reply ? recordedID(reply->body) : std::unexpected(reply.error());
    m_kept.settleEntry(*member, input, failureIn(recorded), nowStamp());
    Q_EMIT keptChanged();
    if (!recorded)
        co_return recorded;
    auto reloading = reload();
    co_await reloading;
    co_return recorded;
}

QCoro::Task<Result<void>> LedgerStore::importTransactions(std::vector<TransactionInput> inputs,
                                                          std::function<void(std::size_t)> progress)
{
    const QPointer<LedgerStore> self = this;
    const auto confirmed = std::make_shared<std::size_t>(0);
    const auto note = [confirmed, progress = std::move(progress)](std::size_t done) {
        *confirmed = done;
        if (progress)
            progress(done);
    };
    auto running =
        operation(Publishing::on, [this, inputs = std::move(inputs), note] { return recordEach(inputs, note); });
    const auto outcome = co_await running;
    if (self && *confirmed > 0 && !outcome && endsSession(outcome.error()))
        publish(outcome.error(), importStoppedText(*confirmed, locale()));
    co_return outcome;
}

QCoro::Task<Result<void>> LedgerStore::recordEach(std::vector<TransactionInput> inputs,
                                                  std::function<void(std::size_t)> progress)
{
    const QPointer<LedgerStore> self = this;
    Result<void> outcome;
    for (std::size_t done = 0; outcome && done < inputs.size();) {
        auto request =
            m_connection.authorized({.method = "POST", .path = "v1/transactions", .body = Json::encode(inputs[done])});
        if (!request)
            co_return std::unexpected(request.error());
        auto sending = m_connection.exchange(std::move(*request));
        const auto reply = co_await sending;
        if (!self)
            co_return std::unexpected(Cancelled{});
        const auto recorded = reply ? recordedID(reply->body) : std::unexpected(reply.error());
        if (recorded)
            progress(++done);
        else
            outcome = std::unexpected(recorded.error());
    }
    if (!outcome && endsSession(outcome.error()))
        co_return outcome;
    // Also after a failure: what came before it is recorded.
    auto reloading = reload();
    co_await reloading;
    co_return outcome;
}

std::optional<KeptReversal> LedgerStore::keptReversal(const std::string& entryID) const
{
    const auto member = signedIn();
    const auto* kept = member ? m_kept.reversal(*member, entryID) : nullptr;
    return kept ? std::optional{*kept} : std::nullopt;
}

QCoro::Task<Result<void>> LedgerStore::reverseTransaction(std::string id, std::string reason)
{
    return operation(Publishing::on,
                     [this, id = std::move(id), reason = std::move(reason)] { return sendReversal(id, reason); });
}

QCoro::Task<Result<void>> LedgerStore::sendReversal(std::string id, std::string reason)
{
    const auto member = signedIn();
    if (!m_connection.token() || !member)
        co_return std::unexpected(clientError(ClientCode::noSession));
    const auto* kept = m_kept.reversal(*member, id);
    const auto reversal =
        kept ? kept->reversal
             : Reversal{.reason = std::move(reason), .idempotencyKey = newIdentifier(), .date = today()};
    m_kept.keepReversal(*member, id, reversal, nowStamp());
    const QPointer<LedgerStore> self = this;
    auto running =
        mutate({.method = "POST", .path = "v1/transactions/" + id + "/reverse", .body = Json::encode(reversal)});
    auto reversed = co_await running;
    if (!self)
        co_return reversed;
    m_kept.settleReversal(*member, id, failureIn(reversed));
    Q_EMIT keptChanged();
    co_return reversed;
}
