#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

#include <algorithm>

const Account* LedgerSnapshot::account(std::string_view id) const
{
    const auto found = std::ranges::find(accounts, id, &Account::id);
    return found == accounts.end() ? nullptr : &*found;
}

const LedgerTransaction* LedgerSnapshot::entry(std::string_view id) const
{
    const auto found = std::ranges::find(transactions, id, &LedgerTransaction::id);
    return found == transactions.end() ? nullptr : &*found;
}
