#include "LedgerCore/Domain/Records/Account.h"

#include <algorithm>

namespace {

/// An empty identifier names nobody, like none.
std::optional<std::string_view> named(const std::optional<std::string>& id)
{
    if (!id || id->empty())
        return std::nullopt;
    return *id;
}

}

std::int64_t Account::balance(std::string_view currency) const
{
    const auto found = balances.find(currency);
    return found == balances.end() ? 0 : found->second;
}

bool Account::holds(std::string_view currency) const
{
    return std::ranges::find(currencies, currency) != currencies.end();
}

bool Account::isRestricted() const
{
    return hasPurpose(AccountPurpose::employee) || hasPurpose(AccountPurpose::refund) || named(ownerMemberID);
}

std::optional<std::string_view> Account::responsibleMemberID() const
{
    const auto responsible = named(operatorMemberID);
    return responsible ? responsible : named(ownerMemberID);
}
