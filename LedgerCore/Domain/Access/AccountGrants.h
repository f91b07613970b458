#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Member.h"

/// Which rights on an account follow from what the account is. Rights that somebody was given by hand stay, but for
/// those of a member whom the account leaves.
namespace AccountGrants {

/// Whether the member leads the company: by role, or by the permission to manage it. Who leads has every right on
/// every account from its creation on, and loses none when an account changes hands.
bool leads(const Member& member);

/// What the member was granted on the account; without actions when that is nothing.
AccountGrant on(std::string_view accountID, Member member);

/// What the member who answers for the account does there: sees it, corrects it, and records all that it takes. Into
/// an ordinary company account money may also be moved; restricted ones are filled by their funders.
std::vector<std::string_view> ofOperator(const Account& account);

/// The rights that come with a new account: all for those who lead the company, its own for the operator or owner, and
/// filling it for the funders.
void giveForNew(std::vector<Member>& members, const Account& account, std::span<const std::string> funders);

/// The rights after the account changed from `before` to `after`, in what it is or in who answers for it.
void handOver(std::vector<Member>& members, const Account& before, const Account& after);

/// Exactly these members fill the account, besides those who lead the company.
void setFunders(std::vector<Member>& members, std::string_view accountID, std::span<const std::string> funders);

}
