#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"

namespace {

using FinancialSettingsRules::Ground;
using FinancialSettingsRules::Refusal;

/// Books that never had settings are at revision 0.
int revisionOf(const std::optional<FinancialSettings>& settings)
{
    return settings ? settings->revision : 0;
}

bool initializes(const FinancialSettingsCommand& command)
{
    return command.action == FinancialSettingsAction::initialize;
}

bool isWord(std::string_view mode)
{
    return mode.size() <= FinancialSettingsRules::modeLength && std::ranges::all_of(mode, [](char each) {
               return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z') || (each >= '0' && each <= '9') ||
                      each == '-';
           });
}

std::optional<Refusal> whyNotInitialize(const FinancialSettingsCommand& command, const Ground& ground)
{
    using enum Refusal;
    const auto& settings = ground.settings;
    if (settings && (settings->bookkeepingStartDate || settings->initializedAt))
        return alreadyInitialized;
    const auto& start = promised(command.bookkeepingStartDate, "a command in the right shape names the start");
    const bool reachesFurther =
        ground.earliestEntryDay && *ground.earliestEntryDay < FinancialSettingsRules::earliestStart;
    if (start < FinancialSettingsRules::earliestStart && !reachesFurther)
        return startTooEarly;
    if (start > ground.latestEntryDay)
        return startInFuture;
    if (ground.earliestEntryDay && start > *ground.earliestEntryDay)
        return startAfterEntries;
    return std::nullopt;
}

FinancialSettingsCommand begin(std::string_view action, const LedgerSnapshot& snapshot, std::string idempotencyKey)
{
    FinancialSettingsCommand command;
    command.action = action;
    command.expectedRevision = revisionOf(snapshot.financialSettings);
    command.idempotencyKey = std::move(idempotencyKey);
    return command;
}

std::expected<FinancialSettingsCommand, Refusal>
checked(FinancialSettingsCommand command, const LedgerSnapshot& snapshot, std::string_view latestEntryDay)
{
    const Ground ground{.member = snapshot.currentMember,
                        .settings = snapshot.financialSettings,
                        .earliestEntryDay = OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot),
                        .latestEntryDay = std::string{latestEntryDay}};
    if (const auto refused = FinancialSettingsRules::whyNot(command, ground))
        return std::unexpected(*refused);
    return command;
}

}

std::optional<FinancialSettingsRules::Refusal>
FinancialSettingsRules::whyNotShaped(const FinancialSettingsCommand& command)
{
    using enum Refusal;
    if (initializes(command)) {
        if (command.contributionsEnabled || command.dividendsEnabled)
            return foreignField;
        if (!command.bookkeepingStartDate || !LedgerDay::isValid(*command.bookkeepingStartDate))
            return invalidStartDate;
        if (!command.initializationMode || command.initializationMode->empty())
            return modeRequired;
        return isWord(*command.initializationMode) ? std::nullopt : std::optional{modeUnsound};
    }
    if (command.action != FinancialSettingsAction::configure)
        return unknownAction;
    if (command.bookkeepingStartDate || command.initializationMode)
        return foreignField;
    return command.contributionsEnabled && command.dividendsEnabled ? std::nullopt : std::optional{switchesRequired};
}

std::optional<FinancialSettingsRules::Refusal> FinancialSettingsRules::whyNot(const FinancialSettingsCommand& command,
                                                                              const Ground& ground)
{
    using enum Refusal;
    if (!MemberRights::canManage(ground.member))
        return noAuthority;
    if (const auto refused = whyNotShaped(command))
        return refused;
    if (command.expectedRevision != revisionOf(ground.settings))
        return staleRevision;
    if (command.expectedRevision >= lastRevision)
        return revisionLimit;
    return initializes(command) ? whyNotInitialize(command, ground) : std::nullopt;
}

FinancialSettings FinancialSettingsRules::changed(const std::optional<FinancialSettings>& settings,
                                                  const FinancialSettingsCommand& command, std::string_view now)
{
    auto after = settings.value_or(FinancialSettings{});
    ++after.revision;
    if (initializes(command)) {
        after.bookkeepingStartDate = command.bookkeepingStartDate;
        after.initializationMode = command.initializationMode;
        after.initializedAt = now;
    } else {
        constexpr std::string_view promise = "an accepted command names both switches";
        after.contributionsEnabled = promised(command.contributionsEnabled, promise);
        after.dividendsEnabled = promised(command.dividendsEnabled, promise);
        after.featuresConfigured = true;
    }
    return after;
}

std::expected<FinancialSettingsCommand, FinancialSettingsRules::Refusal>
FinancialSettingsRules::initialize(const LedgerSnapshot& snapshot, std::string_view latestEntryDay,
                                   std::string startDate, std::string mode, std::string idempotencyKey)
{
    auto command = begin(FinancialSettingsAction::initialize, snapshot, std::move(idempotencyKey));
    command.bookkeepingStartDate = std::move(startDate);
    command.initializationMode = std::move(mode);
    return checked(std::move(command), snapshot, latestEntryDay);
}

std::expected<FinancialSettingsCommand, FinancialSettingsRules::Refusal>
FinancialSettingsRules::configure(const LedgerSnapshot& snapshot, Switches switches, std::string idempotencyKey)
{
    auto command = begin(FinancialSettingsAction::configure, snapshot, std::move(idempotencyKey));
    command.contributionsEnabled = switches.contributions;
    command.dividendsEnabled = switches.dividends;
    return checked(std::move(command), snapshot, {});
}
