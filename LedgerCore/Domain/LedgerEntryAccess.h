#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/LedgerSnapshot.h"

/// Who may record which entry where, and who may undo it. The service accepts by these rules, screens offer by them.
/// Pointers in results point into the snapshot that was asked.
namespace LedgerEntryAccess {

enum class RecordRefusal {
    archived,
    inactiveMember,
    noIdentifier,
    notViewable,
    notGranted,
    notResponsible,
    kindRefused
};

/// What keeps the member from recording an entry of this kind on the account, or nothing. For a transfer the account
/// is its source.
std::optional<RecordRefusal> whyNotRecord(const Account& account, const Member& member, std::string_view kind);

/// The accounts on which the current member may record an entry of this kind, in snapshot order.
std::vector<const Account*> accounts(const LedgerSnapshot& snapshot, std::string_view kind);

/// "funding", "return", or nothing between two company accounts.
std::optional<std::string_view> transferPurpose(const Account& source, const Account& destination);

bool canCorrect(const LedgerTransaction& transaction, const Member& member);

enum class ReversalRefusal { isReversal, alreadyReversed, noLegs, notPermitted };

/// What keeps the member from reversing the entry, or nothing.
std::optional<ReversalRefusal> whyNotReverse(const LedgerTransaction& transaction, const Member& member);

bool canReverse(const LedgerTransaction& transaction, const LedgerSnapshot& snapshot);

/// Whether the member may record a refund of this currency on the account.
bool canRefund(const Account& account, const Member& member, std::string_view currency);

/// The income entries that a refund in this currency may name as its original, in snapshot order.
std::vector<const LedgerTransaction*> refundableIncomes(const LedgerSnapshot& snapshot, std::string_view currency);

}
