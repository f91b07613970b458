#include "LedgerCore/Domain/Account.h"

#include <algorithm>

namespace {

bool names(const std::optional<std::string>& id)
{
    return id && !id->empty();
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
    return hasPurpose(AccountPurpose::employee) || hasPurpose(AccountPurpose::refund) || names(ownerMemberID);
}

std::optional<std::string_view> Account::responsibleMemberID() const
{
    if (names(operatorMemberID))
        return *operatorMemberID;
    if (names(ownerMemberID))
        return *ownerMemberID;
    return std::nullopt;
}
