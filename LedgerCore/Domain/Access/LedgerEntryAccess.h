#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

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

/// Whether entries of this kind can stand on the account at all: refund accounts earn nothing, floats give no refunds,
/// neither exchanges.
bool takesKind(const Account& account, std::string_view kind);

/// The accounts on which the current member may record an entry of this kind, in snapshot order.
std::vector<const Account*> accounts(const LedgerSnapshot& snapshot, std::string_view kind);

/// "funding", "return", or nothing between two company accounts.
std::optional<std::string_view> transferPurpose(const Account& source, const Account& destination);

enum class DestinationRefusal { sameAccount, notViewable, notGranted, archived, restrictedToRestricted };

/// What keeps the member from moving money from `source` into `destination`, or nothing; the source itself is judged
/// by `whyNotRecord`. Who funds a float holds "transferIn" on it and need not see it; who returns money gives it to the
/// source's return account, seen or not, or to a company account on which "transferIn" is held; between company
/// accounts the destination is seen and holds "transferIn".
std::optional<DestinationRefusal> whyNotReceive(const Account& source, const Account& destination,
                                                const Member& member);

/// Of these accounts of a company those that take a funding or a return from the member, seen by the member or not.
std::vector<TransferDestination> transferDestinations(std::span<const Account> accounts, const Member& member);

/// Whether the member sees the entry: one of its accounts is enough.
bool canView(const LedgerTransaction& transaction, const Member& member);

bool canCorrect(const LedgerTransaction& transaction, const Member& member);

enum class ReversalRefusal { isReversal, alreadyReversed, noLegs, notPermitted };

/// What keeps the member from reversing the entry, or nothing.
std::optional<ReversalRefusal> whyNotReverse(const LedgerTransaction& transaction, const Member& member);

/// The page on which an entry is undone; entries of owners' money are undone there, never by a plain reversal.
enum class CorrectionPage { ledger, capital, dividends };
CorrectionPage correctionPage(const LedgerTransaction& transaction);

bool canReverse(const LedgerTransaction& transaction, const LedgerSnapshot& snapshot);

/// Whether the member may record a refund of this currency on the account.
bool canRefund(const Account& account, const Member& member, std::string_view currency);

enum class OriginalRefusal { notIncome, otherCurrency, reversed, notPermitted };

/// Finds an account by id; null when it is not known.
using AccountLookup = std::function<const Account*(std::string_view id)>;

/// What keeps the member from refunding this entry in the currency, or nothing.
std::optional<OriginalRefusal> whyNotRefund(const LedgerTransaction& original, const AccountLookup& account,
                                            const Member& member, std::string_view currency);

/// The income entries that a refund in this currency may name as its original, in snapshot order.
std::vector<const LedgerTransaction*> refundableIncomes(const LedgerSnapshot& snapshot, std::string_view currency);

}
