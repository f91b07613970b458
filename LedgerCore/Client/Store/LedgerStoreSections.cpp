#include <utility>
#include <variant>

#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"

namespace {

constexpr const char* pathOf(const CapitalCommand& /*command*/)
{
    return "v1/capital/commands";
}

constexpr const char* pathOf(const DividendCommand& /*command*/)
{
    return "v1/dividends/commands";
}

APIRequest requestOf(const SectionCommand& command)
{
    return std::visit(
        [](const auto& each) { return APIRequest{.method = "POST", .path = pathOf(each), .body = Json::encode(each)}; },
        command);
}

}

std::optional<KeptSectionCommand> LedgerStore::keptSectionCommand() const
{
    const auto member = signedIn();
    const auto* kept = member ? m_kept.section(*member) : nullptr;
    return kept ? std::optional{*kept} : std::nullopt;
}

void LedgerStore::keepSectionCommand(SectionCommand command, std::string since)
{
    const auto member = signedIn();
    if (!member)
        return;
    m_kept.keepSection(*member,
                       {.command = std::move(command), .since = since.empty() ? nowStamp() : std::move(since)});
    Q_EMIT keptChanged();
}

void LedgerStore::forgetSectionCommand(const std::string& idempotencyKey)
{
    if (const auto member = signedIn())
        forgetSectionCommand(*member, idempotencyKey);
}

void LedgerStore::forgetSectionCommand(const MemberIdentity& member, const std::string& idempotencyKey)
{
    m_kept.forgetSection(member, idempotencyKey);
    Q_EMIT keptChanged();
}

QCoro::Task<Result<void>> LedgerStore::submitSection(SectionCommand command, Publishing publishing)
{
    return operation(publishing, [this, command = std::move(command)] { return sendSection(command); });
}

QCoro::Task<Result<void>> LedgerStore::sendSection(SectionCommand command)
{
    const auto member = signedIn();
    if (!member)
        co_return std::unexpected(clientError(ClientCode::noSession));
    const QPointer<LedgerStore> self = this;
    auto sending = sendCommand(requestOf(command));
    auto outcome = co_await sending;
    if (!self)
        co_return outcome;
    m_kept.settleSection(*member, command, failureIn(outcome), nowStamp());
    Q_EMIT keptChanged();
    co_return outcome;
}
