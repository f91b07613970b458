#include "LedgerUI/Presentation/Records/CapitalQuestion.h"

#include <algorithm>
#include <set>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"

namespace {

using Codes = std::set<std::string, std::less<>>;

template <class Records>
void addCurrencies(Codes& codes, const Records& records)
{
    for (const auto& record : records)
        codes.insert(record.currency);
}

}

std::optional<std::string> CapitalQuestion::fromDay() const
{
    return period.isAllTime() ? std::nullopt : std::optional{LedgerDay::format(period.firstDay())};
}

std::optional<std::string> CapitalQuestion::throughDay() const
{
    return period.isAllTime() ? std::nullopt : std::optional{LedgerDay::format(period.lastDay())};
}

std::vector<std::string> CapitalCurrencies::of(const LedgerSnapshot& snapshot)
{
    Codes codes;
    if (const auto& capital = snapshot.capital) {
        codes.insert(capital->currencies.begin(), capital->currencies.end());
        addCurrencies(codes, capital->contributions);
        addCurrencies(codes, capital->baselines);
    }
    if (const auto& dividends = snapshot.dividends) {
        if (dividends->currencies)
            codes.insert(dividends->currencies->begin(), dividends->currencies->end());
        addCurrencies(codes, dividends->batches);
        addCurrencies(codes, dividends->movements);
    }
    if (codes.empty()) {
        for (const auto& account : snapshot.accounts)
            codes.insert(account.currencies.begin(), account.currencies.end());
    }
    std::vector<std::string> ordered;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (codes.contains(currency.code))
            ordered.push_back(currency.code);
    }
    if (ordered.empty())
        ordered.push_back(CurrencyInfo::supported().front().code);
    return ordered;
}

std::string CapitalCurrencies::chosen(const std::vector<std::string>& offered, std::string_view wanted)
{
    if (std::ranges::find(offered, wanted) != offered.end())
        return std::string{wanted};
    return offered.empty() ? std::string{} : offered.front();
}
