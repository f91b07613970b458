#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

using FinancialSettingsRules::Refusal;

/// Books that never had settings are at revision 0.
int revisionOf(const std::optional<FinancialSettings>& settings)
{
    return settings ? settings->revision : 0;
}

std::optional<Refusal> whyNotInitialize(const FinancialSettingsCommand& command,
                                        const std::optional<FinancialSettings>& settings,
                                        const std::optional<std::string>& earliestEntryDay)
{
    using enum Refusal;
    if (settings && (settings->bookkeepingStartDate || settings->initializedAt))
        return alreadyInitialized;
    if (!command.bookkeepingStartDate || !LedgerDay::isValid(*command.bookkeepingStartDate))
        return invalidStartDate;
    if (earliestEntryDay && *command.bookkeepingStartDate > *earliestEntryDay)
        return startAfterEntries;
    if (!command.initializationMode || command.initializationMode->empty())
        return modeRequired;
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

std::expected<FinancialSettingsCommand, Refusal> checked(FinancialSettingsCommand command,
                                                         const LedgerSnapshot& snapshot)
{
    if (const auto refused =
            FinancialSettingsRules::whyNot(command, snapshot.currentMember, snapshot.financialSettings,
                                           OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot)))
        return std::unexpected(*refused);
    return command;
}

}

std::optional<FinancialSettingsRules::Refusal>
FinancialSettingsRules::whyNot(const FinancialSettingsCommand& command, const Member& member,
                               const std::optional<FinancialSettings>& settings,
                               const std::optional<std::string>& earliestEntryDay)
{
    using enum Refusal;
    const bool initializes = command.action == FinancialSettingsAction::initialize;
    if (!initializes && command.action != FinancialSettingsAction::configure)
        return unknownAction;
    if (!MemberRights::canManage(member))
        return noAuthority;
    if (command.expectedRevision != revisionOf(settings))
        return staleRevision;
    if (initializes)
        return whyNotInitialize(command, settings, earliestEntryDay);
    return command.contributionsEnabled && command.dividendsEnabled ? std::nullopt : std::optional{switchesRequired};
}

std::expected<FinancialSettingsCommand, FinancialSettingsRules::Refusal>
FinancialSettingsRules::initialize(const LedgerSnapshot& snapshot, std::string startDate, std::string mode,
                                   std::string idempotencyKey)
{
    auto command = begin(FinancialSettingsAction::initialize, snapshot, std::move(idempotencyKey));
    command.bookkeepingStartDate = std::move(startDate);
    command.initializationMode = std::move(mode);
    return checked(std::move(command), snapshot);
}

std::expected<FinancialSettingsCommand, FinancialSettingsRules::Refusal>
FinancialSettingsRules::configure(const LedgerSnapshot& snapshot, Switches switches, std::string idempotencyKey)
{
    auto command = begin(FinancialSettingsAction::configure, snapshot, std::move(idempotencyKey));
    command.contributionsEnabled = switches.contributions;
    command.dividendsEnabled = switches.dividends;
    return checked(std::move(command), snapshot);
}
