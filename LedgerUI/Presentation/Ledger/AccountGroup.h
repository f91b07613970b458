#pragma once

#include <array>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/Account.h"

/// Whose an account is, in the order in which lists and pickers show them.
enum class AccountGroup { company, employee, refund, archived };
inline constexpr std::array accountGroups{AccountGroup::company, AccountGroup::employee, AccountGroup::refund,
                                          AccountGroup::archived};

AccountGroup accountGroupOf(const Account& account);
/// The same while nothing is said about archives: an archived account stands where it belonged.
AccountGroup accountGroupInUse(const Account& account);

/// "Company accounts".
QString accountGroupTitle(AccountGroup group, std::string_view locale);
/// "company", for the names of rows and controls.
std::string_view accountGroupName(AccountGroup group);
/// What stands before an account of the group.
QString accountGroupGlyph(AccountGroup group);
