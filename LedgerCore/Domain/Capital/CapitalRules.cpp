#include "LedgerCore/Domain/Capital/CapitalRules.h"

#include <algorithm>
#include <chrono>
#include <unordered_set>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using Refused = std::optional<CapitalRefusal>;
using enum CapitalRefusal;

template <class Record>
const Record* find(std::span<const Record> records, const std::optional<std::string>& id)
{
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return record.id == id; });
    return found == records.end() ? nullptr : &*found;
}

const CapitalParticipant* participant(const CapitalContext& context, const std::optional<std::string>& id)
{
    return find(std::span{context.state.participants}, id);
}

/// The day of the latest contribution or baseline: money is recorded in the order of days.
std::string_view latestDay(const CapitalState& state)
{
    std::string_view latest;
    for (const auto& contribution : state.contributions)
        latest = std::max(latest, std::string_view{contribution.date});
    for (const auto& baseline : state.baselines)
        latest = std::max(latest, std::string_view{baseline.date});
    return latest;
}

Refused whyNotSetParticipant(const CapitalCommand& command, const CapitalContext& context)
{
    if (command.participantID && !participant(context, command.participantID))
        return participantUnavailable;
    if (!command.name || TextFold::trimmed(*command.name).empty())
        return nameRequired;
    if (!command.memberID)
        return std::nullopt;
    const bool isTaken = std::ranges::any_of(context.state.participants, [&](const CapitalParticipant& other) {
        return other.memberID == command.memberID && other.id != command.participantID;
    });
    return isTaken || !find(context.members, command.memberID) ? std::optional{memberUnavailable} : std::nullopt;
}

/// The amount must also leave the owners' recorded sum within its limit.
Refused whyNotAmount(const CapitalCommand& command, std::string_view currency, const CapitalContext& context)
{
    const auto summary = CapitalSummary::create(context.state, currency, std::nullopt, std::nullopt);
    if (!summary)
        return integrity;
    if (!command.amountMinor || *command.amountMinor < 1)
        return amountNotPositive;
    if (*command.amountMinor > Money::maximumMinor - summary->recordedMinor)
        return amountLimit;
    return std::nullopt;
}

Refused whyNotContribute(const CapitalCommand& command, const CapitalContext& context)
{
    if (!context.contributionsEnabled)
        return contributionsDisabled;
    const auto* owner = participant(context, command.participantID);
    if (!owner || owner->archived)
        return participantUnavailable;
    if (!command.currency || !CurrencyInfo::isSupported(*command.currency))
        return currencyUnsupported;
    const auto* account = find(context.accounts, command.accountID);
    if (!account || !account->holds(*command.currency) || !CapitalAccess::takesContributions(*account, context.member))
        return accountUnavailable;
    if (const auto refused = whyNotAmount(command, *command.currency, context))
        return refused;
    if (command.date < latestDay(context.state))
        return dateOrder;
    const auto covered = CapitalMath::coveredThrough(context.state, *command.currency);
    return command.date <= covered ? std::optional{baselineOverlap} : std::nullopt;
}

Refused whyNotReverse(const CapitalCommand& command, const CapitalContext& context)
{
    const auto* original = find(std::span{context.state.contributions}, command.contributionID);
    if (!original || original->reversalOf)
        return contributionUnavailable;
    if (original->reversedBy)
        return alreadyReversed;
    if (CapitalMath::whyInvalid(context.state, original->currency))
        return integrity;
    const auto* account =
        context.contributionAccountID ? find(context.accounts, std::string{*context.contributionAccountID}) : nullptr;
    if (!account || !CapitalAccess::takesContributions(*account, context.member))
        return accountUnavailable;
    return command.date < latestDay(context.state) ? std::optional{dateOrder} : std::nullopt;
}

/// Every owner who is not archived is listed, nobody twice, and amounts lie within their limits.
Refused whyNotLines(const std::vector<CapitalAmountLine>& lines, const CapitalState& state)
{
    std::unordered_set<std::string_view> missing;
    std::unordered_set<std::string_view> allowed;
    for (const auto& owner : state.participants) {
        allowed.insert(owner.id);
        if (!owner.archived)
            missing.insert(owner.id);
    }
    std::int64_t sum = 0;
    for (const auto& line : lines) {
        if (allowed.erase(line.participantID) == 0)
            return baselineCoverage;
        missing.erase(line.participantID);
        if (line.amountMinor < 0)
            return baselineNegative;
        if (line.amountMinor > Money::maximumMinor - sum)
            return amountLimit;
        sum += line.amountMinor;
    }
    return missing.empty() && !lines.empty() && lines.size() <= CapitalMath::maximumLines
               ? std::nullopt
               : std::optional{baselineCoverage};
}

Refused whyNotSetBaseline(const CapitalCommand& command, const CapitalContext& context)
{
    if (!command.currency || !CurrencyInfo::isSupported(*command.currency))
        return currencyUnsupported;
    if (CapitalMath::whyInvalid(context.state, *command.currency))
        return integrity;
    if (!command.throughDate || !CapitalMath::validDay(*command.throughDate) || *command.throughDate > command.date)
        return baselineBoundary;
    const auto* current = CapitalMath::currentBaseline(context.state, *command.currency);
    if (command.replacesID != (current ? std::optional{current->id} : std::nullopt))
        return baselineConflict;
    std::int64_t contributed = 0; // a valid state's contributions add up within their limit
    for (const auto& contribution : context.state.contributions) {
        if (contribution.currency != command.currency)
            continue;
        if (contribution.date <= *command.throughDate)
            return baselineOverlap;
        contributed += contribution.amountMinor;
    }
    const std::vector<CapitalAmountLine> none;
    const auto& lines = command.entries ? *command.entries : none;
    if (const auto refused = whyNotLines(lines, context.state))
        return refused;
    for (const auto& line : lines)
        contributed += line.amountMinor;
    if (contributed > Money::maximumMinor)
        return amountLimit;
    return command.date < latestDay(context.state) ? std::optional{dateOrder} : std::nullopt;
}

