#include "LedgerCore/Domain/Entries/EntryDays.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

namespace {

std::string shifted(std::string_view day, int days)
{
    const auto known = LedgerDay::parse(day);
    return known ? LedgerDay::format(std::chrono::sys_days{*known} + std::chrono::days{days}) : std::string{day};
}

}

std::string_view EntryDays::start(const std::optional<FinancialSettings>& settings)
{
    return settings && settings->bookkeepingStartDate ? std::string_view{*settings->bookkeepingStartDate}
                                                      : std::string_view{};
}

std::string EntryDays::latest(std::string_view today)
{
    return shifted(today, EntryLimits::daysAhead);
}

std::string EntryDays::earliestAfter(std::string_view day)
{
    return shifted(day, -EntryLimits::daysBehind);
}

std::optional<EntryDays::Refusal> EntryDays::whyNot(std::string_view day, std::string_view today,
                                                    std::string_view start)
{
    if (day > today && day > latest(today))
        return Refusal::inFuture;
    if (day < (start.empty() ? FinancialSettingsRules::earliestStart : start))
        return Refusal::beforeStart;
    return std::nullopt;
}
