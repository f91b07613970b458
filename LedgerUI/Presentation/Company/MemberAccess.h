#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Access/MembershipRules.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What somebody may do in the company, as it is being filled in.
struct AccessDraft {
    using Words = std::set<std::string, std::less<>>;

    std::string role;
    Words permissions;                                // of `Permission`
    std::map<std::string, Words, std::less<>> grants; // actions by account; an account without actions is left out

    bool operator==(const AccessDraft&) const = default;

    [[nodiscard]] bool grantsAction(std::string_view action, std::string_view accountID) const;
};

/// The rights of a member, or of somebody who is being invited, from what is saved to what is sent. A member without an
/// identifier is the one who is being invited.
namespace MemberAccess {

/// What is saved.
AccessDraft draftOf(const Member& member);

/// The draft with the action given or taken. Every action needs the sight of the account, and goes with it.
AccessDraft withAction(AccessDraft draft, std::string_view accountID, std::string_view action, bool isGiven);

/// How many roles, permissions and cells of the matrix differ from what is saved.
std::size_t changes(const Member& saved, const AccessDraft& draft);

/// What was changed from `before` on, done to `now`: the draft after somebody else has changed the same member.
AccessDraft rebased(const AccessDraft& draft, const Member& before, const Member& now);

/// Only what differs from what is saved, accounts and actions in their usual order.
MemberUpdate update(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot);
Invite invitation(std::string name, std::string email, const AccessDraft& draft, const LedgerSnapshot& snapshot);

using Refusal = MembershipRules::Refusal;

/// What keeps the current member from changing this one thing about what is saved, or nothing.
std::optional<Refusal> whyNotRole(const Member& saved, std::string_view role, const LedgerSnapshot& snapshot);
std::optional<Refusal> whyNotPermission(const Member& saved, std::string_view permission,
                                        const LedgerSnapshot& snapshot);
std::optional<Refusal> whyNotAction(const Member& saved, std::string_view accountID, std::string_view action,
                                    const LedgerSnapshot& snapshot);
std::optional<Refusal> whyNotActive(const Member& saved, bool isActive, const LedgerSnapshot& snapshot);
/// What keeps the whole draft from being accepted, or nothing.
std::optional<Refusal> whyNotSave(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot);

/// Whether the action means anything on the account: a float takes no refunds, say.
bool isMeaningful(std::string_view action, const Account& account);

QString refusalText(Refusal refusal, std::string_view locale);

}