Refused whyNotSetOwnership(const CapitalCommand& command, const CapitalContext& context)
{
    if (!command.ownership || command.ownership->empty() || command.ownership->size() > CapitalMath::maximumLines)
        return sharesIncomplete;
    std::unordered_set<std::string_view> listed;
    int sum = 0;
    for (const auto& line : *command.ownership) {
        const auto* owner = participant(context, line.participantID);
        if (!owner || (owner->archived && line.ownershipBps != 0))
            return participantUnavailable;
        const bool isShare = line.ownershipBps >= 0 && line.ownershipBps <= BasisPoints::whole;
        if (!isShare || !listed.insert(line.participantID).second)
            return sharesIncomplete;
        sum += line.ownershipBps;
    }
    if (sum != BasisPoints::whole)
        return sharesIncomplete;
    const auto* latest = CapitalMath::ownershipInForce(context.state, std::nullopt);
    return latest && command.date < latest->date ? std::optional{dateOrder} : std::nullopt;
}

Refused whyNotSetVisibility(const CapitalCommand& command, const CapitalContext&)
{
    return command.showInSidebar ? std::nullopt : std::optional{visibilityRequired};
}

using Rule = Refused (*)(const CapitalCommand&, const CapitalContext&);

Rule ruleOf(std::string_view action)
{
    constexpr std::pair<std::string_view, Rule> rules[]{{CapitalAction::setParticipant, whyNotSetParticipant},
                                                        {CapitalAction::contribute, whyNotContribute},
                                                        {CapitalAction::reverse, whyNotReverse},
                                                        {CapitalAction::setBaseline, whyNotSetBaseline},
                                                        {CapitalAction::setOwnership, whyNotSetOwnership},
                                                        {CapitalAction::setVisibility, whyNotSetVisibility}};
    const auto* const found = std::ranges::find(rules, action, &std::pair<std::string_view, Rule>::first);
    return found == std::end(rules) ? nullptr : found->second;
}
}

CapitalContext CapitalContext::of(const LedgerSnapshot& snapshot)
{
    static const CapitalState none;
    return {.state = snapshot.capital ? *snapshot.capital : none,
            .member = snapshot.currentMember,
            .members = snapshot.members,
            .accounts = snapshot.accounts,
            .contributionsEnabled = !snapshot.financialSettings || snapshot.financialSettings->contributionsEnabled};
}

CapitalContext CapitalContext::of(const LedgerSnapshot& snapshot, std::string_view contributionID)
{
    auto context = of(snapshot);
    const auto contribution = std::ranges::find(context.state.contributions, contributionID, &CapitalContribution::id);
    if (contribution == context.state.contributions.end())
        return context;
    const auto* entry = snapshot.entry(contribution->transactionID);
    if (entry && !entry->legs.empty())
        context.contributionAccountID = entry->legs.front().accountID;
    return context;
}

bool CapitalRules::mayUse(std::string_view action, const Member& member)
{
    if (!member.active || !ruleOf(action))
        return false;
    if (action == CapitalAction::contribute)
        return MemberRights::canViewCapital(member) && MemberRights::canPostCapital(member);
    if (action == CapitalAction::reverse)
        return MemberRights::canViewCapital(member) && MemberRights::canCorrectCapital(member);
    return MemberRights::canManageCapital(member);
}

std::optional<CapitalRefusal> CapitalRules::whyNot(const CapitalCommand& command, const CapitalContext& context)
{
    const auto rule = ruleOf(command.action);
    if (!rule)
        return unknownAction;
    if (!mayUse(command.action, context.member))
        return noAuthority;
    if (command.expectedRevision != context.state.revision)
        return staleRevision;
    if (!CapitalMath::validDay(command.date))
        return invalidDate;
    return rule(command, context);
}

std::string CapitalRules::latestOwnershipDay(std::string_view today)
{
    constexpr std::chrono::years ahead{5};
    const auto year = promised(LedgerDay::parse(today), "today is a day").year() + ahead;
    return LedgerDay::format(year / std::chrono::December / 31);
}

std::string_view serviceCode(CapitalRefusal refusal)
{
    switch (refusal) {
    case noAuthority:
        return ServiceCode::forbidden;
    case contributionsDisabled:
        return ServiceCode::contributionsDisabled;
    case staleRevision:
        return ServiceCode::capitalRevisionConflict;
    case dateOrder:
        return ServiceCode::capitalDateOrder;
    case participantUnavailable:
    case memberUnavailable:
    case accountUnavailable:
    case contributionUnavailable:
        return ServiceCode::notFound;
    case alreadyReversed:
        return ServiceCode::alreadyReversed;
    case amountLimit:
        return ServiceCode::capitalAmountLimit;
    case baselineBoundary:
        return ServiceCode::capitalBaselineBoundary;
    case baselineOverlap:
        return ServiceCode::capitalBaselineOverlap;
    case baselineConflict:
        return ServiceCode::capitalBaselineConflict;
    case baselineCoverage:
        return ServiceCode::capitalBaselineCoverage;
    case integrity:
        return ServiceCode::capitalIntegrity;
    case unknownAction:
    case invalidDate:
    case nameRequired:
    case currencyUnsupported:
    case amountNotPositive:
    case amountUnreadable:
    case baselineNegative:
    case zeroBaselineUnconfirmed:
    case sharesIncomplete:
    case visibilityRequired:
        return ServiceCode::validationError;
    }
    std::unreachable();
}
