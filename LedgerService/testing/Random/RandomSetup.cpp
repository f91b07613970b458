#include "LedgerService/testing/Random/RandomSetup.h"

#include <algorithm>
#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"

namespace LedgerService {

namespace {

constexpr std::array memberIDs{"mira", "rudi", "rudi", "guest", "gone", "nobody", ""};
constexpr std::array purposes{"employee", "employee", "refund", "operating", "", "savings"};
constexpr std::array currencyCodes{"IDR", "IDR", "USD", "JPY", "XYZ"};

}

std::string RandomSetup::actor()
{
    return of(std::array{"guest", "guest", "guest", "mira", "rudi"});
}

AccountCreate RandomSetup::account(const LedgerSnapshot& seen)
{
    AccountCreate command;
    command.name = once(15) ? "\u3000" : fmt::format("Account {}", below(12));
    for (std::size_t count = 1 + below(2); count > 0; --count)
        command.currencies.emplace_back(of(currencyCodes));
    if (once(2))
        command.purpose = of(purposes);
    if (once(2))
        command.operatorMemberID = of(memberIDs);
    if (once(6))
        command.ownerMemberID = of(memberIDs);
    if (once(3))
        command.returnAccountID = idOf(seen.accounts);
    if (once(3))
        command.fundingMemberIDs = {{of(memberIDs)}};
    return command;
}

RandomSetup::AccountChange RandomSetup::accountChange(const LedgerSnapshot& seen)
{
    AccountUpdate update;
    if (once(3))
        update.archived = !once(3);
    if (once(5))
        update.name = fmt::format("Account {}", below(12));
    if (once(4))
        update.purpose = of(purposes);
    if (once(2))
        update.operatorMemberID = of(memberIDs);
    if (once(5))
        update.returnAccountID = idOf(seen.accounts);
    if (once(5))
        update.fundingMemberIDs = {{of(memberIDs)}};
    if (once(4))
        update.addCurrencies = {{of(currencyCodes)}};
    update.acknowledgeHistoryAccess = once(2);
    update.acknowledgeCurrencyAccess = once(2);
    return {once(3) ? "float" : idOf(seen.accounts), std::move(update)};
}

CategoryCreate RandomSetup::category(const LedgerSnapshot& seen)
{
    CategoryCreate command;
    command.kind = once(15) ? "fees" : of(std::array{"income", "expense", "expense"});
    command.names["en-US"] = fmt::format("Category {}", below(9));
    command.symbol = once(15) ? "" : of(std::array{"tag", "shop"});
    if (once(2))
        command.parentID = once(2) ? idOf(seen.categories) : "rent";
    return command;
}

RandomSetup::CategoryChange RandomSetup::categoryChange(const LedgerSnapshot& seen)
{
    CategoryUpdate update;
    if (once(2))
        update.archived = !once(3);
    if (once(4))
        update.names = TextMap{{"en-US", fmt::format("Category {}", below(9))}};
    update.updateParent = once(3);
    if (!once(4))
        update.parentID = idOf(seen.categories);
    return {once(5) ? "rent" : idOf(seen.categories), std::move(update)};
}

CategoryReorder RandomSetup::reordering(const LedgerSnapshot& seen)
{
    CategoryReorder command;
    command.kind = of(std::array{"income", "expense"});
    if (once(3))
        command.parentID = idOf(seen.categories);
    const CategoryDirectory directory{seen.categories};
    const auto archived = once(2) ? ArchivedCategories::included : ArchivedCategories::leftOut;
    for (const auto* each : directory.siblings(command.kind, command.parentID, archived))
        command.expectedIDs.push_back(each->id);
    command.orderedIDs = command.expectedIDs;
    std::ranges::shuffle(command.orderedIDs, engine());
    if (once(5))
        std::ranges::shuffle(command.expectedIDs, engine());
    if (once(10))
        command.orderedIDs.emplace_back("none");
    return command;
}

FinancialSettingsCommand RandomSetup::settings(const LedgerSnapshot& seen)
{
    FinancialSettingsCommand command;
    command.idempotencyKey = fmt::format("setup-{}", ++m_key);
    command.expectedRevision = seen.financialSettings->revision - (once(5) ? 1 : 0);
    if (once(3)) {
        command.action = "initialize";
        command.bookkeepingStartDate =
            of(std::array{"2025-12-01", "2026-02-01", "2026-02-01", "2026-03-01", "2027-01-01", "soon"});
        command.initializationMode = "fromZero";
        return command;
    }
    command.action = "configure";
    command.contributionsEnabled = once(2);
    if (!once(6))
        command.dividendsEnabled = once(2);
    return command;
}

RandomSetup::Command RandomSetup::next(const LedgerSnapshot& seen)
{
    switch (below(11)) {
    case 0:
    case 1:
        return account(seen);
    case 2:
    case 3:
        return accountChange(seen);
    case 4:
        return category(seen);
    case 5:
    case 6:
    case 7:
        return categoryChange(seen);
    case 8:
        return reordering(seen);
    default:
        return settings(seen);
    }
}

}
