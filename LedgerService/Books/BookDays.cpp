#include "LedgerService/Books/BookDays.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Books/BookRefusal.h"

namespace LedgerService {

std::chrono::sys_days BookDays::parsed(std::string_view day)
{
    const auto known = LedgerDay::parse(day);
    require(known.has_value(), "the text was checked to be a calendar day");
    return known.value_or(std::chrono::year_month_day{});
}

std::string BookDays::shifted(std::string_view day, int days)
{
    return LedgerDay::format(parsed(day) + std::chrono::days{days});
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

}
