#include "LedgerService/Books/BookDays.h"

#include <chrono>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/LedgerDay.h"
#include "LedgerService/Books/BookRefusal.h"

std::string BookDays::shifted(std::string_view day, int days)
{
    const auto parsed = LedgerDay::parse(day);
    require(parsed.has_value(), "only calendar days are moved");
    return LedgerDay::format(std::chrono::sys_days{*parsed} + std::chrono::days{days});
}

std::optional<std::string> BookDays::start(const std::optional<FinancialSettings>& settings)
{
    return settings ? settings->bookkeepingStartDate : std::nullopt;
}

std::optional<Refusal> BookDays::whyNot(std::string_view day, std::string_view today,
                                        const std::optional<FinancialSettings>& settings)
{
    if (day > shifted(today, 1))
        return BookRefusal::invalid("The day lies in the future.");
    const auto first = start(settings);
    if (first && day < *first)
        return BookRefusal::beforeStartDate();
    return std::nullopt;
}
