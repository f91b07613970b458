#include "LedgerCore/Domain/Dividends/DividendRules.h"

#include <algorithm>
#include <expected>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using Refused = std::optional<DividendRefusal>;
using enum DividendRefusal;
namespace Action = DividendAction;
namespace Kind = DividendMovementKind;

template <class Record>
const Record* find(std::span<const Record> records, const std::optional<std::string>& id)
{
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return record.id == id; });
    return found == records.end() ? nullptr : &*found;
}

bool isBlank(const std::optional<std::string>& text)
{
    return !text || TextFold::trimmed(*text).empty();
}

/// The day of the latest recorded action: dividends are recorded in the order of days.
std::string_view latestDay(const DividendState& state)
{
    std::string_view latest;
    for (const auto& batch : state.batches) {
        latest = std::max(latest, std::string_view{batch.date});
        if (batch.cancelledDate)
            latest = std::max(latest, std::string_view{*batch.cancelledDate});
    }
    for (const auto& movement : state.movements)
        latest = std::max(latest, std::string_view{movement.date});
    return latest;
}

/// The amount must also leave a running sum of its currency within the limit. A sum that does not fit stands beyond it.
Refused whyNotAmount(const DividendCommand& command, std::optional<std::int64_t> sum)
{
    if (!command.amountMinor || *command.amountMinor < 1)
        return amountNotPositive;
    const auto grown = sum ? Money::add(*sum, *command.amountMinor) : std::nullopt;
    return grown && *grown <= Money::maximumMinor ? std::nullopt : std::optional{amountLimit};
}

/// All that is allocated and not cancelled.
std::optional<std::int64_t> allocatedSum(const DividendBook& book)
{
    std::optional<std::int64_t> sum = 0;
    for (const auto* batch : book.batches())
        sum = sum ? Money::add(*sum, batch->amountMinor) : sum;
    return sum;
}

/// All that was ever paid out and not reversed; what was given back of advances is not taken off.
std::optional<std::int64_t> paidOutSum(const DividendBook& book)
{
    std::optional<std::int64_t> sum = 0;
    for (const auto* movement : book.effective()) {
        if (movement->kind == Kind::payment || movement->kind == Kind::advance)
            sum = sum ? Money::add(*sum, movement->amountMinor) : sum;
    }
    return sum;
}

/// The book of a currency that amounts can be recorded in.
std::expected<DividendBook, DividendRefusal> bookOf(const DividendCommand& command, const DividendContext& context)
{
    if (!command.currency || !CurrencyInfo::isSupported(*command.currency))
        return std::unexpected(currencyUnsupported);
    auto book = DividendBook::create(context.state, *command.currency, std::nullopt);
    if (!book)
        return std::unexpected(integrity);
    return *std::move(book);
}

Refused whyNotSetParticipant(const DividendCommand& command, const DividendContext& context)
{
    const auto& participants = context.state.participants;
    if (command.participantID && !find(std::span{participants}, command.participantID))
        return participantUnavailable;
    if (isBlank(command.name))
        return nameRequired;
    if (command.ratioBps.value_or(0) < 0 || command.ratioBps.value_or(0) > BasisPoints::whole)
        return ratioInvalid;
    if (!command.memberID)
        return std::nullopt;
    const bool isTaken = std::ranges::any_of(participants, [&](const DividendParticipant& other) {
        return other.memberID == command.memberID && other.id != command.participantID;
    });
    return isTaken || !find(context.members, command.memberID) ? std::optional{memberUnavailable} : std::nullopt;
}

Refused whyNotSetVisibility(const DividendCommand& command, const DividendContext&)
{
    return command.showInSidebar ? std::nullopt : std::optional{visibilityRequired};
}

/// Whether the shares are those of the whole company; parts of it would make ratios that no allocation takes.
bool isComplete(const CapitalOwnershipVersion& shares)
{
    std::int64_t sum = 0;
    for (const auto& line : shares.entries)
        sum += line.ownershipBps;
    return sum == BasisPoints::whole;
}

Refused whyNotFillFromOwnership(const DividendCommand& command, const DividendContext& context)
{
    const auto* shares = context.capital ? CapitalMath::ownershipInForce(*context.capital, command.date) : nullptr;
    return shares && isComplete(*shares) ? std::nullopt : std::optional{ownershipMissing};
}

Refused refusalOf(DividendError error)
{
    switch (error) {
    case DividendError::invalidAmount:
        return amountNotPositive;
    case DividendError::invalidShares:
        return sharesIncomplete;
    case DividendError::participantUnavailable:
        return participantUnavailable;
    case DividendError::invalidState:
        return integrity;
    case DividendError::amountOverflow:
        return amountLimit;
    }
    std::unreachable();
}

