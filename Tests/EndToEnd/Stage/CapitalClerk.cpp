#include "Tests/EndToEnd/Stage/CapitalClerk.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "Tests/EndToEnd/Stage/Colleague.h"

namespace {

constexpr auto language = "en-US";
constexpr auto currency = "IDR";

template <class Record>
std::string idOf(const std::vector<Record>& records, const std::string& name, std::string Record::* called)
{
    const auto found = std::ranges::find(records, name, called);
    expect(found != records.end(), QStringLiteral("the books know %1").arg(QString::fromStdString(name)));
    return found->id;
}

}

void CapitalClerk::addOwner(const std::string& name)
{
    const auto now = books();
    send(CapitalCommands::setParticipant(CapitalContext::of(*now), issue(), {.name = name}));
}

void CapitalClerk::setShares(const std::vector<std::string>& percentages)
{
    const auto now = books();
    const auto context = CapitalContext::of(*now);
    std::vector<CapitalCommands::OwnerText> shares;
    for (const auto& percentage : percentages)
        shares.push_back({context.state.participants.at(shares.size()).id, percentage});
    send(CapitalCommands::setOwnership(context, issue(), shares, language));
}

void CapitalClerk::contribute(const Contribution& contribution)
{
    const auto now = books();
    const auto context = CapitalContext::of(*now);
    send(CapitalCommands::contribute(
        context, issue(),
        {.participantID = idOf(context.state.participants, contribution.owner, &CapitalParticipant::name),
         .currency = currency,
         .amount = contribution.amount,
         .accountID = accountID(contribution.account)},
        language));
}

void CapitalClerk::addParticipant(const std::string& name, const std::string& percentage)
{
    const auto now = books();
    send(DividendCommands::setParticipant(DividendContext::of(*now), issue(), {.name = name, .percentage = percentage},
                                          language));
}

void CapitalClerk::allocate(const std::string& period, const std::string& amount)
{
    const auto now = books();
    const auto context = DividendContext::of(*now);
    std::vector<DividendCommands::ShareText> shares;
    for (const auto& each : context.state.participants)
        shares.push_back({each.id, BasisPoints::text(each.ratioBps, language)});
    send(DividendCommands::allocate(
        context, issue(), {.period = period, .currency = currency, .amount = amount, .shares = shares}, language));
}

void CapitalClerk::pay(const Payment& payment)
{
    const auto now = books();
    const auto context = DividendContext::of(*now);
    const auto person = idOf(context.state.participants, payment.person, &DividendParticipant::name);
    const auto account = accountID(payment.account);
    if (payment.period.empty())
        return send(DividendCommands::advance(
            context, issue(),
            {.participantID = person, .currency = currency, .amount = payment.amount, .accountID = account}, language));
    send(DividendCommands::pay(context, issue(),
                               {.batchID = idOf(context.state.batches, payment.period, &DividendBatch::period),
                                .participantID = person,
                                .amount = payment.amount,
                                .accountID = account},
                               language));
}

SnapshotPointer CapitalClerk::books()
{
    auto& store = m_colleague.store();
    m_colleague.done(store.refresh(false), "the colleague looks at the books");
    return store.snapshot();
}

std::string CapitalClerk::accountID(const std::string& name)
{
    return idOf(m_colleague.store().snapshot()->accounts, name, &Account::name);
}

CommandIssue CapitalClerk::issue()
{
    auto& store = m_colleague.store();
    return {store.today(), store.newIdentifier()};
}

void CapitalClerk::send(CapitalCommands::Built command)
{
    expect(command.has_value(), QStringLiteral("the colleague may change the capital"));
    m_colleague.done(m_colleague.store().submitCapital(*std::move(command), false),
                     "the colleague changes the capital");
}

void CapitalClerk::send(DividendCommands::Built command)
{
    expect(command.has_value(), QStringLiteral("the colleague may change the dividends"));
    m_colleague.done(m_colleague.store().submitDividend(*std::move(command), false),
                     "the colleague changes the dividends");
}
