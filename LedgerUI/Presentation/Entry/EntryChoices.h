#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerUI/Presentation/Forms/AccountChoice.h"

/// The rows of the form's lists of accounts and currencies.
namespace EntryChoices {

/// Whose an account is, in the order in which pickers show them.
enum class Group { company, employee, refund };

/// An account with its balances.
AccountChoice account(const Account& held, std::string_view locale);
/// One of which no more is known than its name.
AccountChoice account(const std::string& id, const std::string& name, Group group, std::string_view locale);
/// The same rows, those of a group together.
std::vector<AccountChoice> grouped(const std::vector<AccountChoice>& choices, std::string_view locale);

/// Those of `codes` that are supported, in their usual order, except `without`.
std::vector<CurrencyChoice> currencies(const std::vector<std::string>& codes, std::string_view locale,
                                       std::string_view without = {});

/// An amount whose number and code never part at the end of a line.
QString money(std::int64_t minor, std::string_view currency, std::string_view locale);

}