Refused whyNotAllocate(const DividendCommand& command, const DividendContext& context)
{
    if (!context.dividendsEnabled)
        return dividendsDisabled;
    if (isBlank(command.period))
        return periodRequired;
    const auto book = bookOf(command, context);
    if (!book)
        return book.error();
    if (const auto refused = whyNotAmount(command, allocatedSum(*book)))
        return refused;
    const std::vector<DividendShare> none;
    const auto lines = DividendAllocationCalculator::allocate(
        command.amountMinor.value_or(0), command.shares ? *command.shares : none, context.state.participants);
    return lines ? std::nullopt : refusalOf(lines.error());
}

Refused whyNotAdvance(const DividendCommand& command, const DividendContext& context)
{
    if (!context.dividendsEnabled)
        return dividendsDisabled;
    const auto* participant = find(std::span{context.state.participants}, command.participantID);
    if (!participant || participant->archived)
        return participantUnavailable;
    const auto book = bookOf(command, context);
    if (!book)
        return book.error();
    if (!DividendAccess::canSubmit(command, context))
        return noAuthority;
    return whyNotAmount(command, paidOutSum(*book));
}

/// What a settlement settles, and what of it is still open.
struct Settling {
    DividendBook book;
    std::int64_t most = Money::maximumMinor;
};

/// What a settlement may move at most. A chosen line and a chosen advance must be about one participant and currency.
std::expected<Settling, DividendRefusal> settling(const DividendCommand& command, const DividendContext& context)
{
    const bool settlesLine = command.action != Action::returnAdvance;
    const auto* batch = settlesLine ? find(std::span{context.state.batches}, command.batchID) : nullptr;
    const bool usesAdvance = command.action != Action::pay;
    const auto* advance = usesAdvance ? find(std::span{context.state.movements}, command.advanceID) : nullptr;
    if (settlesLine &&
        (!batch || batch->cancelled || !find(std::span{context.state.participants}, command.participantID)))
        return std::unexpected(batchUnavailable);
    if (usesAdvance && (!advance || advance->kind != Kind::advance || advance->reversedBy))
        return std::unexpected(advanceUnavailable);
    const auto& currency = batch ? batch->currency : advance->currency;
    if (batch && advance && (advance->currency != currency || advance->participantID != command.participantID))
        return std::unexpected(advanceUnavailable);
    if (command.currency && command.currency != currency)
        return std::unexpected(currencyUnsupported);

    auto book = DividendBook::create(context.state, currency, std::nullopt);
    if (!book)
        return std::unexpected(integrity);
    Settling settling{*std::move(book)};
    if (batch)
        settling.most = settling.book.line(batch->id, command.participantID.value_or("")).unpaidMinor;
    if (advance)
        settling.most = std::min(settling.most, settling.book.advanceRemaining(advance->id));
    return settling;
}

Refused whyNotSettle(const DividendCommand& command, const DividendContext& context)
{
    const auto settled = settling(command, context);
    if (!settled)
        return settled.error();
    if (!DividendAccess::canSubmit(command, context))
        return noAuthority;
    const bool paysOut = command.action == Action::pay;
    if (const auto refused =
            whyNotAmount(command, paysOut ? paidOutSum(settled->book) : std::optional<std::int64_t>{0}))
        return refused;
    if (command.amountMinor.value_or(0) <= settled->most)
        return std::nullopt;
    return command.action == Action::apply ? overapplication : overpayment;
}

/// Whether a movement that still counts names this batch or advance.
bool isSettled(const DividendState& state, std::optional<std::string> DividendMovement::* link, const std::string& id)
{
    return std::ranges::any_of(state.movements, [&](const DividendMovement& movement) {
        return movement.kind != Kind::reversal && !movement.reversedBy && movement.*link == id;
    });
}

/// Nothing is undone in a currency whose records break a rule: what it would leave cannot be told.
Refused whyNotSound(const DividendState& state, std::string_view currency)
{
    return DividendBook::create(state, currency, std::nullopt) ? std::nullopt : std::optional{integrity};
}

Refused whyNotCancelBatch(const DividendCommand& command, const DividendContext& context)
{
    const auto* batch = find(std::span{context.state.batches}, command.batchID);
    if (!batch || batch->cancelled)
        return batchUnavailable;
    return isSettled(context.state, &DividendMovement::batchID, batch->id)
               ? std::optional{dependencies}
               : whyNotSound(context.state, batch->currency);
}

