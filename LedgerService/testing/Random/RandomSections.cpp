#include "LedgerService/testing/Random/RandomSections.h"

#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/testing/SampleSections.h"

namespace LedgerService {

namespace {

constexpr std::array accountIDs{"bank", "bank", "branch", "vault"};
constexpr std::array oddAccountIDs{"closed", "float", "hidden", "nowhere"};
constexpr std::array<std::int64_t, 5> oddAmounts{0, -1, Money::maximumMinor, Money::maximumMinor + 1, INT64_MIN};
constexpr std::array names{"Ann", "Bo", "Cy", "Dee"};

}

std::string RandomSections::actor()
{
    return once(12) ? "rudi" : once(4) ? "guest" : "mira";
}

std::int64_t RandomSections::amount()
{
    return once(40) ? of(oddAmounts) : static_cast<std::int64_t>(1 + below(90'000));
}

std::string RandomSections::account()
{
    return once(15) ? of(oddAccountIDs) : of(accountIDs);
}

std::string RandomSections::name()
{
    return once(20) ? " " : of(names);
}

std::vector<int> RandomSections::ratios(std::size_t count)
{
    std::vector<int> ratios;
    int left = once(30) ? 9'999 : 10'000;
    for (std::size_t at = 0; at + 1 < count; ++at) {
        ratios.push_back(static_cast<int>(below(static_cast<std::size_t>(left) + 1)));
        left -= ratios.back();
    }
    if (count > 0)
        ratios.push_back(left);
    return ratios;
}

/// Dollars are held by the bank alone.
template <class Command>
void RandomSections::place(Command& command)
{
    command.currency = once(4) ? "USD" : "IDR";
    command.accountID = command.currency == "USD" && !once(8) ? "bank" : account();
}

template <class Command>
void RandomSections::disturb(Command& command)
{
    if (once(25))
        --command.expectedRevision;
    if (once(25))
        command.date = of(std::array{"2026-03-09", "2025-12-31", "2026-03-13", "2026-02-30"});
    if (once(50))
        command.action = "none";
}

CapitalCommand RandomSections::capitalFor(const CapitalState& state)
{
    constexpr std::array actions{CapitalAction::setParticipant, CapitalAction::contribute,   CapitalAction::contribute,
                                 CapitalAction::contribute,     CapitalAction::reverse,      CapitalAction::setBaseline,
                                 CapitalAction::setOwnership,   CapitalAction::setVisibility};
    auto command = SampleSections::capital(of(actions), state.revision);
    const bool isNew = command.action == CapitalAction::setParticipant && (state.participants.size() < 3 || once(3));
    if (!isNew)
        command.participantID = idOf(state.participants);
    command.name = name();
    command.archived = once(10);
    if (once(6))
        command.memberID = of(std::array{"mira", "guest", "stranger"});
    command.showInSidebar = once(2);
    command.amountMinor = amount();
    place(command);
    command.contributionID = idOf(state.contributions);
    command.throughDate = of(std::array{"2025-12-31", "2025-06-30", "2026-03-10", "2026-03-11"});
    for (const auto& baseline : state.baselines) {
        if (baseline.currency == command.currency)
            command.replacesID = baseline.id;
    }
    auto& lines = command.entries.emplace();
    auto& shares = command.ownership.emplace();
    const auto parts = ratios(state.participants.size());
    for (std::size_t at = 0; at < state.participants.size(); ++at) {
        const auto& id = state.participants[at].id;
        lines.push_back({id, "somebody", static_cast<std::int64_t>(below(50'000))});
        shares.push_back({id, "somebody", state.participants[at].archived ? 0 : parts[at]});
    }
    disturb(command);
    return command;
}

/// Most settlements are about records that go together.
void RandomSections::aim(DividendCommand& command, const DividendState& state)
{
    namespace Action = DividendAction;
    std::vector<DividendMovement> advances;
    for (const auto& each : state.movements) {
        if (each.kind == DividendMovementKind::advance && !each.reversedBy)
            advances.push_back(each);
    }
    command.batchID = idOf(state.batches);
    command.advanceID = idOf(advances);
    for (const auto& each : state.batches) {
        if (each.id == command.batchID && command.action == Action::pay)
            command.currency = each.currency;
    }
    const bool usesAdvance = command.action == Action::apply || command.action == Action::returnAdvance;
    for (const auto& each : advances) {
        if (each.id != command.advanceID || !usesAdvance)
            continue;
        command.currency = each.currency;
        command.participantID = each.participantID;
    }
    if (usesAdvance || command.action == Action::pay)
        command.amountMinor = 1 + *command.amountMinor % 20'000;
}

DividendCommand RandomSections::dividendFor(const DividendState& state)
{
    namespace Action = DividendAction;
    constexpr std::array actions{Action::setParticipant,
                                 Action::fillFromOwnership,
                                 Action::allocate,
                                 Action::allocate,
                                 Action::allocate,
                                 Action::advance,
                                 Action::advance,
                                 Action::pay,
                                 Action::pay,
                                 Action::pay,
                                 Action::apply,
                                 Action::apply,
                                 Action::apply,
                                 Action::cancelBatch,
                                 Action::returnAdvance,
                                 Action::reverse,
                                 Action::reverse,
                                 Action::setVisibility};
    auto command = SampleSections::dividend(of(actions), state.revision);
    if (command.action != Action::setParticipant || (state.participants.size() >= 3 && !once(3)))
        command.participantID = idOf(state.participants);
    command.name = name();
    command.ratioBps = static_cast<int>(below(10'001));
    command.archived = once(10);
    command.showInSidebar = once(2);
    command.period = once(20) ? "" : "Q1";
    command.amountMinor = amount();
    place(command);
    aim(command, state);
    command.movementID = idOf(state.movements);
    auto& shares = command.shares.emplace();
    const auto parts = ratios(state.participants.size());
    for (std::size_t at = 0; at < state.participants.size(); ++at)
        shares.push_back({state.participants[at].id, parts[at]});
    disturb(command);
    return command;
}

}
