#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendContext.h"

/// Who may change dividends, and through which accounts.
namespace DividendAccess {

/// Whether the member may pay or receive dividend money through the account.
bool movesDividends(const Account& account, const Member& member);

/// The accounts through which the current member may move dividend money, in snapshot order; of one currency when one
/// is given. Pointers point into the snapshot.
std::vector<const Account*> accounts(const LedgerSnapshot& snapshot, std::optional<std::string_view> currency);

/// Whether the member may send the command. Amounts and states are judged by `DividendRules`.
bool canSubmit(const DividendCommand& command, const DividendContext& context);
bool canSubmit(const DividendCommand& command, const LedgerSnapshot& snapshot);

}