Refused whyNotReverse(const DividendCommand& command, const DividendContext& context)
{
    const auto* movement = find(std::span{context.state.movements}, command.movementID);
    if (!movement || movement->kind == Kind::reversal)
        return movementUnavailable;
    if (movement->reversedBy)
        return alreadyReversed;
    if (!DividendAccess::canSubmit(command, context))
        return noAuthority;
    if (movement->kind == Kind::advance && isSettled(context.state, &DividendMovement::advanceID, movement->id))
        return dependencies;
    return whyNotSound(context.state, movement->currency);
}

using Rule = Refused (*)(const DividendCommand&, const DividendContext&);

struct ActionRule {
    std::string_view action;
    Rule rule;
    bool keepsOrder; // records something of its day
};

const ActionRule* ruleOf(std::string_view action)
{
    static constexpr ActionRule rules[]{{Action::setParticipant, whyNotSetParticipant, false},
                                        {Action::setVisibility, whyNotSetVisibility, false},
                                        {Action::allocate, whyNotAllocate, true},
                                        {Action::apply, whyNotSettle, true},
                                        {Action::cancelBatch, whyNotCancelBatch, true},
                                        {Action::advance, whyNotAdvance, true},
                                        {Action::pay, whyNotSettle, true},
                                        {Action::returnAdvance, whyNotSettle, true},
                                        {Action::reverse, whyNotReverse, true},
                                        {Action::fillFromOwnership, whyNotFillFromOwnership, false}};
    const auto* const found = std::ranges::find(rules, action, &ActionRule::action);
    return found == std::end(rules) ? nullptr : found;
}

}

bool DividendRules::mayUse(std::string_view action, const Member& member)
{
    if (!ruleOf(action))
        return false;
    if (action == Action::setParticipant || action == Action::setVisibility)
        return MemberRights::canManageDividends(member);
    if (action == Action::fillFromOwnership)
        return MemberRights::canCopyOwnershipToDividends(member);
    if (action == Action::advance || action == Action::pay || action == Action::returnAdvance)
        return MemberRights::canMoveDividendMoney(member);
    return action == Action::reverse ? MemberRights::canCorrectDividends(member)
                                     : MemberRights::canSettleDividends(member);
}

std::optional<DividendRefusal> DividendRules::whyNot(const DividendCommand& command, const DividendContext& context)
{
    const auto* rule = ruleOf(command.action);
    if (!rule)
        return unknownAction;
    if (!mayUse(command.action, context.member))
        return noAuthority;
    if (command.expectedRevision != context.state.revision)
        return staleRevision;
    if (!LedgerDay::isValid(command.date))
        return invalidDate;
    if (const auto refused = rule->rule(command, context))
        return refused;
    return rule->keepsOrder && command.date < latestDay(context.state) ? std::optional{dateOrder} : std::nullopt;
}

std::optional<std::int64_t> DividendRules::limit(const DividendCommand& command, const DividendContext& context)
{
    const auto* rule = ruleOf(command.action);
    if (!rule || rule->rule != whyNotSettle || !MemberRights::canSeeDividends(context.member))
        return std::nullopt;
    const auto settled = settling(command, context);
    return settled ? std::optional{settled->most} : std::nullopt;
}

std::string_view serviceCode(DividendRefusal refusal)
{
    switch (refusal) {
    case noAuthority:
        return ServiceCode::forbidden;
    case dividendsDisabled:
        return ServiceCode::dividendsDisabled;
    case staleRevision:
        return ServiceCode::dividendRevisionConflict;
    case dateOrder:
        return ServiceCode::dividendDateOrder;
    case participantUnavailable:
    case memberUnavailable:
    case batchUnavailable:
    case advanceUnavailable:
    case movementUnavailable:
        return ServiceCode::notFound;
    case amountLimit:
        return ServiceCode::dividendAmountLimit;
    case overpayment:
        return ServiceCode::dividendOverpayment;
    case overapplication:
        return ServiceCode::dividendOverapplication;
    case dependencies:
        return ServiceCode::dividendDependencies;
    case alreadyReversed:
        return ServiceCode::alreadyReversed;
    case ownershipMissing:
        return ServiceCode::capitalOwnershipMissing;
    case integrity:
        return ServiceCode::dividendIntegrity;
    case unknownAction:
    case invalidDate:
    case nameRequired:
    case ratioInvalid:
    case visibilityRequired:
    case periodRequired:
    case currencyUnsupported:
    case amountNotPositive:
    case sharesIncomplete:
        return ServiceCode::validationError;
    }
    std::unreachable();
}
