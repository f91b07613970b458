#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <variant>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

namespace LedgerService {

/// Commands that set a company up, sound and unsound, on what a member sees of the company of `SampleBooks`. Always the
/// same for the same seed and the same sight.
class RandomSetup {
public:
    explicit RandomSetup(std::uint32_t seed) : m_engine(seed) {}

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
    std::size_t below(std::size_t end) { return m_engine() % end; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <class Choices>
    const auto& of(const Choices& choices)
    {
        return choices[below(std::size(choices))];
    }
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

    std::mt19937 m_engine;
    int m_key = 0;
};

}
