#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"

/// Who may give whom what. Rights are compared by what a member could do with them: by the questions of `MemberRights`,
/// by the listed permissions, and by `Member::can` on every account.
namespace MembershipRules {

/// The roles that can be given, from most to least.
inline constexpr std::array roles{MemberRole::owner, MemberRole::admin, MemberRole::finance, MemberRole::partner,
                                  MemberRole::employee};

enum class Refusal {
    notManager, // only who manages the company invites and changes members
    unknownRole,
    unknownPermission,
    unknownAction,
    unknownAccount, // or one on which the giver may do nothing
    ownersOnly,     // only an owner makes owners and changes them
    aboveOwnRole,   // only administrators and owners make administrators
    ownRise,        // nobody gives themselves more
    notHeld,        // nobody gives what they do not hold
    lastOwner,      // what only this owner holds would be held by no owner any more
};

/// A company as far as the rules look at it: all of its members, and its accounts, or those of them that the giver may
/// view.
struct Team {
    const std::vector<Member>& members;
    const std::vector<Account>& accounts;
};

/// The membership that the invited person would have, active, without an identity yet.
Member invited(const Invite& invitation);

/// The membership after the update. What it holds on accounts on which the giver may do nothing stays as it is: the
/// giver cannot mean those.
Member changed(const Member& member, const MemberUpdate& update, const Member& giver);

/// What keeps the giver from inviting somebody with these rights, or nothing.
std::optional<Refusal> whyNotInvite(const Invite& invitation, const Member& giver, const Team& team);

/// What keeps the giver from changing the member in this way, or nothing.
std::optional<Refusal> whyNotChange(const Member& member, const MemberUpdate& update, const Member& giver,
                                    const Team& team);

/// Whether one of these members would hold a right on the account that the giver does not hold. `after` has the same
/// members as `before`, in the same order.
bool givesUnheld(std::span<const Member> before, std::span<const Member> after, const Account& account,
                 const Member& giver);

}
