#include "LedgerUI/Presentation/Text/Values/MoneySums.h"

#include <algorithm>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"

void MoneySums::add(const std::string& currency, Minor minor)
{
    auto& sum = m_sums.try_emplace(currency, 0).first->second;
    sum = sum && minor ? Money::add(*sum, *minor) : std::nullopt;
}

bool MoneySums::isKnown() const
{
    return std::ranges::all_of(m_sums, [](const auto& each) { return each.second.has_value(); });
}

std::vector<MoneyText> MoneySums::texts(std::string_view locale) const
{
    std::vector<MoneyText> texts;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (const auto found = m_sums.find(currency.code); found != m_sums.end())
            texts.push_back(balanceText(found->second, found->first, locale));
    }
    for (const auto& [code, sum] : m_sums) {
        if (!CurrencyInfo::isSupported(code))
            texts.push_back(balanceText(sum, code, locale));
    }
    return texts;
}

MoneyText balanceText(const MoneySums::Minor& minor, std::string_view currency, std::string_view locale)
{
    return minor ? balanceText(*minor, currency, locale) : unknownMoney(currency);
}
