#include "LedgerService/Commands/FinancialSettingsCommands.h"

#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"

namespace LedgerService {

std::expected<FinancialSettings, Refusal> FinancialSettingsCommands::carryOut(const CommandAct& act,
                                                                              const FinancialSettingsCommand& command)
{
    FinancialSettingsRules::Ground ground{.member = act.member,
                                          .settings = CompanyRepository::settings(act.connection, act.companyID),
                                          .earliestEntryDay = std::nullopt,
                                          .latestEntryDay = EntryDays::latest(act.today)};
    auto refused = FinancialSettingsRules::whyNot(command, ground);
    if (!refused && command.bookkeepingStartDate) { // only now are all entries looked at
        ground.earliestEntryDay = EntryRepository::earliestDay(act.connection, act.companyID);
        refused = FinancialSettingsRules::whyNot(command, ground);
    }
    if (refused)
        return std::unexpected(SetupRefusal::of(*refused));
    auto after = FinancialSettingsRules::changed(ground.settings, command, act.now);
    CompanyRepository::writeSettings(act.connection, act.companyID, after);
    return after;
}

}
