#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// Sums of balances, one per currency. A sum of which a part is not known, or that no longer fits, is not known either.
class MoneySums {
public:
    using Minor = std::optional<std::int64_t>;

    void add(const std::string& currency, Minor minor);

    [[nodiscard]] bool isKnown() const;
    /// In the order of the currency pickers, then those that no picker has.
    [[nodiscard]] std::vector<MoneyText> texts(std::string_view locale) const;

private:
    std::map<std::string, Minor, std::less<>> m_sums;
};

/// A balance, or a dash in its place.
MoneyText balanceText(const MoneySums::Minor& minor, std::string_view currency, std::string_view locale);
