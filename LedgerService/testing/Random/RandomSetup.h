#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerService/testing/Random/RandomChoices.h"

namespace LedgerService {

/// Commands that set a company up, sound and unsound, on what a member sees of the company of `SampleBooks`. Always the
/// same for the same seed and the same sight.
class RandomSetup : RandomChoices {
public:
    explicit RandomSetup(std::uint32_t seed) : RandomChoices(seed) {}

    struct AccountChange {
        std::string id;
        AccountUpdate update;
    };
    struct CategoryChange {
        std::string id;
        CategoryUpdate update;
    };
    using Command = std::variant<AccountCreate, AccountChange, CategoryCreate, CategoryChange, CategoryReorder,
                                 FinancialSettingsCommand>;

    std::string actor();
    Command next(const LedgerSnapshot& seen);

private:
    template <class Row>
    std::string idOf(const std::vector<Row>& rows)
    {
        return rows.empty() || once(25) ? "none" : of(rows).id;
    }

    AccountCreate account(const LedgerSnapshot& seen);
    AccountChange accountChange(const LedgerSnapshot& seen);
    CategoryCreate category(const LedgerSnapshot& seen);
    CategoryChange categoryChange(const LedgerSnapshot& seen);
    CategoryReorder reordering(const LedgerSnapshot& seen);
    FinancialSettingsCommand settings(const LedgerSnapshot& seen);

    int m_key = 0;
};

}
