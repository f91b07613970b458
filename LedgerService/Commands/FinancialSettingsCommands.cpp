#include "LedgerService/Commands/FinancialSettingsCommands.h"

#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

std::expected<FinancialSettings, Refusal> FinancialSettingsCommands::carryOut(const CommandAct& act,
                                                                              const FinancialSettingsCommand& command)
{
    const FinancialSettingsRules::Ground ground{.member = act.member,
                                                .settings = CompanyRepository::settings(act.connection, act.companyID),
                                                .earliestEntryDay =
                                                    EntryRepository::earliestDay(act.connection, act.companyID),
                                                .latestEntryDay = EntryDays::latest(act.today)};
    if (const auto refused = FinancialSettingsRules::whyNot(command, ground))
        return std::unexpected(SetupRefusal::of(*refused));
    auto after = FinancialSettingsRules::changed(ground.settings, command, act.now);
    CompanyRepository::writeSettings(act.connection, act.companyID, after);
    act.tell(ground.settings.value_or(FinancialSettings{}), after);
    return after;
}

}
